"""script/demo: the main job shown, and edits that reach a render in its own process."""

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
        self.assertEqual(heard, ["specular_roughness = 0.25", "specular_roughness = 0.3", "specular_roughness = 0.35",
                                 "specular_color = [1, 0.5, 1]", "octaves = 6", "thin_walled = true",
                                 "evolution = 0.5", "metalness = 1", "transmission = 0", "subsurface = 0",
                                 "metalness = 0"])
        self.assertTrue(run.stdout.splitlines()[-1].startswith("    render: "))

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
