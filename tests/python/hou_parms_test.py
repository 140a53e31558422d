import unittest

import hou
from scene import SceneTest


class Parameters(SceneTest):
    def setUp(self):
        super().setUp()
        self.cam = self.obj.createNode("cam", "cam")

    def test_are_listed_by_component_and_by_tuple(self):
        self.assertEqual([p.name() for p in self.cam.parms()][:3], ["tx", "ty", "tz"])
        self.assertEqual([p.name() for p in self.cam.parmTuples()][:2], ["t", "r"])

    def test_are_found_by_path(self):
        self.assertEqual(hou.parm("/obj/cam/ty").tuple().name(), "t")
        self.assertEqual(hou.parmTuple("/obj/cam/t").node(), self.cam)
        self.assertEqual(self.cam.parm("../cam/tx"), self.cam.parm("tx"))
        self.assertIsNone(self.cam.parm("nothing"))
        self.assertIsNone(self.cam.parmTuple("nothing"))
        self.assertIsNone(self.cam.parm("../nobody/tx"))

    def test_hold_what_they_are_set_to(self):
        self.cam.parm("tx").set(1.5)
        self.cam.parmTuple("r").set((10, 20, 30))
        self.cam.setParms({"focal": 35, "resx": 640})
        self.assertEqual(self.cam.evalParm("t"), (1.5, 0.0, 0.0))
        self.assertEqual(self.cam.parmTuple("r").eval(), (10.0, 20.0, 30.0))
        self.assertEqual((self.cam.evalParm("focal"), self.cam.evalParm("resx")), (35.0, 640))
        self.assertIsInstance(self.cam.evalParm("resx"), int)

    def test_set_several_or_none(self):
        with self.fails('has no parameter "nothing"'):
            self.cam.setParms({"focal": 35, "nothing": 1})
        self.assertTrue(self.cam.parm("focal").isAtDefault())
        with self.fails('has no parameter "nothing"'):
            self.cam.evalParm("nothing")

    def test_convert_on_request(self):
        self.cam.parm("focal").set(35.75)
        focal = self.cam.parm("focal")
        self.assertEqual((focal.evalAsInt(), focal.evalAsFloat(), focal.evalAsString()), (35, 35.75, "35.75"))

    def test_go_back_to_their_defaults(self):
        resolution = self.cam.parm("resx")
        default = resolution.eval()
        resolution.set(1)
        self.assertFalse(resolution.isAtDefault())
        resolution.revertToDefaults()
        self.assertEqual(resolution.eval(), default)

    def test_know_who_they_are(self):
        parm = self.cam.parm("ry")
        self.assertEqual((parm.name(), parm.path(), parm.description(), parm.componentIndex(), parm.node()),
                         ("ry", "/obj/cam/ry", "Rotate", 1, self.cam))
        self.assertEqual(repr(parm), "<hou.Parm ry in /obj/cam>")
        self.assertEqual(len({parm, self.cam.parm("ry"), self.cam.parm("rx")}), 2)

    def test_refuse_what_they_cannot_hold(self):
        for wrong in ("much", None, [1], {}):
            with self.assertRaises(TypeError):
                self.cam.parm("focal").set(wrong)
        with self.fails("has 3 components", hou.InvalidSize):
            self.cam.parmTuple("t").set((1, 2))
        with self.assertRaises(IndexError):
            self.cam.parmTuple("t")[3]

    def test_index_from_the_end_as_sequences_do(self):
        translate = self.cam.parmTuple("t")
        self.assertEqual((len(translate), translate[-1].name()), (3, "tz"))

    def test_give_their_events_a_node_that_may_go_away(self):
        parm = self.cam.parm("tx")
        self.cam.destroy()
        for use in (parm.eval, parm.name, parm.isDisabled, parm.parmTemplate, parm.deleteAllKeyframes):
            with self.assertRaises(hou.ObjectWasDeleted):
                use()


