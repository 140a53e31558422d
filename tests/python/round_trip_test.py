"""A random scene, saved and loaded in a new process, is the same to every question of hou.

KORVAN_ROUND_TRIP_NODES is the number of nodes, KORVAN_ROUND_TRIP_SEED the seed; both are printed, so that a scene that
differs can be made again.
"""

import json
import os
import shutil
import subprocess
import tempfile
import unittest

import hou
import scene_dump
from random_scene import RandomScene
from scene import SceneTest

NODES = int(os.environ.get("KORVAN_ROUND_TRIP_NODES", "60"))
SEED = int(os.environ.get("KORVAN_ROUND_TRIP_SEED", "20261121"))


def differences(before, after, place=""):
    """Each place where two dumps differ, with both values."""
    if isinstance(before, dict) and isinstance(after, dict):
        for key in [*before, *(k for k in after if k not in before)]:
            yield from differences(before.get(key), after.get(key), f"{place} {key}")
    elif isinstance(before, list) and isinstance(after, list) and len(before) == len(after):
        for i, pair in enumerate(zip(before, after)):
            yield from differences(*pair, f"{place}[{i}]")
    elif before != after:
        yield f"{place}: {before!r} became {after!r}"


class RoundTrip(SceneTest):
    maxDiff = None

    def setUp(self):
        super().setUp()
        self.folder = tempfile.mkdtemp(prefix="round_trip_")
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.file = os.path.join(self.folder, "scene.hip")

    def tearDown(self):
        hou.hipFile.clear()
        super().tearDown()

    def loaded(self, *assets):
        """The dump of the saved scene in a new process, which has nothing of this one."""
        result = os.path.join(self.folder, "loaded.json")
        run = subprocess.run([os.readlink("/proc/self/exe"), "python", scene_dump.__file__, self.file, result, *assets],
                             capture_output=True, text=True, timeout=300)
        self.assertEqual((run.returncode, run.stdout), (0, ""), run.stderr)
        with open(result, encoding="utf-8", errors="surrogateescape") as stream:
            return json.load(stream)

    def bytes(self, file):
        with open(file, "rb") as stream:
            return stream.read()

    def test_of_a_random_scene_changes_nothing(self):
        print(f"round trip of {NODES} nodes, seed {SEED}", flush=True)
        asset = RandomScene(SEED, NODES, self.folder).build()
        hou.hipFile.save(self.file)
        # Through JSON, so that both dumps have the same kinds of lists and keys.
        before = json.loads(json.dumps(scene_dump.dump()))
        self.assert_rich(before)
        found = list(differences(before, self.loaded(asset)))
        self.assertEqual(found[:20], [], f"{len(found)} differences")
        self.assertEqual(self.bytes(self.file + ".again"), self.bytes(self.file))

    def assert_rich(self, dump):
        """The scene has something of everything that may get lost."""
        nodes = [facts for name, facts in dump.items() if name != "scene"]
        parms = [parm for facts in nodes for parm in facts["parms"]]
        kinds = {facts["type"] for facts in nodes}
        self.assertGreaterEqual(len(nodes), NODES * 3 // 4)
        self.assertTrue(any(facts["wires in"] for facts in nodes))
        self.assertTrue(any(facts["user data"].get("outputs") for facts in nodes))
        self.assertTrue(any(parm["spare"] for parm in parms))
        self.assertTrue(any(parm["animated"] for parm in parms))
        self.assertTrue(any(parm["instances"] for parm in parms))
        self.assertLessEqual({"test::round_trip", "korvan::fetch", "subnet", "korvan_vopnet", "cam"}, kinds)

    def test_notices_what_differs(self):
        net = hou.node("/shop").createNode("korvan_vopnet")
        net.createNode("korvan::ramp_float", "gloss")
        hou.hipFile.save(self.file)
        before = json.loads(json.dumps(scene_dump.dump()))
        net.node("gloss").parm("ramp2pos").set(0.75)
        hou.hipFile.save(self.file)
        found = list(differences(before, self.loaded()))
        self.assertTrue(any("'1.0' became '0.75'" in line for line in found), found)


if __name__ == "__main__":
    unittest.main(argv=["round_trip_test"])
