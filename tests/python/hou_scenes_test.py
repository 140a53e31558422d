import os
import random
import shutil
import tempfile
import unittest

import hou
from scene import SceneTest


def nodes_below(node):
    for child in node.children():
        yield child
        yield from nodes_below(child)


def parm_facts(parm):
    try:
        expression = (parm.expression(), parm.expressionLanguage())
    except hou.OperationFailed:
        expression = None
    value = len(parm.multiParmInstances()) if parm.isMultiParmParent() else parm.eval()
    return parm.name(), expression, value, parm.isDisabled(), parm.isHidden(), parm.isSpare()


def facts(node):
    """Everything that hou tells of a node but its number."""
    wires = [(w.inputNode().path(), w.outputIndex(), w.inputIndex()) for w in node.inputConnections()]
    names = (node.inputNames(), node.outputNames()) if isinstance(node, hou.VopNode) else None
    return (node.path(), node.type().name(), tuple(node.position()), node.userDataDict(), wires,
            [n.path() for n in node.outputs()], names, [parm_facts(p) for p in node.parms()])


def scene_facts():
    return [facts(node) for node in nodes_below(hou.root())]


class ScenesTest(SceneTest):
    def setUp(self):
        super().setUp()
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        self.file = os.path.join(self.folder, "test.hip")

    def tearDown(self):
        super().tearDown()
        hou.hipFile.clear()

    def bytes(self):
        with open(self.file, "rb") as file:
            return file.read()

    def write(self, bytes):
        with open(self.file, "wb") as file:
            file.write(bytes)


