"""Which digital assets may be created inside a container."""

import os
import pathlib
import shutil
import tempfile
import unittest

import assets
import hou
from scene import SceneTest


class ContainerAssets(SceneTest):
    def setUp(self):
        super().setUp()
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="container_"))
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.addCleanup(self.uninstall)
        os.environ.pop("HH", None)
        self.addCleanup(os.environ.pop, "HH", None)
        self.net = hou.node("/shop").createNode("korvan_vopnet")

    def uninstall(self):
        for file in hou.hda.loadedFiles():
            hou.hda.uninstallFile(file)

    def install(self, sections, name="test::asset"):
        """Installs a library of one type; its path."""
        file = self.folder / f"{name.replace(':', '_')}.hda"
        file.write_bytes(assets.library({name: sections}))
        hou.hda.installFile(str(file))
        return file

    def is_admitted(self, name="test::asset"):
        try:
            self.net.createNode(name, load_contents=False).destroy()
            return True
        except hou.OperationFailed as error:
            self.assertIn(name, str(error))
            return False

    def verdict(self, sections):
        self.install(sections)
        admitted = self.is_admitted()
        self.uninstall()
        return admitted

    def test_of_korvan_nodes_are_admitted_packed_and_plain(self):
        made = assets.contents("korvan::image", "null", "subnet", "subinput", "suboutput")
        self.assertTrue(self.verdict(assets.packed(made)))
        self.assertTrue(self.verdict(assets.plain(made)))

    def test_with_one_foreign_child_are_refused(self):
        made = assets.contents("korvan::image", "add", "korvan::image")
        self.assertFalse(self.verdict(assets.packed(made)))
        self.assertFalse(self.verdict(assets.plain(made)))

    def test_without_korvan_nodes_are_refused(self):
        self.assertFalse(self.verdict(assets.packed(assets.contents("null", "subnet"))))
        self.assertFalse(self.verdict(assets.packed(assets.contents(own="korvan::own"))))

    def test_with_a_sticky_note_are_refused(self):
        made = assets.contents("korvan::image", ("postitnote", ".postitinit"))
        self.assertFalse(self.verdict(assets.packed(made)))

    def test_with_a_korvan_asset_inside_are_admitted_without_a_look_into_that(self):
        self.assertTrue(self.verdict(assets.packed(assets.contents("korvan::inner"))))

    def test_without_contents_are_refused(self):
        self.assertFalse(self.verdict({"DialogScript": b"{}"}))

    def test_of_one_word_are_admitted_plain_and_refused_packed(self):
        self.assertTrue(self.verdict(assets.plain(b"placeholder")))
        self.assertFalse(self.verdict(assets.packed(b"placeholder")))

    def test_of_garbage_are_refused(self):
        self.assertFalse(self.verdict({"Contents.gz": os.urandom(5000)}))
        self.assertFalse(self.verdict(assets.packed(bytes(range(256)) * 200)))
        self.assertFalse(self.verdict(assets.plain(b"")))

    def test_cut_off_before_their_foreign_child_are_admitted(self):
        made = assets.contents("korvan::image", "add")
        self.assertTrue(self.verdict(assets.plain(made[:made.index(b"hdaroot/n1")])))

    def test_under_the_hosts_directory_are_refused(self):
        self.install(assets.packed(assets.contents("korvan::image")))
        self.assertTrue(self.is_admitted())
        for directory, admitted in ((str(self.folder), False), (str(self.folder)[:-3], False), ("/elsewhere", True),
                                    (str(self.folder).upper(), True), ("", False)):
            os.environ["HH"] = directory
            self.assertEqual(self.is_admitted(), admitted, directory)

    def test_are_judged_one_by_one(self):
        self.install(assets.packed(assets.contents("korvan::image")), "test::good")
        self.install(assets.packed(assets.contents("add")), "test::bad")
        self.assertTrue(self.is_admitted("test::good"))
        self.assertFalse(self.is_admitted("test::bad"))

    def test_can_be_copied_with_what_is_inside_them(self):
        subnet = self.net.createNode("subnet", "made")
        subnet.createNode("korvan::image")
        made = subnet.createDigitalAsset("test::made", str(self.folder / "made.hda"))
        copy, = hou.copyNodesTo((made,), self.net)
        self.assertEqual([child.type().name() for child in copy.children()],
                         [child.type().name() for child in made.children()])
        self.assertEqual(len(copy.children()), 3)
        copy.destroy()
        made.destroy()

    def test_obey_the_container_in_its_subnets_too(self):
        self.install(assets.packed(assets.contents("add")))
        subnet = self.net.createNode("subnet")
        with self.fails("test::asset"):
            subnet.createNode("test::asset")


class HostTypes(SceneTest):
    def test_are_refused_but_for_the_plain_ones(self):
        net = hou.node("/shop").createNode("korvan_vopnet")
        for name in ("add", "subinput", "suboutput"):
            with self.fails(name):
                net.createNode(name)
        for name in ("null", "subnet"):
            net.createNode(name)


if __name__ == "__main__":
    unittest.main(argv=["container_assets_test"])