class Expressions(SceneTest):
    def setUp(self):
        super().setUp()
        self.cam = self.obj.createNode("cam", "cam")

    def test_in_hscript_are_the_default(self):
        parm = self.cam.parm("tx")
        parm.setExpression("$F * 2")
        self.assertEqual((parm.expression(), parm.expressionLanguage()), ("$F * 2", hou.exprLanguage.Hscript))
        hou.setFrame(5)
        self.assertEqual(parm.eval(), 10)
        self.assertEqual(parm.evalAtFrame(7), 14)
        self.assertEqual(parm.evalAtTime(0), 2)
        self.assertTrue(parm.isTimeDependent())

    def test_in_python_see_hou_and_their_node(self):
        parm = self.cam.parm("ty")
        parm.setExpression("len(hou.pwd().name()) + hou.frame()", hou.exprLanguage.Python)
        self.assertEqual(parm.eval(), 4)
        self.assertEqual(parm.evalAtFrame(10), 13)

    def test_reach_other_nodes(self):
        null = self.obj.createNode("null", "null")
        null.parm("tx").setExpression('ch("../cam/tx") + 1')
        null.parm("ty").setExpression("hou.parm('../cam/tx').eval() - 1", hou.exprLanguage.Python)
        self.cam.parm("tx").set(4)
        self.assertEqual((null.evalParm("tx"), null.evalParm("ty")), (5, 3))

    def test_that_fail_give_zero_and_an_error_of_the_node(self):
        parm = self.cam.parm("tz")
        parm.setExpression("nowhere", hou.exprLanguage.Python)
        self.assertEqual(parm.eval(), 0)
        self.assertEqual(len(self.cam.errors()), 1)
        self.assertRegex(self.cam.errors()[0], "/obj/cam/tz.*NameError")
        parm.deleteAllKeyframes()
        self.assertEqual(self.cam.errors(), ())

    def test_are_replaced_on_request_only(self):
        parm = self.cam.parm("tx")
        parm.setExpression("1")
        parm.setExpression("2", replace_expression=False)
        self.assertEqual(parm.eval(), 1)

    def test_take_a_language_of_the_enumeration(self):
        with self.assertRaises(TypeError):
            self.cam.parm("tx").setExpression("1", "python")


