"""docs/live-updates.md: every row names a test that exists."""

import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).parents[2]
TESTS = (*sorted((ROOT / "tests" / "unit").glob("vop_*_test.cpp")),
         *(ROOT / "tests" / "tools" / name for name in ("live_edits_test.py", "network_edits_test.py")))
CPP_TEST = re.compile(r"^TEST(?:_F|_P)?\((\w+), (\w+)\)", re.MULTILINE)
PYTHON_TEST = re.compile(r"^    def (test_\w+)\(", re.MULTILINE)


def existing():
    """The names of the tests as the document writes them."""
    names = set()
    for file in TESTS:
        text = file.read_text(encoding="utf-8")
        names.update(".".join(match) for match in CPP_TEST.findall(text))
        names.update(PYTHON_TEST.findall(text))
    return names


class LiveUpdates(unittest.TestCase):
    def test_every_row_names_tests_that_exist(self):
        rows = [line for line in (ROOT / "docs" / "live-updates.md").read_text(encoding="utf-8").splitlines()
                if line.startswith("| ") and not line.endswith("| held by |")]
        self.assertGreater(len(rows), 30)
        there = existing()
        for row in rows:
            with self.subTest(row):
                named = re.findall(r"`([^`]+)`", row.rsplit("|", 2)[1])
                self.assertTrue(named, "the row names no test")
                self.assertEqual([name for name in named if name not in there], [])


if __name__ == "__main__":
    unittest.main()