class Scenes(ScenesTest):
    def container(self):
        return hou.node("/shop").createNode("korvan_vopnet", "look")

    def fill(self, seed):
        """A container with a node of every type that it takes, random values and wires."""
        chance = random.Random(seed)
        container = self.container()
        nodes = []
        for name in hou.vopNodeTypeCategory().nodeTypes():
            try:
                nodes.append(container.createNode(name))
            except hou.OperationFailed:
                continue
        for node in nodes:
            node.setUserData("note", "of %s\n\"quoted\"" % node.name())
            # Numbers of instances first: they decide which parameters there are.
            for parm in [p for p in node.parms() if p.isMultiParmParent()]:
                parm.set(chance.randrange(6))
            for parm in node.parms():
                self.randomize(parm, chance)
            for index in range(len(node.inputNames())):
                source = chance.choice(nodes)
                try:
                    node.setInput(index, source, chance.randrange(max(len(source.outputNames()), 1)))
                except hou.Error:
                    continue
        return nodes

    def randomize(self, parm, chance):
        if parm.isMultiParmParent():
            return
        kind = parm.parmTemplate().type()
        kinds = hou.parmTemplateType
        if kind == kinds.Float:
            if chance.random() < 0.2:
                parm.setExpression("$F * %g" % chance.random())
            else:
                parm.set(chance.uniform(-5, 5))
        elif kind in (kinds.Int, kinds.Toggle):
            parm.set(chance.randrange(2))
        elif kind == kinds.String:
            parm.set('a "text" {%d}\n' % chance.randrange(100))

    def test_come_back_as_they_were(self):
        for seed in (1, 2):
            with self.subTest(seed=seed):
                nodes = self.fill(seed)
                self.assertGreater(len(nodes), 20)
                self.assertGreater(sum(len(n.inputConnections()) for n in nodes), 5)
                before = scene_facts()
                hou.hipFile.save(self.file)
                first = self.bytes()
                hou.hipFile.load(self.file)
                self.assertEqual(scene_facts(), before)
                hou.hipFile.save()
                self.assertEqual(self.bytes(), first)
                hou.hipFile.clear()

    def test_keep_spare_parameters(self):
        null = self.obj.createNode("null", "n")
        null.addSpareParmTuple(hou.FloatParmTemplate("size", "Size \"x\"", 3, default_value=(1, 2, 3), min=0, max=9,
                                                     naming_scheme=hou.parmNamingScheme.XYZW, help="How big\nit is",
                                                     disable_when="{ kind == b }"))
        null.addSpareParmTuple(hou.StringParmTemplate("kind", "Kind", 1, default_value=("a",), menu_items=("a", "b"),
                                                      menu_labels=("An A", "A B"), tags={"why": "not \"this\""}))
        null.addSpareParmTuple(hou.ToggleParmTemplate("on", "On", default_value=True, is_hidden=True))
        null.parm("sizey").set(0.1)
        null.parm("kind").set("b")

        def said():
            node = hou.node("/obj/n")
            return [(p.name(), p.eval(), p.isDisabled(), p.isSpare(), p.parmTemplate().label(), p.parmTemplate().help(),
                     p.parmTemplate().tags(), p.parmTemplate().defaultValue(), p.parmTemplate().isHidden())
                    for p in node.spareParms()]
        before = said()
        self.assertEqual(len(before), 5)
        hou.hipFile.save(self.file)
        hou.hipFile.load(self.file)
        self.assertEqual(said(), before)
        self.assertEqual(hou.parm("/obj/n/kind").menuLabels(), ("An A", "A B"))
        self.assertTrue(hou.parm("/obj/n/sizex").isDisabled())

    def test_keep_the_time_and_variables(self):
        hou.setFps(30)
        hou.setFrame(12)
        hou.hscript("set SCENE_WORD = 'a b'")
        hou.hipFile.save(self.file)
        hou.hipFile.clear()
        self.assertEqual((hou.fps(), hou.frame()), (24, 1))
        hou.hscript("set -u SCENE_WORD")
        hou.hipFile.load(self.file)
        self.assertEqual((hou.fps(), hou.frame()), (30, 12))
        self.assertEqual(hou.expandString("$SCENE_WORD"), "a b")
        hou.hscript("set -u SCENE_WORD")

    def test_know_their_file(self):
        hou.hipFile.save(self.file)
        self.assertEqual(hou.hipFile.path(), self.file)
        self.assertEqual(hou.hipFile.basename(), "test.hip")
        self.assertEqual(hou.expandString("$HIP/$HIPNAME"), self.folder + "/test")
        hou.hipFile.clear()
        self.assertEqual(hou.hipFile.basename(), "untitled.hip")

    def test_are_merged_under_other_names(self):
        self.obj.createNode("null", "n").parm("tx").set(3)
        hou.hipFile.save(self.file)
        hou.hipFile.merge(self.file)
        self.assertEqual([n.name() for n in self.obj.children()], ["n", "n1"])
        self.assertEqual(hou.node("/obj/n1").evalParm("tx"), 3)

    def test_that_cannot_be_read_leave_the_present_one(self):
        self.obj.createNode("null", "n")
        hou.hipFile.save(self.file)
        whole = self.bytes()
        null = self.obj.createNode("null", "later")
        for length in range(0, len(whole), 97):
            self.write(whole[:length])
            with self.fails("test.hip.*cannot be loaded.*Load another copy"):
                hou.hipFile.load(self.file)
        self.assertEqual(null.path(), "/obj/later")
        with self.fails("nowhere.hip.*cannot be read.*Check the path"):
            hou.hipFile.load(os.path.join(self.folder, "nowhere.hip"))
        with self.assertRaises(TypeError):
            hou.hipFile.load(3)

    def test_that_cannot_be_written_say_why(self):
        with self.fails("No space left on device. Make room"):
            hou.hipFile.save("/dev/full")
        with self.fails("cannot be written.*Check the path"):
            hou.hipFile.save(os.path.join(self.folder, "no", "folder.hip"))
        self.assertEqual(os.listdir(self.folder), [])

    def test_with_missing_types_warn_unless_told_not_to_and_keep_the_nodes(self):
        self.container().createNode("subnet", "sub")
        null = hou.node("/shop/look").createNode("null", "n")
        null.setInput(0, hou.node("/shop/look").createNode("null", "from"))
        hou.hipFile.save(self.file)
        self.write(self.bytes().replace(b"type = korvan_vopnet\n", b"type = missing_types\n"))
        before = self.bytes()
        with self.fails('type "missing_types" is missing: /shop/look', hou.LoadWarning):
            hou.hipFile.load(self.file)
        hou.hipFile.load(self.file, ignore_load_warnings=True)
        look = hou.node("/shop/look")
        self.assertEqual(look.type().name(), "missing_types")
        self.assertEqual(look.parms(), ())
        self.assertEqual(look.node("n").inputs(), (look.node("from"),))
        hou.hipFile.save()
        self.assertEqual(self.bytes(), before)


