import gzip
import os
import shutil
import struct
import tempfile
import time
import unittest

import hou
from scene import SceneTest


def read_index(data):
    """The sections of an indexed file, by its layout: (name, bytes, time) in order."""
    magic, zeros, count = struct.unpack_from(">4sQI", data)
    assert (magic, zeros) == (b"INDX", 0)
    place, records = 16, []
    for _ in range(count):
        (length,) = struct.unpack_from(">I", data, place)
        name = data[place + 4:place + 4 + length].decode()
        records.append((name,) + struct.unpack_from(">III", data, place + 4 + length))
        place += 16 + length
    expected = 0
    for name, offset, size, modified in records:
        assert offset == expected, "sections follow without gaps"
        expected += size
    assert place + expected == len(data), "nothing behind the last section"
    return [(name, data[place + offset:place + offset + size], modified) for name, offset, size, modified in records]


def read_types(data):
    """The records of a library's list of types."""
    (count,) = struct.unpack_from(">I", data)
    place, types = 4, []
    for _ in range(count):
        (version,) = struct.unpack_from(">I", data, place)
        assert version == 4
        place += 4
        texts = []
        for _ in range(11):
            (length,) = struct.unpack_from(">I", data, place)
            texts.append(data[place + 4:place + 4 + length].decode())
            place += 4 + length
        types.append((texts,) + struct.unpack_from(">IIIBBB", data, place))
        place += 15
    assert place == len(data)
    return types


def read_archive(data):
    """The entries of an asset's contents: (name, bytes) in order."""
    (size,) = struct.unpack_from("<I", data)
    assert size == len(data) - 4
    place, entries = 4, []
    while not entries or entries[-1][0] != "TRAILER!!!":
        header = data[place:place + 76]
        assert header[:6] == b"070707" and header[6:48] == b"000001000000000666000000000000000001000000", header
        name_size, file_size = int(header[59:65], 8), int(header[65:76], 8)
        name = data[place + 76:place + 76 + name_size]
        assert name.endswith(b"\0")
        place += 76 + name_size
        entries.append((name[:-1].decode(), data[place:place + file_size]))
        place += file_size
    assert place == len(data)
    return entries[:-1]


class AssetTest(SceneTest):
    def setUp(self):
        super().setUp()
        self.folder = tempfile.mkdtemp()
        self.file = os.path.join(self.folder, "made.hda")

    def tearDown(self):
        super().tearDown()
        for path in hou.hda.loadedFiles():
            hou.hda.uninstallFile(path)
        shutil.rmtree(self.folder)

    def subnet(self, name="looks"):
        """A subnet that passes its input on through a null, with one parameter of its own."""
        subnet = self.vex.createNode("subnet", name)
        null = subnet.createNode("null", "pass")
        subnet.node("suboutput1").setInput(0, null)
        subnet.addSpareParmTuple(hou.FloatParmTemplate("gain", "Gain", 1, default_value=(2.5,), min=0, max=4))
        subnet.parm("gain").set(3.5)
        return subnet

    def bytes(self, path=None):
        with open(path or self.file, "rb") as stream:
            return stream.read()


