"""A benchmark runs with little to do, and prints a row for each thing that it measured."""

import pathlib
import re
import subprocess
import sys
import unittest

# Program: what it measures here, and how the rows of its table begin.
CASES = {
    "registration_bench": ("/100/", [r"declared +100 ", r"mtd +100 "]),
    "edit_bench": ("float|cameras/10/", [r"float ", r"10 cameras "]),
    "ramp_bench": ("ramp/.*/16/", [r"float +16 ", r"rgb +16 "]),
    "container_bench": ("filter/10KB", [rf"10KB/{form}/{verdict} " for form in ("gzip", "plain")
                                        for verdict in ("admitted", "refused")]),
    "tab_menu_bench": ("menu/.*/50/", [r"files +50 ", r"library +50 "]),
    "preview_bench.py": ("saved_file/1/", [r" +1 "]),
}


class Rows(unittest.TestCase):
    program = ""

    def test_each_thing_measured_has_a_row_of_numbers(self):
        what, rows = CASES[pathlib.Path(self.program).name]
        run = subprocess.run([self.program, "--benchmark_filter=" + what], capture_output=True, text=True)
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
        for row in rows:
            found = re.findall(rf"^{row}.*$", run.stdout, re.MULTILINE)
            self.assertEqual(len(found), 1, f"{row!r} in:\n{run.stdout}")
            self.assertRegex(found[0], r"( +[\d.]+){3}")


if __name__ == "__main__":
    Rows.program = sys.argv.pop()
    unittest.main()
