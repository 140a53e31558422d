"""kshop tab: what can be made inside a network."""

import os
import tempfile
import unittest

from kshop_case import KshopCase


class Tab(KshopCase):
    def test_offers_the_container_in_the_shop_network(self):
        entries = self.json_of("tab", "/shop")
        self.assertIn({"name": "korvan_vopnet", "label": "Korvan Shader Network", "sub_menu": ""}, entries)

    def test_offers_the_plug_ins_types_inside_the_container_but_not_in_other_shader_networks(self):
        registered = {o["name"] for o in self.json_of("list")["tables"]["Vop"]}
        inside = {e["name"] for e in self.json_of("tab", "/shop", "--create", "korvan_vopnet")}
        elsewhere = {e["name"] for e in self.json_of("tab", "/vex")}
        self.assertLessEqual(registered, inside)
        self.assertLessEqual({"subnet", "null"}, inside)
        self.assertEqual(registered & elsewhere, set())

    def test_looks_into_a_scene(self):
        with tempfile.TemporaryDirectory() as folder:
            scene = os.path.join(folder, "look.hip")
            script = os.path.join(folder, "make.py")
            with open(script, "w") as file:
                file.write("hou.node('/shop').createNode('korvan_vopnet', 'look').createNode('subnet', 'sub')\n"
                           "hou.hipFile.save(%r)\n" % scene)
            self.output_of("python", script)
            inside = self.json_of("tab", "/shop/look/sub", "--scene", scene)
            self.assertEqual(inside, self.json_of("tab", "/shop", "--create", "korvan_vopnet"))
            self.assertTrue(inside)
            self.assertEqual(self.failure_of("tab", "/shop/other", "--scene", scene),
                             "kshop: there is no node /shop/other in the scene\n")
            missing = os.path.join(folder, "none.hip")
            self.assertEqual(self.failure_of("tab", "/shop", "--scene", missing),
                             'kshop: The file "%s" cannot be read: No such file or directory. Check the path.\n' % missing)

    def test_shows_sub_menus(self):
        text = self.output_of("tab", "/shop", "--create", "korvan_vopnet")
        menus = {o["tab_menu"] for o in self.json_of("list")["tables"]["Vop"] if o["tab_menu"]}
        self.assertTrue(menus)
        for menu in menus:
            self.assertIn(menu, text)

    def test_names_what_is_no_network(self):
        self.assertEqual(self.failure_of("tab", "/nowhere"),
                         "kshop: there is no node /nowhere; a fresh scene has /obj, /shop, /out and /vex\n")
        self.assertEqual(self.failure_of("tab", "/obj", "--create", "null"),
                         "kshop: a node of type null holds no nodes\n")

    def test_names_a_type_that_cannot_be_made_there(self):
        self.assertIn("no_such_type", self.failure_of("tab", "/shop", "--create", "no_such_type"))


if __name__ == "__main__":
    unittest.main()