class CreatedAssets(AssetTest):
    def test_take_the_place_of_their_subnet(self):
        subnet = self.subnet()
        before, after = self.vex.createNode("add", "before"), self.vex.createNode("add", "after")
        subnet.setInput(0, before)
        subnet.node("pass").setInput(0, subnet.node("subinput1"))
        after.setInput(0, subnet)
        subnet.setUserData("who", "me")
        subnet.setPosition((3, 4))
        made = subnet.createDigitalAsset("korvan::looks::1.0", self.file, "The Looks")

        with self.assertRaises(hou.ObjectWasDeleted):
            subnet.name()
        self.assertEqual((made.path(), made.type().name()), ("/vex/looks", "korvan::looks::1.0"))
        self.assertEqual(made.type().description(), "The Looks")
        self.assertEqual(made.inputs(), (before,))
        self.assertEqual(after.inputs()[0], made)
        self.assertEqual(made.userData("who"), "me")
        self.assertEqual(tuple(made.position()), (3, 4))
        self.assertEqual(made.parm("gain").eval(), 3.5)
        self.assertEqual(sorted(child.name() for child in made.children()), ["pass", "subinput1", "suboutput1"])
        self.assertEqual(made.node("suboutput1").inputs(), (made.node("pass"),))
        self.assertEqual(made.node("pass").inputs(), (made.node("subinput1"),))

    def test_can_be_created_again_with_their_own_defaults(self):
        made = self.subnet().createDigitalAsset("korvan::looks", self.file)
        another = self.vex.createNode("korvan::looks")
        self.assertEqual((another.name(), another.parm("gain").eval()), ("looks1", 2.5))
        self.assertEqual(another.node("suboutput1").inputs(), (another.node("pass"),))
        self.assertNotEqual(another.node("pass"), made.node("pass"))
        self.assertEqual(another.type().parmTemplates()[0].maxValue(), 4)

    def test_come_from_another_session_too(self):
        self.subnet().createDigitalAsset("korvan::looks", self.file).destroy()
        hou.hda.uninstallFile(self.file)
        self.assertIsNone(hou.vopNodeTypeCategory().nodeType("korvan::looks"))
        hou.hda.installFile(self.file)
        node = self.vex.createNode("korvan::looks")
        self.assertEqual((node.parm("gain").eval(), len(node.children())), (2.5, 3))

    def test_have_the_layout_of_the_host(self):
        began = int(time.time())
        self.subnet().createDigitalAsset("korvan::looks::1.0", self.file, "The Looks", 0, 3)
        sections = read_index(self.bytes())
        self.assertEqual([name for name, data, modified in sections], ["INDEX_SECTION", "korvan::Vop/looks::1.0"])
        place = "korvan::Vop/looks::1.0"
        (texts, low, high, modified, subnet, empty, python), = read_types(sections[0][1])
        self.assertEqual(texts, ["korvan::looks::1.0", "The Looks", "oplib:/%s?%s" % (place, place), "", "", "", "Vop",
                                 "", "", "", "*"])
        self.assertEqual((low, high, subnet, empty, python), (0, 3, 1, 0, 0))
        self.assertTrue(began <= modified <= time.time())

        parts = {name: data for name, data, modified in read_index(sections[1][1])}
        self.assertIn(b"GzipContents := 1;\n", parts["TypePropertiesOptions"])
        self.assertNotIn("Contents", parts)
        packed = parts["Contents.gz"]
        self.assertEqual(packed[:10], b"\x1f\x8b\x08\x00\0\0\0\0\x00\xff")
        entries = read_archive(gzip.decompress(packed))
        names = [name for name, data in entries]
        self.assertEqual(entries[0], ("node_type", b"Vop\n"))
        self.assertEqual(entries[1], ("looks.init", b"type = korvan::looks::1.0\nmatchesdef = 0\n"))
        self.assertEqual(dict(entries)["looks/pass.init"], b"type = null\nmatchesdef = 0\n")
        self.assertEqual(names[-2:], ["looks.order", "looks.net"])

    def test_have_the_same_bytes_each_time(self):
        paths = [os.path.join(self.folder, name) for name in ("one.hda", "two.hda")]
        parts = []
        for path in paths:
            self.subnet().createDigitalAsset("korvan::looks", path).destroy()
            hou.hda.uninstallFile(path)
            parts.append([(name, data) for name, data, modified in read_index(read_index(self.bytes(path))[1][1])])
        self.assertEqual(parts[0], parts[1])

    def test_join_or_replace_the_others_of_their_file(self):
        self.subnet("one").createDigitalAsset("korvan::one", self.file, "First")
        self.subnet("two").createDigitalAsset("korvan::two", self.file)
        replaced = self.vex.createNode("subnet", "again")
        replaced.createDigitalAsset("korvan::one", self.file, "Second")
        self.assertEqual([(one.nodeTypeName(), one.description()) for one in hou.hda.definitionsInFile(self.file)],
                         [("korvan::one", "Second"), ("korvan::two", "two")])
        self.assertEqual(hou.hda.loadedFiles(), (self.file,))
        self.assertEqual(self.vex.createNode("korvan::one").parms(), ())
        self.assertEqual(self.vex.node("one").parm("gain").eval(), 3.5)
        read_index(self.bytes())

    def test_may_be_inside_each_other(self):
        inner = self.subnet("inner").createDigitalAsset("korvan::inner", self.file)
        inner.destroy()
        outer = self.vex.createNode("subnet", "outer")
        outer.createNode("korvan::inner")
        outer.createDigitalAsset("korvan::outer", self.file)
        node = self.vex.createNode("korvan::outer")
        self.assertEqual(node.node("inner1").type().name(), "korvan::inner")
        self.assertEqual(len(node.node("inner1").children()), 3)

    def test_are_refused_with_the_reason(self):
        subnet = self.subnet()
        for name in ("", "1x", "a b", "x::", "::x", "a::b::", "x/y", "ünder"):
            with self.fails("is no name for a node type"):
                subnet.createDigitalAsset(name, self.file)
        with self.fails("There is a type \"null\" already"):
            subnet.createDigitalAsset("null", self.file)
        with self.fails("only subnets can"):
            self.vex.createNode("null").createDigitalAsset("korvan::x", self.file)
        with self.fails("at least 3 and at most 2 inputs"):
            subnet.createDigitalAsset("korvan::x", self.file, None, 3, 2)
        with self.fails("was not written: No such file or directory"):
            subnet.createDigitalAsset("korvan::x", os.path.join(self.folder, "no", "where.hda"))
        with self.fails("needs a name"):
            subnet.createDigitalAsset("korvan::x", "")
        with self.assertRaises(TypeError):
            subnet.createDigitalAsset(1, self.file)
        self.assertFalse(os.path.exists(self.file))
        self.assertEqual(subnet.type().name(), "subnet")
        self.assertTrue(subnet.canCreateDigitalAsset())

    def test_leave_a_damaged_file_alone(self):
        self.subnet("one").createDigitalAsset("korvan::one", self.file)
        damaged = self.bytes()[:-5]
        other = os.path.join(self.folder, "damaged.hda")
        with open(other, "wb") as stream:
            stream.write(damaged)
        with self.fails("Nothing was written: .*damaged.hda\" is damaged"):
            self.subnet("two").createDigitalAsset("korvan::two", other)
        self.assertEqual(self.bytes(other), damaged)


