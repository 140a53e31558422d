"""Every C and C++ source is formatted as .clang-format says."""

import re
import shutil
import subprocess
import sys

import tree

ROOMS = ("src", "standin", "tools", "tests", "bench", "fuzz", "examples")
COMPLAINT = re.compile(r"^(.+?):(\d+):\d+: (?:error|warning): code should be clang-formatted")


def findings(root):
    formatter = shutil.which("clang-format")
    if not formatter:
        return ["clang-format is missing; run script/bootstrap --test"]
    sources = [str(f) for f in tree.cxx_files(root, *ROOMS)]
    if not sources:
        return []
    run = subprocess.run([formatter, "--dry-run", *sources], capture_output=True, text=True, cwd=root)
    first_of = {}
    for line in run.stderr.splitlines():
        match = COMPLAINT.match(line)
        if match:
            first_of.setdefault(match.group(1), match.group(2))
    found = [f"{tree.place(root, file, line)}: not formatted; run script/format" for file, line in first_of.items()]
    return found or ([f"clang-format failed: {run.stderr.strip()}"] if run.returncode else [])


if __name__ == "__main__":
    sys.exit(tree.main(findings))
