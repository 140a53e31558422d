"""script/demo: the main job shown: a network made, saved, loaded and edited, and the edits reaching a render."""

import pathlib
import subprocess
import unittest

from kshop_case import KSHOP, KshopCase

DEMO = pathlib.Path(__file__).parents[2] / "script" / "demo"


class Demo(KshopCase):
    def show(self, kshop=KSHOP):
        """Runs the demo as CI does: no terminal, nothing to read, temporary files in the test's own directory."""
        return subprocess.run([str(DEMO), str(kshop)], stdin=subprocess.DEVNULL, capture_output=True, text=True,
                              encoding="utf-8", env=self.environment(CI="true", TMPDIR=self.scratch), timeout=200)

    def test_ends_with_every_record_in_the_order_of_the_edits(self):
        run = self.show()
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        heard = [line.split("  ")[-2] for line in run.stdout.splitlines() if line.startswith("    render: ")]
        self.assertEqual(heard, ["coat = 0.25", "coat = 0.3", "specular_color = [1, 0.5, 1]", "evolution = 0.5",
                                 "interpolation = [1, 1]", "position = [0, 0.8]", "value = [0.15, 0.6]",
                                 "rotate = 30", "f_stop = 8",
                                 "metalness = 1", "transmission = 0", "subsurface = 0", "metalness = 0"])
        self.assertTrue(run.stdout.splitlines()[-1].startswith("    render: "))

    def test_shows_every_node_type_that_can_be_created_and_none_other(self):
        shown = self.show().stdout.split("--- What an artist can create")[1].split("---")[0].splitlines()[2:-1]
        labels = [label for line in shown for label in line[14:].split(", ")]
        registered = [operator["label"] for operator in self.json_of("list")["tables"]["Vop"]]
        self.assertEqual(sorted(labels), sorted([*registered, "Null", "Subnetwork"]))

    def test_ends_with_a_screenful(self):
        road = self.show().stdout.split("--- What an artist can create")[1]
        self.assertLess(len(road.splitlines()), 50)

    def test_leaves_nothing_behind(self):
        self.show()
        self.assertEqual([p.name for p in self.scratch.glob("korvan_demo_*")], [])

    def test_says_so_when_the_render_does_not_start(self):
        broken = self.write("kshop", f"#!/bin/sh\n[ \"$1\" != listen ] || exit 3\nexec '{KSHOP}' \"$@\"\n")
        broken.chmod(0o755)
        run = self.show(broken)
        self.assertEqual((run.returncode, run.stderr), (1, "demo: the render did not start\n"))

    def test_says_so_when_a_record_gets_lost(self):
        deaf = self.write("kshop", "#!/bin/sh\n"
                          "[ \"$1\" != listen ] || { echo 'kshop: listening at x' >&2; sleep 1; exit 0; }\n"
                          f"exec '{KSHOP}' \"$@\"\n")
        deaf.chmod(0o755)
        run = self.show(deaf)
        self.assertEqual(run.returncode, 1)
        self.assertIn("demo: the render did not hear of every edit", run.stderr)


if __name__ == "__main__":
    unittest.main()