class Containers(AssetTest):
    def setUp(self):
        super().setUp()
        self.look = hou.node("/shop").createNode("korvan_vopnet")

    def test_admit_what_was_made_of_their_own_nodes(self):
        subnet = self.look.createNode("subnet", "paint")
        subnet.node("suboutput1").setInput(0, subnet.createNode("korvan::image"))
        made = subnet.createDigitalAsset("artist::paint", self.file)
        self.assertEqual(made.type().definition().extraInfo(), "korvan_vopnet")
        another = self.look.createNode("artist::paint")
        self.assertEqual([child.type().name() for child in another.children()],
                         ["subinput", "suboutput", "korvan::image"])
        with self.fails("cannot be created in /vex"):
            self.vex.createNode("artist::paint")

    def test_refuse_what_holds_other_nodes(self):
        subnet = self.vex.createNode("subnet", "sum")
        subnet.createNode("add")
        subnet.createDigitalAsset("korvan::sum", self.file)
        with self.fails("cannot be created in /shop/korvan_vopnet1"):
            self.look.createNode("korvan::sum")


class Definitions(AssetTest):
    def test_belong_to_their_types(self):
        made = self.subnet().createDigitalAsset("korvan::looks", self.file, "The Looks", 1, 2)
        definition = made.type().definition()
        self.assertEqual((definition,), hou.hda.definitionsInFile(self.file))
        self.assertEqual(definition.nodeType(), made.type())
        self.assertEqual((definition.nodeTypeName(), definition.nodeTypeCategory(), definition.libraryFilePath()),
                         ("korvan::looks", hou.vopNodeTypeCategory(), self.file))
        self.assertEqual((definition.description(), definition.minNumInputs(), definition.maxNumInputs()),
                         ("The Looks", 1, 2))
        self.assertTrue(definition.isInstalled())
        self.assertIsNone(hou.nodeType(hou.vopNodeTypeCategory(), "null").definition())
        self.assertIsNone(hou.root().type().definition())

    def test_give_their_sections(self):
        made = self.subnet().createDigitalAsset("korvan::looks", self.file)
        sections = made.type().definition().sections()
        self.assertEqual(list(sections), ["DialogScript", "TypePropertiesOptions", "Contents.gz", "ExtraFileOptions"])
        self.assertIn("name\tkorvan::looks", sections["DialogScript"].contents())
        self.assertEqual(sections["ExtraFileOptions"].binaryContents(), b"\0\0\0\0")
        self.assertEqual(sections["ExtraFileOptions"].size(), 4)

    def test_can_be_listed_without_installing(self):
        self.subnet().createDigitalAsset("korvan::looks", self.file).destroy()
        hou.hda.uninstallFile(self.file)
        definition, = hou.hda.definitionsInFile(self.file)
        self.assertEqual(definition.nodeTypeName(), "korvan::looks")
        self.assertIsNone(definition.nodeType())
        self.assertFalse(definition.isInstalled())
        self.assertEqual(hou.hda.loadedFiles(), ())


