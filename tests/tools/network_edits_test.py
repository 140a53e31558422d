"""What edits of the network around the shaders send: ramps, outputs, fetches, assets, scenes and copies."""

import json
import unittest

from kshop_case import KshopCase

BEGIN = "import hou\nnet = hou.node('/shop').createNode('korvan_vopnet', 'net')\n"
RAMP = BEGIN + "ramp = net.createNode('korvan::ramp_%s', 'r')\n"
KEYS = {"float": ["interpolation", "position", "value"], "rgb": ["color", "interpolation", "position"]}


class NetworkEdits(KshopCase):
    def records(self, script, *arguments):
        """The records that a script handed over, each as (path, {parameter: value}); the last edits behind "edit()"."""
        deltas = self.scratch / "deltas.json"
        self.output_of("python", "--deltas", deltas, self.write("edit.py", script), *arguments)
        lines = [json.loads(line) for line in deltas.read_text(encoding="utf-8").splitlines()]
        return [(r["node_path"], {name: parm["value"] for name, parm in r["parms"].items()}) for r in lines]

    def values(self, record, name):
        return record[1][name]["values"]

    def test_each_edit_of_a_key_sends_the_whole_ramp_and_its_input_goes_alone(self):
        for kind, keys in KEYS.items():
            with self.subTest(kind):
                records = self.records(RAMP % kind + "ramp.parm('ramp2pos').set(0.5)\nramp.parm('input').set(0.25)\n"
                                       "ramp.parm('type').set('radial')\n")
                self.assertEqual([path for path, _ in records], ["/shop/net/r"] * 3)
                self.assertEqual(sorted(records[0][1]), keys)
                self.assertEqual(self.values(records[0], "position"), [0, 0.5])
                self.assertEqual([parms for _, parms in records[1:]], [{"input": 0.25}, {"type": "radial"}])

    def test_keys_that_come_and_go_send_whole_ramps_and_the_last_has_them_all(self):
        for kind, keys in KEYS.items():
            with self.subTest(kind):
                for edit, count in (("ramp.parm('ramp').set(5)", 5), ("ramp.parm('ramp').insertMultiParmInstance(1)", 3),
                                    ("ramp.parm('ramp').removeMultiParmInstance(0)", 1), ("ramp.parm('ramp').set(0)", 0)):
                    records = self.records(RAMP % kind + edit + "\n")
                    self.assertTrue(records, edit)
                    for record in records:
                        self.assertEqual(sorted(record[1]), keys)
                        self.assertEqual({len(self.values(record, key)) for key in keys},
                                         {len(self.values(record, "position"))})
                    self.assertEqual(len(self.values(records[-1], "position")), count, edit)

    def test_undo_of_a_key_sends_the_ramp_again(self):
        records = self.records(RAMP % "float" + "ramp.parm('ramp2value').set(0.5)\nhou.undos.performUndo()\n")
        self.assertEqual([self.values(record, "value") for record in records], [[0, 0.5], [0, 1]])

    def test_wires_of_a_ramp_send_nothing(self):
        self.assertEqual(self.records(RAMP % "rgb" + "noise = net.createNode('korvan::fractal_noise')\n"
                                      "ramp.setInput(1, noise, 1)\nramp.setInput(1, None)\n"), [])

    def test_output_nodes_send_nothing(self):
        self.assertEqual(self.records(BEGIN + "out = net.createNode('korvan_environment')\n"
                                      "out.parm('background_visibility').set(7)\n"
                                      "out.setInput(1, net.createNode('korvan::image'))\n"
                                      "light = net.createNode('korvan_light')\n"
                                      "light.setInput(1, net.createNode('korvan::gobo'))\n"
                                      "light.setInput(1, None)\n"), [])

    def test_fetch_nodes_send_nothing_and_what_they_fetch_sends_its_own(self):
        records = self.records(BEGIN + "noise = net.createNode('korvan::fractal_noise', 'noise')\n"
                               "fetch = net.createNode('korvan::fetch')\n"
                               "for target in ('../noise', '/nowhere', '.', '../noise'):\n"
                               "    fetch.parm('target').set(target)\n"
                               "net.createNode('korvan::standard_surface').setInput(1, fetch)\n"
                               "noise.parm('octaves').set(3)\n")
        self.assertEqual(records, [("/shop/net/noise", {"octaves": 3})])

    def test_parameters_of_an_asset_send_nothing_and_those_inside_send_their_own(self):
        records = self.records(BEGIN + "import sys\nsub = net.createNode('subnet', 'sub')\n"
                               "sub.addSpareParmTuple(hou.FloatParmTemplate('gain', 'Gain', 1))\n"
                               "noise = sub.createNode('korvan::fractal_noise', 'noise')\n"
                               "asset = sub.createDigitalAsset('test::asset', sys.argv[1])\n"
                               "asset.parm('gain').set(0.5)\n"
                               "asset.node('noise').parm('octaves').set(3)\n", self.scratch / "asset.hda")
        self.assertEqual(records, [("/shop/net/sub/noise", {"octaves": 3})])

    def test_scenes_that_are_loaded_and_nodes_that_are_copied_send_nothing(self):
        file = self.scratch / "scene.hip"
        make = (BEGIN + "for kind in ('ramp_float', 'ramp_rgb', 'standard_surface', 'fetch'):\n"
                "    net.createNode('korvan::' + kind, kind)\n"
                "net.node('ramp_rgb').parm('ramp').set(9)\n"
                "net.node('standard_surface').parm('coat').set(0.5)\n"
                "net.node('fetch').parm('target').set('../ramp_rgb')\n"
                f"hou.hipFile.save({str(file)!r})\n")
        self.assertTrue(self.records(make))
        read = (f"import hou\nhou.hipFile.load({str(file)!r})\nnet = hou.node('/shop/net')\n"
                "assert net.node('ramp_rgb').parm('ramp9pos'), net.node('ramp_rgb').parms()\n"
                "assert len(net.node('fetch').outputNames()) == 4\n"
                "copies = hou.copyNodesTo(net.children(), net)\n"
                f"hou.hipFile.merge({str(file)!r})\n")
        self.assertEqual(self.records(read), [])
        later = self.records(read + "copies[-2].parm('coat').set(0.75)\n")
        self.assertEqual(later, [("/shop/net/standard_surface1", {"coat": 0.75})])


if __name__ == "__main__":
    unittest.main()
