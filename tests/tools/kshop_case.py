"""Base of the tests that run kshop as a person does. The program's path comes in the variable KSHOP."""

import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

KSHOP = pathlib.Path(os.environ["KSHOP"]).resolve()
TREE = KSHOP.parents[1]
GOLDEN = pathlib.Path(__file__).parents[1] / "golden"

# What would let the tests see the person's own set-up.
FOREIGN = ("HOUDINI_PATH", "HOUDINI_DSO_PATH", "KORVAN_PLUGIN_PATH", "KORVAN_CATALOGUE", "ZELK_STARTUP_LOG", "HH",
           "ZELK_IPR_ENDPOINT", "ZELK_IPR_KEYS", "PYTHONPATH", "LANG", "LANGUAGE", "NO_COLOR")

# The types that no shader makes, in table order around those that shaders make.
OUTPUTS = ["korvan_material", "korvan_environment", "korvan_light", "korvan_camera"]
UTILITIES = ["korvan::fetch", "korvan::ramp_float", "korvan::ramp_rgb"]


class KshopCase(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        directory = tempfile.mkdtemp(prefix="kshop_test_")
        self.addCleanup(shutil.rmtree, directory, ignore_errors=True)
        self.scratch = pathlib.Path(directory)

    def environment(self, **changes):
        """The environment of a run: the person's without what concerns kshop, an empty home, and the changes."""
        kept = {k: v for k, v in os.environ.items() if k not in FOREIGN and not k.startswith("LC_")}
        kept["HOME"] = str(self.scratch)
        kept.update({k: str(v) for k, v in changes.items()})
        return kept

    def run_kshop(self, *arguments, stdin="", cwd=None, **changes):
        """Runs kshop; text of standard output and standard error, and the exit status."""
        return subprocess.run([str(KSHOP), *map(str, arguments)], input=stdin, capture_output=True, text=True,
                              encoding="utf-8", cwd=cwd, env=self.environment(**changes), timeout=300)

    def output_of(self, *arguments, **options):
        """Standard output of a run that must succeed without a word on standard error."""
        run = self.run_kshop(*arguments, **options)
        self.assertEqual((run.returncode, run.stderr), (0, ""), arguments)
        return run.stdout

    def json_of(self, *arguments, **options):
        return json.loads(self.output_of(*arguments, "--json", **options))

    def failure_of(self, *arguments, status=1, **options):
        """Standard error of a run that must fail, and not by a crash."""
        run = self.run_kshop(*arguments, **options)
        self.assertEqual(run.returncode, status, run.stderr)
        return run.stderr

    def write(self, name, text):
        file = self.scratch / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
        return file

    def catalogue(self, *nodes):
        """A catalogue file with these nodes; give its path as KORVAN_CATALOGUE."""
        return self.write("catalogue.json", json.dumps({"nodes": nodes}))
