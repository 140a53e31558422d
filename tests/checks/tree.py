"""What the checks share: walking a source tree, and reporting.

Each check is a function `findings(root) -> list of sentences`; an empty list means that the tree passes. A check runs as
`python3 NAME.py [ROOT]` and exits 1 when it found something.
"""

import os
import pathlib
import sys

SKIPPED_DIRECTORIES = {".git", "build", "install", "node_modules", "__pycache__", ".cache"}
CXX_SUFFIXES = {".h", ".hpp", ".cpp", ".c"}


def files(root, *rooms):
    """All files below the given directories of the tree (everything when none is given), sorted."""
    found = []
    for room in rooms or (".",):
        for directory, names, file_names in os.walk(pathlib.Path(root) / room):
            names[:] = [n for n in names if n not in SKIPPED_DIRECTORIES]
            found += [pathlib.Path(directory) / n for n in file_names]
    return sorted(found)


def cxx_files(root, *rooms):
    return [f for f in files(root, *rooms) if f.suffix in CXX_SUFFIXES]


def text_of(file):
    """The file's text; None when it is no UTF-8 text."""
    try:
        return file.read_text(encoding="utf-8")
    except UnicodeDecodeError:
        return None


def place(root, file, line=None):
    name = pathlib.Path(file).relative_to(root).as_posix()
    return f"{name}:{line}" if line else name


def main(findings, *arguments):
    """Runs a check as a program: its findings, one a line, and their number as the last line."""
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parents[2]).resolve()
    found = findings(root, *arguments)
    for sentence in found:
        print(sentence)
    print(f"{len(found)} finding(s) in {root.name}")
    return 1 if found else 0
