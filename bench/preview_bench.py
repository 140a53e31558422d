#!/usr/bin/env python3
"""How long a saved metadata file takes to reach the page of kshop preview.

1. A preview of some shaders and one metadata file, which is replaced as an editor does; the time ends with the answer of the
   page's standing request for news. All shaders are read anew for it.
2. The floor is `kshop list` on the same files: a start, all shaders, and the end. The preview waits besides until the file
   was left alone between two looks at it.

The program is that of build/default, or what KSHOP names.
"""

import argparse
import json
import os
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
os.environ.setdefault("KSHOP", str(ROOT / "build/default/bin/kshop"))
sys.path.insert(0, str(ROOT / "tests/tools"))

from preview_case import KSHOP, Preview  # noqa: E402  the tests' own way to a running preview

SAMPLES = 10
SIZES = (1, 100)


def name_of(size):
    return f"preview/saved_file/{size}/"


def catalogue(size):
    """Shaders of 40 parameters."""
    parameters = [{"name": f"amount_{i}", "type": "float", "default": 0} for i in range(40)]
    return {"nodes": [{"name": f"zelk__bench{i}", "kind": "shader", "output": "rgb", "parameters": parameters}
                      for i in range(size)]}


def milliseconds_of(run):
    begin = time.monotonic()
    run()
    return 1e3 * (time.monotonic() - begin)


def save(file, label):
    aside = file.with_name(file.name + "~")
    aside.write_text(f'["zelk__bench0"]\n"houdini.label" = "{label}"\n', encoding="utf-8")
    os.replace(aside, file)


def measure(size, scratch):
    """Medians of the saved file and of the floor, in milliseconds."""
    shaders, metadata = scratch / "shaders.json", scratch / "korvan/metadata/bench.mtd"
    shaders.write_text(json.dumps(catalogue(size)), encoding="utf-8")
    metadata.parent.mkdir(parents=True)
    save(metadata, "At first")
    environment = {**os.environ, "KORVAN_CATALOGUE": str(shaders), "HOUDINI_PATH": f"{scratch}:&", "HOME": str(scratch)}
    page = Preview(["--port", "0"], environment)
    try:
        def saved_file():
            save(metadata, f"Label {time.monotonic()}")
            page.wait_for(known)

        told, floor = [], []
        for _ in range(SAMPLES):
            known = page.get("state")["generation"]
            told.append(milliseconds_of(saved_file))
            floor.append(milliseconds_of(
                lambda: subprocess.run([KSHOP, "list"], env=environment, check=True, stdout=subprocess.DEVNULL)))
    finally:
        page.close()
    return statistics.median(told), statistics.median(floor)


def report(size, told, floor):
    if "KORVAN_BENCH_ROWS" not in os.environ:
        return
    row = {"work": "a saved metadata file, until the preview's page is told", "size": f"{size} shaders", "amount": 0,
           "ours": 1e3 * told, "floor": 1e3 * floor, "aim": 0, "unit": "us"}
    with open(os.environ["KORVAN_BENCH_ROWS"], "a", encoding="utf-8") as rows:
        rows.write(json.dumps(row) + "\n")


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("--benchmark_filter", default="", metavar="REGEX")
    arguments.add_argument("--benchmark_list_tests", action="store_true")
    options = arguments.parse_args()
    chosen = [size for size in SIZES if re.search(options.benchmark_filter, name_of(size))]
    if options.benchmark_list_tests:
        print("\n".join(map(name_of, chosen)))
        return
    print(f"\nmilliseconds, medians of {SAMPLES}\n\n{'shaders':>7} {'told':>8} {'floor':>8} {'ratio':>6}")
    for size in chosen:
        with tempfile.TemporaryDirectory(prefix="korvan_bench_") as scratch:
            told, floor = measure(size, pathlib.Path(scratch))
        print(f"{size:7} {told:8.1f} {floor:8.1f} {told / floor:6.2f}", flush=True)
        report(size, told, floor)


if __name__ == "__main__":
    main()
