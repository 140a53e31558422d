"""Breaks the plug-in on purpose, one small edit at a time, and names the edits that no test notices.

    script/mutation-test                    all of them
    script/mutation-test vop_ramp           those whose file or behaviour holds that text
    script/mutation-test --sample 5         five, chosen anew each day
    script/mutation-test --check            only whether each edit still has its place in the sources; builds nothing

The edits are in tests/mutations/*.toml. They are made in a copy of the sources; the working tree stays as it is.
"""

import argparse
import datetime
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tomllib

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORK = ROOT / "build" / "mutation"


class Mutation:
    """One edit: in `file`, the code `find` becomes `replace`. Spaces and line ends do not matter in `find`."""

    def __init__(self, file, entry):
        self.file = entry.get("file", file)
        self.behaviour = entry["behaviour"]
        self.find = entry["find"]
        self.replace = entry["replace"]

    def __str__(self):
        return f"{self.file}: {self.behaviour}"

    def pattern(self):
        return re.compile(r"\s*".join(re.escape(token) for token in re.findall(r"\w+|[^\w\s]", self.find)))

    def apply(self, text):
        """The broken text. The place must be there exactly once."""
        places = list(self.pattern().finditer(text))
        if len(places) != 1:
            raise LookupError(f"{self}\n    its place is there {len(places)} times and must be there once: {self.find}")
        start, end = places[0].span()
        return text[:start] + self.replace + text[end:]


def mutations():
    for table in sorted((ROOT / "tests" / "mutations").glob("*.toml")):
        entries = tomllib.loads(table.read_text(encoding="utf-8"))["mutation"]
        yield from (Mutation(f"{table.stem}.cpp", entry) for entry in entries)


def source(root, mutation):
    return root / "src" / "shop" / mutation.file


def misplaced(chosen):
    """What is wrong with the edits themselves: a place that is gone or doubled, an edit that changes nothing."""
    for mutation in chosen:
        text = source(ROOT, mutation).read_text(encoding="utf-8")
        try:
            if mutation.apply(text) == text:
                yield f"{mutation}\n    it changes nothing"
        except LookupError as error:
            yield str(error)


def mirror(origin, target):
    """Copies what differs, as new files: the build goes by their times. Removes what is no more."""
    if origin.is_file():
        if not target.exists() or origin.read_bytes() != target.read_bytes():
            shutil.copy(origin, target)
            target.touch()
        return
    target.mkdir(parents=True, exist_ok=True)
    names = {path.name for path in origin.iterdir() if path.name != "__pycache__"}
    for name in names:
        mirror(origin / name, target / name)
    for gone in (path for path in target.iterdir() if path.name not in names):
        shutil.rmtree(gone) if gone.is_dir() else gone.unlink()


def prepare():
    """Copies the sources and builds the tests once, unbroken."""
    tree = WORK / "tree"
    tree.mkdir(parents=True, exist_ok=True)
    for path in ROOT.iterdir():
        if path != WORK.parent and not path.name.startswith("."):
            mirror(path, tree / path.name)
    subprocess.run(["cmake", "-S", tree, "-B", WORK / "build", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
                    "-DCMAKE_CXX_FLAGS=-O0 -w", "-DPython3_ROOT_DIR=/usr", "-DKORVAN_TESTS=ON", "-DKORVAN_BENCH=OFF"],
                   check=True, stdout=subprocess.DEVNULL)
    build(check=True)
    return tree


def build(check=False):
    return subprocess.run(["ninja", "-C", WORK / "build", "shop_unit_test"], check=check, capture_output=not check).returncode == 0


def tests_pass():
    run = subprocess.run(["ctest", "--test-dir", WORK / "build", "-L", "unit", "-j", str(os.cpu_count() or 1),
                          "--stop-on-failure", "--timeout", "60"], capture_output=True, text=True)
    return run.returncode == 0


def verdict(tree, mutation):
    """"killed" by a test, "killed" by the compiler, or "SURVIVES"."""
    file = source(tree, mutation)
    text = file.read_text(encoding="utf-8")
    file.write_text(mutation.apply(text), encoding="utf-8")
    try:
        if not build():
            return "DOES NOT COMPILE"
        return "SURVIVES" if tests_pass() else "killed"
    finally:
        file.write_text(text, encoding="utf-8")


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("text", nargs="?", default="", help="part of a file's name or of a behaviour")
    arguments.add_argument("--sample", type=int, metavar="N", help="N of them, chosen by the seed")
    arguments.add_argument("--seed", default=str(datetime.date.today()), help="default: today's date")
    arguments.add_argument("--check", action="store_true", help="build nothing")
    options = arguments.parse_args()

    chosen = [m for m in mutations() if options.text in str(m)]
    complaints = list(misplaced(chosen))
    for complaint in complaints:
        print(complaint, file=sys.stderr)
    if complaints or options.check:
        print(f"{len(chosen)} mutations, {len(complaints)} without a place")
        return 1 if complaints else 0
    if options.sample is not None:
        chosen = random.Random(options.seed).sample(chosen, min(options.sample, len(chosen)))
        print(f"seed {options.seed}")

    tree = prepare()
    if not tests_pass():
        print("the tests fail as it is; nothing can be said", file=sys.stderr)
        return 1
    counts = {}
    for number, mutation in enumerate(chosen, 1):
        result = verdict(tree, mutation)
        counts[result] = counts.get(result, 0) + 1
        print(f"[{number}/{len(chosen)}] {result}: {mutation}", flush=True)
    print("mutation-test:", ", ".join(f"{count} {result}" for result, count in sorted(counts.items())) or "nothing chosen")
    return 0 if set(counts) <= {"killed"} else 1


if __name__ == "__main__":
    sys.exit(main())
