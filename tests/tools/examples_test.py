"""The scripts in examples/, as a newcomer runs them."""

import json
import pathlib
import unittest

from kshop_case import KshopCase

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples"


class Examples(KshopCase):
    def run_example(self, name, *arguments, **options):
        return self.output_of("python", EXAMPLES / name, *arguments, PYTHONDONTWRITEBYTECODE="1", **options)

    def look(self):
        """The scene of the look-development example, with its asset beside it."""
        self.run_example("lookdev.py", self.scratch / "look.hip")
        return self.scratch / "look.hip"

    def ask(self, scene, *lines):
        """What those lines print about the saved scene, in a process that has opened it with its asset."""
        script = self.write("ask.py", "\n".join(
            ["import sys", f"sys.path.insert(0, {str(EXAMPLES)!r})", "import hou, lookdev",
             f"net = lookdev.open_scene({str(scene)!r}, {str(scene.parent)!r})", *lines]))
        return self.output_of("python", script, PYTHONDONTWRITEBYTECODE="1")

    def test_are_all_tested_here(self):
        self.assertEqual({file.name for file in EXAMPLES.glob("*.py")},
                         {"first_network.py", "live_edit.py", "lookdev.py", "make_assets.py"})

    def test_first_network_builds_and_shows_a_refusal(self):
        text = self.run_example("first_network.py")
        self.assertIn("Built /shop/first_network with 5 nodes", text)
        self.assertIn("evolution at frame 12 0.5", text)
        self.assertIn('"rgba"', text.splitlines()[-1])

    def test_make_assets_writes_an_asset_that_containers_admit(self):
        folder = self.scratch / "new" / "assets"
        self.assertEqual(self.run_example("make_assets.py", folder),
                         "Made the asset studio::worn_paint in worn_paint.hda\n")
        self.assertEqual([file.name for file in folder.iterdir()], ["worn_paint.hda"])
        script = self.write("use.py", "import hou, sys\nhou.hda.installFile(sys.argv[1])\n"
                            "net = hou.node('/shop').createNode('korvan_vopnet')\n"
                            "asset = net.createNode('studio::worn_paint')\n"
                            "asset.parm('wear').set(0.2)\n"
                            "print(asset.outputDataTypes(), asset.node('edge').evalParm('ramp2pos'))\n")
        self.assertEqual(self.output_of("python", script, folder / "worn_paint.hda"), "('vector', 'float') 0.8\n")

    def test_lookdev_wires_all_four_outputs(self):
        text = self.run_example("lookdev.py", self.scratch / "look.hip").splitlines()
        wired = {line.split()[0]: line.split()[1] for line in text if line.startswith("  OUT_")}
        self.assertEqual(wired, {"OUT_material": "surface", "OUT_light": "Color", "OUT_environment": "atmosphere",
                                 "OUT_camera": "camera"})
        self.assertEqual(text[-1], "Saved 17 nodes of /shop/look in look.hip")

    def test_lookdev_can_be_opened_again_as_it_was_saved(self):
        scene = self.look()
        self.assertEqual(self.ask(scene, "lookdev.show(net)"),
                         "".join(line for line in self.run_example("lookdev.py", scene).splitlines(True)
                                 if line.startswith("  ")))
        self.assertEqual(self.ask(scene, "print(len(net.node('tint').evalParm('ramp').keys()), net.node('worn').evalParm('wear'),",
                                  "      net.node('worn/edge').evalParm('ramp2pos'))"), "3 0.4 0.6\n")

    def test_lookdev_uses_assets_from_another_directory(self):
        folder = self.scratch / "assets"
        self.run_example("make_assets.py", folder)
        before = (folder / "worn_paint.hda").read_bytes()
        self.run_example("lookdev.py", self.scratch / "look.hip", folder)
        self.assertFalse((self.scratch / "worn_paint.hda").exists())
        self.assertEqual((folder / "worn_paint.hda").read_bytes(), before)

    def test_live_edit_sends_its_edits_and_leaves_the_scene_as_it_was(self):
        scene = self.look()
        before = scene.read_bytes()
        deltas = self.scratch / "edits.json"
        self.output_of("python", "--deltas", deltas, EXAMPLES / "live_edit.py", scene, PYTHONDONTWRITEBYTECODE="1")
        records = [json.loads(line) for line in deltas.read_text().splitlines()]
        self.assertIn(("/obj/shot", ["f_stop"]), [(r["node_path"], list(r["parms"])) for r in records])
        self.assertIn(("/shop/look/gloss", ["interpolation", "position", "value"]),
                      [(r["node_path"], list(r["parms"])) for r in records])
        self.assertEqual(scene.read_bytes(), before)

    def test_say_how_they_are_called(self):
        for name in ("lookdev.py", "live_edit.py", "make_assets.py"):
            self.assertIn(f"usage: kshop python examples/{name} ", self.failure_of("python", EXAMPLES / name))


if __name__ == "__main__":
    unittest.main()