class InstalledFiles(AssetTest):
    def test_are_refused_with_the_reason(self):
        with self.fails("No such file"):
            hou.hda.installFile(self.file)
        with open(self.file, "w") as stream:
            stream.write("some text")
        with self.fails("does not begin with"):
            hou.hda.installFile(self.file)
        with self.fails("does not begin with"):
            hou.hda.definitionsInFile(self.file)
        with self.fails("is not installed"):
            hou.hda.uninstallFile(self.file)
        self.assertEqual(hou.hda.loadedFiles(), ())

    def test_stay_while_there_are_nodes_of_them(self):
        made = self.subnet().createDigitalAsset("korvan::looks", self.file)
        with self.fails("/vex/looks is a node of its type"):
            hou.hda.uninstallFile(self.file)
        made.destroy()
        hou.hda.uninstallFile(self.file)
        self.assertIsNone(hou.vopNodeTypeCategory().nodeType("korvan::looks"))
        with self.fails("There is no node type"):
            self.vex.createNode("korvan::looks")

    def test_may_be_expanded_directories(self):
        self.subnet().createDigitalAsset("korvan::looks", self.file).destroy()
        hou.hda.uninstallFile(self.file)
        sections = read_index(self.bytes())
        folder = os.path.join(self.folder, "expanded.hda")
        inner = os.path.join(folder, "korvan_8_8Vop_1looks")
        os.makedirs(inner)
        files = {os.path.join(folder, "INDEX__SECTION"): b"Operator: korvan::looks\nLabel: Looks\nTable: Vop\n"
                 b"Path: oplib:/korvan::Vop/looks?korvan::Vop/looks\nExtra: *\nInputs: 0 to 2\nSubnet: true\n",
                 os.path.join(folder, "Sections.list"):
                 b'""\nINDEX__SECTION\tINDEX_SECTION\nkorvan_8_8Vop_1looks\tkorvan::Vop/looks\n',
                 os.path.join(inner, "Sections.list"): b'""\nDialogScript\tDialogScript\nContents.gz\tContents.gz\n'}
        for name, data, modified in read_index(sections[1][1])[:3]:
            files[os.path.join(inner, name)] = data
        for path, data in files.items():
            with open(path, "wb") as stream:
                stream.write(data)
        hou.hda.installFile(folder)
        node = self.vex.createNode("korvan::looks")
        self.assertEqual((node.parm("gain").eval(), len(node.children())), (2.5, 3))
        self.assertEqual(node.type().definition().libraryFilePath(), folder)
        with self.fails("only files are written"):
            self.subnet().createDigitalAsset("korvan::other", folder)


if __name__ == "__main__":
    unittest.main()