class SpareParameters(SceneTest):
    def setUp(self):
        super().setUp()
        self.node = self.obj.createNode("null")

    def test_of_floats_carry_range_defaults_and_suffixes(self):
        parms = self.node.addSpareParmTuple(
            hou.FloatParmTemplate("tint", "Tint", 3, (1, .5, 0), 0, 2, True, look=hou.parmLook.ColorSquare,
                                  naming_scheme=hou.parmNamingScheme.RGBA))
        self.assertEqual([p.name() for p in parms], ["tintr", "tintg", "tintb"])
        self.assertEqual(parms.eval(), (1.0, 0.5, 0.0))
        template = parms.parmTemplate()
        self.assertEqual((template.minValue(), template.maxValue(), template.minIsStrict(), template.look()),
                         (0.0, 2.0, True, hou.parmLook.ColorSquare))
        self.assertTrue(parms.isSpare())
        self.assertEqual(len(self.node.spareParms()), 3)

    def test_of_every_kind_evaluate_to_their_defaults(self):
        self.node.addSpareParmTuple(hou.IntParmTemplate("count", "Count", 2, (3, 4)))
        self.node.addSpareParmTuple(hou.StringParmTemplate("file", "File", 1, ("$F.exr",),
                                                           string_type=hou.stringParmType.FileReference,
                                                           file_type=hou.fileType.Image))
        self.node.addSpareParmTuple(hou.ToggleParmTemplate("on", "On", True))
        self.assertEqual(self.node.parmTuple("count").eval(), (3, 4))
        self.assertEqual(self.node.evalParm("file"), "1.exr")
        self.assertEqual(self.node.evalParm("on"), 1)
        self.assertEqual(self.node.parm("file").parmTemplate().fileType(), hou.fileType.Image)

    def test_may_start_with_an_expression(self):
        self.node.addSpareParmTuple(hou.FloatParmTemplate("a", "A", 1, default_expression=("$F + 1",)))
        self.node.addSpareParmTuple(hou.StringParmTemplate(
            "b", "B", 1, default_expression=("hou.pwd().name()",),
            default_expression_language=(hou.scriptLanguage.Python,)))
        self.assertEqual((self.node.evalParm("a"), self.node.evalParm("b")), (2, self.node.name()))

    def test_may_have_conditions(self):
        self.node.addSpareParmTuple(hou.ToggleParmTemplate("use", "Use", False))
        template = hou.FloatParmTemplate("size", "Size", 1, disable_when="{ use == 0 }")
        template.setConditional(hou.parmCondType.HideWhen, "{ use == 1 size > 5 }")
        size = self.node.addSpareParmTuple(template)[0]
        self.assertEqual((size.isDisabled(), size.isHidden()), (True, False))
        self.node.parm("use").set(1)
        self.assertEqual((size.isDisabled(), size.isHidden()), (False, False))
        size.set(6)
        self.assertEqual((size.isDisabled(), size.isHidden()), (False, True))

    def test_may_have_menus(self):
        self.node.addSpareParmTuple(hou.StringParmTemplate("mode", "Mode", 1, ("b",), menu_items=("a", "b"),
                                                           menu_labels=("One", "Two")))
        self.node.addSpareParmTuple(hou.StringParmTemplate(
            "names", "Names", 1, item_generator_script="[kwargs['node'].name(), 'This', 'x', 'Other']",
            item_generator_script_language=hou.scriptLanguage.Python))
        self.assertEqual(self.node.parm("mode").menuLabels(), ("One", "Two"))
        self.assertEqual(self.node.parm("names").menuItems(), (self.node.name(), "x"))

    def test_keep_tags_and_help(self):
        template = hou.FloatParmTemplate("a", "A", 1, help="Long words.", tags={"unit": "m"})
        made = self.node.addSpareParmTuple(template).parmTemplate()
        self.assertEqual((made.help(), made.tags()), ("Long words.", {"unit": "m"}))

    def test_cannot_take_a_name_that_is_there(self):
        for taken in ("t", "tx"):
            with self.fails('already has a parameter "%s"' % taken):
                self.node.addSpareParmTuple(hou.FloatParmTemplate(taken, "T", 1))

    def test_cannot_have_an_impossible_name(self):
        for bad in ("", "a b", "1a", "a-b"):
            with self.fails("is no name for a parameter"):
                self.node.addSpareParmTuple(hou.FloatParmTemplate(bad, "A", 1))

    def test_of_other_kinds_are_refused(self):
        with self.fails("cannot be a spare parameter"):
            self.node.addSpareParmTuple(hou.ButtonParmTemplate("go", "Go"))
        with self.assertRaises(TypeError):
            self.node.addSpareParmTuple("go")

    def test_belong_to_their_node_alone(self):
        self.node.addSpareParmTuple(hou.FloatParmTemplate("own", "Own", 1))
        self.assertIsNone(self.obj.createNode("null").parm("own"))

    def test_that_are_not_quite_alike_are_apart(self):
        other = self.obj.createNode("null")
        for node, label, value in ((self.node, "Gain", 0.5), (other, "Gain ", 0.25)):
            node.addSpareParmTuple(hou.FloatParmTemplate("gain", label, 1, default_value=(value,), help=label))
        self.assertEqual([(n.parm("gain").description(), n.parm("gain").eval(), n.parm("gain").parmTemplate().help())
                          for n in (self.node, other)], [("Gain", 0.5, "Gain"), ("Gain ", 0.25, "Gain ")])

    def test_that_come_and_go_do_not_fill_the_memory(self):
        def come_and_go(times):
            for _ in range(times):
                self.node.removeSpareParmTuple(self.node.addSpareParmTuple(hou.FloatParmTemplate("gain", "Gain", 3)))

        def kilobytes():
            with open("/proc/self/status", encoding="ascii") as stream:
                return next(int(line.split()[1]) for line in stream if line.startswith("VmRSS:"))

        come_and_go(1500)  # the undo stack is full then
        before = kilobytes()
        come_and_go(3000)
        self.assertLess(kilobytes() - before, 1000)

    def test_can_be_removed_again(self):
        own = self.node.addSpareParmTuple(hou.FloatParmTemplate("own", "Own", 1))
        self.node.removeSpareParmTuple(own)
        self.assertIsNone(self.node.parm("own"))
        with self.assertRaises(hou.ObjectWasDeleted):
            own.eval()
        with self.fails("is not a spare parameter"):
            self.node.removeSpareParmTuple(self.node.parmTuple("t"))


if __name__ == "__main__":
    unittest.main()
