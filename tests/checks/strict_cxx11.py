"""The plug-in's sources are strict C++11 without a warning, platform headers and all, for each compiler that is there.

    python3 strict_cxx11.py ROOT COMPILER...

They are compiled with the old string ABI, which is the host's; a build has them with the compiler's own. Nothing is written.
"""

import concurrent.futures
import os
import pathlib
import subprocess
import sys

import tree

FLAGS = ("-std=c++11", "-pedantic-errors", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", "-D_GLIBCXX_USE_CXX11_ABI=0")
INCLUDED = ("src/shop", "standin/host/include", "standin/renderer/include", "standin/ipr/include")


def complaint(compiler, root, source):
    """What the compiler says about one source; empty when it accepts it."""
    command = [compiler, *FLAGS, *(f"-I{room}" for room in INCLUDED), source]
    run = subprocess.run(command, cwd=root, capture_output=True, text=True, errors="replace", check=False)
    said = (run.stdout + run.stderr).strip().splitlines()
    if run.returncode:
        return next((line for line in said if "error:" in line), said[0] if said else f"{source}: {compiler} failed")
    return ""


def findings(root, compilers):
    root = pathlib.Path(root)
    sources = [tree.place(root, file) for file in tree.files(root, "src/shop") if file.suffix == ".cpp"]
    jobs = [(compiler, root, source) for compiler in compilers for source in sources]
    with concurrent.futures.ThreadPoolExecutor(min(4, os.cpu_count() or 1)) as pool:
        said = pool.map(lambda job: complaint(*job), jobs)
        found = [f"{text} ({os.path.basename(job[0])})" for job, text in zip(jobs, said) if text]
    return found if jobs else ["there is no source, or no compiler, to check"]


if __name__ == "__main__":
    sys.exit(tree.main(findings, sys.argv[2:]))