def without_entries(archive, prefix):
    """The archive without the entries whose names begin with that."""
    kept, place = b"", 0
    while place < len(archive):
        size = 76 + int(archive[place + 59:place + 65], 8) + int(archive[place + 65:place + 76], 8)
        if not archive[place + 76:].startswith(prefix):
            kept += archive[place:place + size]
        place += size
    return kept


class AssetsInScenes(ScenesTest):
    """Instances of an asset that holds an "add" behind its one input."""

    def setUp(self):
        super().setUp()
        self.library = os.path.join(self.folder, "thing.hda")
        subnet = self.vex.createNode("subnet", "thing")
        add = subnet.createNode("add", "sum")
        subnet.setInput(0, self.vex.createNode("add", "source"))
        add.setInput(0, subnet.node("subinput1"))
        subnet.node("suboutput1").setInput(0, add)
        subnet.createDigitalAsset(name="scenes_test::thing", hda_file_name=self.library, description="Thing")
        self.vex.createNode("scenes_test::thing", "made")

    def tearDown(self):
        super().tearDown()
        if self.library in hou.hda.loadedFiles():
            hou.hda.uninstallFile(self.library)

    def test_keep_what_is_inside(self):
        hou.node("/vex/made").createNode("add", "extra")
        before = scene_facts()
        hou.hipFile.save(self.file)
        hou.hipFile.load(self.file)
        self.assertEqual(scene_facts(), before)

    def test_that_match_their_definition_are_filled_from_it(self):
        hou.hipFile.save(self.file)
        locked = without_entries(self.bytes(), b"vex/made/").replace(b"matchesdef = 0", b"matchesdef = 1")
        self.write(locked)
        hou.hipFile.load(self.file)
        made = hou.node("/vex/made")
        self.assertEqual(made.node("suboutput1").inputs(), (made.node("sum"),))

    def test_are_placeholders_while_the_library_is_missing(self):
        hou.hipFile.save(self.file)
        before = self.bytes()
        hou.hipFile.clear()
        hou.hda.uninstallFile(self.library)
        hou.hipFile.load(self.file, ignore_load_warnings=True)
        self.assertEqual(hou.node("/vex/made").type().name(), "scenes_test::thing")
        hou.hipFile.save()
        self.assertEqual(self.bytes(), before)


class Copies(ScenesTest):
    def test_are_new_nodes_in_the_order_asked_for(self):
        first, second = self.vex.createNode("add", "first"), self.vex.createNode("add", "second")
        second.setInput(0, first)
        subnet = self.vex.createNode("subnet", "sub")
        copies = hou.copyNodesTo((second, first), subnet)
        self.assertEqual([n.path() for n in copies], ["/vex/sub/second", "/vex/sub/first"])
        self.assertEqual(copies[0].inputs(), (copies[1],))
        again, = hou.copyNodesTo([second], self.vex)
        self.assertEqual(again.name(), "second1")
        self.assertEqual(again.inputs(), (first,))

    def test_are_refused_where_the_type_is_not_allowed(self):
        add = self.vex.createNode("add", "sum")
        look = hou.node("/shop").createNode("korvan_vopnet")
        before = look.children()
        with self.fails('/vex/sum cannot be copied into .*"add" is not allowed there'):
            hou.copyNodesTo((add,), look)
        with self.fails("holds no nodes|cannot contain"):
            hou.copyNodesTo((add,), self.obj.createNode("null"))
        with self.assertRaises(TypeError):
            hou.copyNodesTo((add,), "/vex")
        self.assertEqual(look.children(), before)


if __name__ == "__main__":
    unittest.main()
