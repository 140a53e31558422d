"""Breaks the plug-in on purpose, one small edit at a time, and names the edits that no test notices.

    script/mutation-test                    all of them
    script/mutation-test vop_ramp           those whose file or behaviour holds that text
    script/mutation-test --sample 5         five, chosen anew each day
    script/mutation-test --check            only whether each edit still has its place in the sources; builds nothing

The edits are in tests/mutations/*.toml. They are made in a copy of the sources; the working tree stays as it is.
"""

import argparse
import collections
import concurrent.futures
import datetime
import json
import os
import pathlib
import queue
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


class Copy:
    """A copy of the sources with a build of its tests. One edit at a time is made in it."""

    def __init__(self, number):
        self.tree = WORK / str(number) / "tree"
        self.binaries = WORK / str(number) / "build"
        self.together = []

    def prepare(self):
        """Copies the sources and builds the tests once, unbroken. Whether they pass."""
        self.tree.mkdir(parents=True, exist_ok=True)
        for path in ROOT.iterdir():
            if path != WORK.parent and not path.name.startswith("."):
                mirror(path, self.tree / path.name)
        subprocess.run(["cmake", "-S", self.tree, "-B", self.binaries, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
                        "-DCMAKE_CXX_FLAGS=-O0 -w", "-DPython3_ROOT_DIR=/usr", "-DKORVAN_TESTS=ON", "-DKORVAN_BENCH=OFF"],
                       check=True, stdout=subprocess.DEVNULL)
        self.build(check=True)
        self.together = self.passing_in_one_process()
        return self.tests_pass()

    def build(self, check=False):
        return subprocess.run(["ninja", "-C", self.binaries, "shop_unit_test"], check=check,
                              capture_output=not check).returncode == 0

    def run_in_one_process(self, *options, names=("*",)):
        """The tests of these names without a process for each, which is much faster; some need one of their own."""
        try:
            return subprocess.run([self.binaries / "bin" / "shop_unit_test", *options], cwd=self.binaries, timeout=60,
                                  env={**os.environ, "GTEST_FILTER": ":".join(names)}, capture_output=True).returncode == 0
        except subprocess.TimeoutExpired:
            return False

    def passing_in_one_process(self):
        report = self.binaries / "one_process.json"
        self.run_in_one_process(f"--gtest_output=json:{report}")
        suites = json.loads(report.read_text(encoding="utf-8"))["testsuites"]
        names = [f"{suite['name']}.{test['name']}" for suite in suites for test in suite["testsuite"]
                 if test["result"] == "COMPLETED" and not test.get("failures")]
        return names if self.run_in_one_process(names=names) else []

    def tests_pass(self):
        if self.together and not self.run_in_one_process("--gtest_fail_fast", names=self.together):
            return False
        run = subprocess.run(["ctest", "--test-dir", self.binaries, "-L", "unit", "--stop-on-failure", "--timeout", "60"],
                             capture_output=True)
        return run.returncode == 0

    def verdict(self, mutation):
        """"killed" by a test, "SURVIVES", or "DOES NOT COMPILE"."""
        file = source(self.tree, mutation)
        text = file.read_text(encoding="utf-8")
        file.write_text(mutation.apply(text), encoding="utf-8")
        try:
            if not self.build():
                return "DOES NOT COMPILE"
            return "SURVIVES" if self.tests_pass() else "killed"
        finally:
            file.write_text(text, encoding="utf-8")


def prepared_copies(mutation_count):
    """One for each core, when there is enough to do for what another build costs; none when the tests fail in one."""
    copies = [Copy(number) for number in range(min(os.cpu_count() or 1, 1 + mutation_count // 20))]
    return copies if all([copy.prepare() for copy in copies]) else []


def verdicts(copies, chosen):
    """(mutation, verdict) as they come."""
    free = queue.SimpleQueue()
    for copy in copies:
        free.put(copy)

    def judge(mutation):
        copy = free.get()
        try:
            return mutation, copy.verdict(mutation)
        finally:
            free.put(copy)

    with concurrent.futures.ThreadPoolExecutor(len(copies)) as pool:
        yield from (done.result() for done in
                    concurrent.futures.as_completed([pool.submit(judge, mutation) for mutation in chosen]))


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

    copies = prepared_copies(len(chosen))
    if not copies:
        print("the tests fail as it is; nothing can be said", file=sys.stderr)
        return 1
    counts = collections.Counter()
    for number, (mutation, verdict) in enumerate(verdicts(copies, chosen), 1):
        counts[verdict] += 1
        print(f"[{number}/{len(chosen)}] {verdict}: {mutation}", flush=True)
    print("mutation-test:", ", ".join(f"{count} {result}" for result, count in sorted(counts.items())) or "nothing chosen")
    return 0 if set(counts) <= {"killed"} else 1


if __name__ == "__main__":
    sys.exit(main())
