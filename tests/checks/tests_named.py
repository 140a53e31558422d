"""Tests that are named exist: those of the tables of behaviours, of bad input and of live updates, and those that a
comment of the plug-in points to.

A test is named as `Suite.Name`, or as `file_test.py::Class.test_name` with the file's path below tests/; one of the preview's
page as `preview/file_test.mjs::what it says`. Where a row of the tables names none, the check says so too.
"""

import re
import sys

import tree

DOCUMENTS = ("tests/README.md", "docs/bad-input.md", "docs/live-updates.md")
CXX_TEST = re.compile(r"^(?:TYPED_)?TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)", re.MULTILINE)
CXX_COMMENT = re.compile(r"//.*(?:\n[ \t]*//.*)*")
PYTHON_PART = re.compile(r"^class (\w+)|^    def (test_\w+)\(", re.MULTILINE)
PAGE_TEST = re.compile(r'^pageTest\(\s*"((?:[^"\\]|\\.)*)"', re.MULTILINE)
NAME = re.compile(r"`((?:[\w/]+\.py::)?\w+\.\w+|[\w/]+\.mjs::[^`]+)`")
POINTER = re.compile(r"\bsee (\w+\.\w+)", re.IGNORECASE)
HEADINGS = {"the tests", "held by", "---"}


def python_tests(text):
    """Class.test_name for each method; methods belong to the class above them."""
    names, owner = set(), None
    for class_name, method in PYTHON_PART.findall(text):
        owner = class_name or owner
        if method:
            names.add(f"{owner}.{method}")
    return names


def existing(root):
    names = set()
    for file in tree.files(root, "tests"):
        text = tree.text_of(file) or ""
        if file.suffix == ".cpp":
            names.update(f"{suite}.{name}" for suite, name in CXX_TEST.findall(text))
        elif file.suffix == ".py":
            place = file.relative_to(root / "tests").as_posix()
            names.update(f"{place}::{name}" for name in python_tests(text))
        elif file.suffix == ".mjs":
            place = file.relative_to(root / "tests").as_posix()
            names.update(f"{place}::{name}" for name in PAGE_TEST.findall(text))
    return names


def of_document(root, document, there):
    file = root / document
    rows = [(number, line.strip("|").split("|")) for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1)
            if line.startswith("|")] if file.exists() else []
    rows = [(number, cells) for number, cells in rows if cells[-1].strip() not in HEADINGS]
    found = [] if rows else [f"{document} has no rows; a table that names tests belongs there"]
    for number, cells in rows:
        named = NAME.findall(cells[-1])
        if not named:
            found.append(f"{document}:{number}: names no test")
        found += [f"{document}:{number}: there is no test {name}" for name in named if name not in there]
    return found


def of_comments(root, there):
    found = []
    for file in tree.cxx_files(root, "src/shop"):
        text = tree.text_of(file) or ""
        for comment in CXX_COMMENT.finditer(text):
            words = " ".join(comment.group().replace("/", " ").split())
            line = text.count("\n", 0, comment.start()) + 1
            found += [f"{tree.place(root, file, line)}: there is no test {name}" for name in POINTER.findall(words)
                      if name not in there and not name.endswith((".h", ".cpp", ".md"))]
    return found


def findings(root):
    there = existing(root)
    return [finding for document in DOCUMENTS for finding in of_document(root, document, there)] + of_comments(root, there)


if __name__ == "__main__":
    sys.exit(tree.main(findings))
