"""Makes one table of what the benchmarks wrote: table.py ROWS [--write PAGE].

ROWS has one JSON object a line, as bench::report() writes them. With --write the table and the machine go between the
markers of PAGE.
"""

import argparse
import datetime
import json
import os
import pathlib
import platform
import subprocess

BEGIN, END = "<!-- measured: script/bench writes this -->", "<!-- end of what is measured -->"
HEAD = ("work", "size", "ours", "floor", "ratio", "aim", "growth")


def number(value, unit):
    if unit == "us" and value >= 1e6:
        return f"{value / 1e6:.2f} s"
    if unit == "us" and value >= 1e4:
        return f"{value / 1e3:.1f} ms"
    return f"{value:.2f} {unit}" if value < 100 else f"{value:.0f} {unit}"


def growth(row, before):
    """How much more each unit of size costs than in the row before; 1 is linear."""
    if not before or before["work"] != row["work"] or not row["amount"] or not before["amount"]:
        return ""
    return f"{(row['ours'] / row['amount']) / (before['ours'] / before['amount']):.2f}"


def cells(row, before):
    ratio = row["ours"] / row["floor"] if row["floor"] else None
    missed = ratio is not None and row["aim"] and ratio > row["aim"]
    return (row["work"], row["size"], number(row["ours"], row["unit"]),
            number(row["floor"], row["unit"]) if row["floor"] else "",
            (f"{ratio:.2f}" + (" (missed)" if missed else "")) if ratio is not None else "",
            f"{row['aim']:g}" if row["aim"] else "", growth(row, before))


def table(rows):
    rows = sorted(rows, key=lambda row: [other["work"] for other in rows].index(row["work"]))
    lines = [HEAD, *(cells(row, before) for before, row in zip([None, *rows], rows))]
    widths = [max(len(line[i]) for line in lines) for i in range(len(HEAD))]

    def text(line):
        return "| " + " | ".join(cell.ljust(width) for cell, width in zip(line, widths)) + " |"

    rule = "|" + "|".join("-" * (width + 2) for width in widths) + "|"
    return "\n".join([text(lines[0]), rule, *map(text, lines[1:])])


def first(command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.splitlines()[0]


def machine():
    lines = pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines()
    model = next((line.split(":", 1)[1].strip() for line in lines if line.startswith("model name")), platform.machine())
    gigabytes = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    return (f"{datetime.date.today()}, {os.cpu_count()} cores of {model}, {gigabytes:.0f} GB, "
            f"{first(['c++', '--version'])}, RelWithDebInfo; load {os.getloadavg()[0]:.1f}")


def main():
    arguments = argparse.ArgumentParser(description=__doc__)
    arguments.add_argument("rows", type=pathlib.Path)
    arguments.add_argument("--write", type=pathlib.Path, metavar="PAGE")
    options = arguments.parse_args()
    text = table([json.loads(line) for line in options.rows.read_text(encoding="utf-8").splitlines()])
    print(text)
    if options.write:
        page = options.write.read_text(encoding="utf-8")
        before, rest = page.split(BEGIN)
        after = rest.split(END)[1]
        options.write.write_text(f"{before}{BEGIN}\n\n{machine()}\n\n{text}\n\n{END}{after}", encoding="utf-8")


if __name__ == "__main__":
    main()
