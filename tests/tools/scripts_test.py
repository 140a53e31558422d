"""The scripts that a newcomer types, as far as they can be tried without building anew."""

import os
import pathlib
import subprocess
import unittest

ROOT = pathlib.Path(__file__).parents[2]
SCRIPTS = sorted(p for p in (ROOT / "script").iterdir() if p.suffix != ".sh")


class Scripts(unittest.TestCase):
    def run_script(self, name, *arguments):
        return subprocess.run([str(ROOT / name), *arguments], capture_output=True, text=True, cwd="/")

    def test_can_be_executed_and_stop_at_the_first_mistake(self):
        self.assertGreaterEqual(len(SCRIPTS), 6)
        for script in [*SCRIPTS, ROOT / ".ci" / "run"]:
            with self.subTest(script.name):
                self.assertTrue(os.access(script, os.X_OK))
                if script.parent.name == "script":
                    self.assertIn("\nset -euo pipefail\n", script.read_text())

    def test_bootstrap_finds_everything_where_the_tests_run(self):
        run = self.run_script("script/bootstrap", "--test", "--dry-run")
        self.assertEqual((run.returncode, run.stdout), (0, ""), run.stderr)
        self.assertIn("is there", run.stderr)

    def test_bootstrap_helps_and_refuses_what_it_does_not_know(self):
        self.assertIn("script/bootstrap --test", self.run_script("script/bootstrap", "--help").stdout)
        refused = self.run_script("script/bootstrap", "--nonsense")
        self.assertEqual((refused.returncode, refused.stdout), (2, ""))
        self.assertIn("script/bootstrap --test", refused.stderr)

    def test_test_helps_and_names_the_presets_that_there_are(self):
        self.assertIn("script/test --preset asan", self.run_script("script/test", "--help").stdout)
        refused = self.run_script("script/test", "--preset", "nonsense")
        self.assertEqual((refused.returncode, refused.stdout), (1, ""))
        self.assertIn("there are no tests for the preset 'nonsense'; there are for: default asan ", refused.stderr)
        self.assertEqual(self.run_script("script/test", "--preset").returncode, 2)

    def test_fuzz_names_the_fuzzers_that_there_are(self):
        for arguments in ((), ("nonsense", "5"), ("scene", "0"), ("--all", "x"), ("--all",)):
            with self.subTest(arguments):
                refused = self.run_script("script/fuzz", *arguments)
                self.assertEqual((refused.returncode, refused.stdout), (2, ""))
                self.assertIn("NAME is one of: contents delta_reader ", refused.stderr)


if __name__ == "__main__":
    unittest.main()
