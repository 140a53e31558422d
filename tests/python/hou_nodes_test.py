import unittest

import hou
from scene import SceneTest


class LookUp(SceneTest):
    def test_finds_the_managers_below_the_root(self):
        self.assertEqual([node.name() for node in hou.root().children()], ["obj", "shop", "out", "vex"])

    def test_gives_none_for_a_path_that_leads_nowhere(self):
        self.assertIsNone(hou.node("/obj/nobody"))
        self.assertIsNone(hou.node(""))
        self.assertIsNone(self.obj.node("../nowhere"))

    def test_starts_at_the_node_or_at_the_working_node(self):
        cam = self.obj.createNode("cam")
        null = self.obj.createNode("null")
        self.assertEqual(cam.node("../" + null.name()), null)
        self.addCleanup(hou.cd, "/")
        hou.cd("/obj")
        self.assertEqual(hou.pwd(), self.obj)
        self.assertEqual(hou.node(cam.name()), cam)

    def test_going_to_a_path_that_leads_nowhere_raises(self):
        with self.fails('There is no node at "/obj/nobody"'):
            hou.cd("/obj/nobody")

    def test_of_something_that_is_no_text_raises_a_type_error(self):
        for wrong in (None, 3, b"/obj", self.obj):
            with self.assertRaises(TypeError):
                hou.node(wrong)


class Creation(SceneTest):
    def test_numbers_nodes_that_got_no_name(self):
        self.assertEqual([self.obj.createNode("cam").name() for _ in range(3)], ["cam1", "cam2", "cam3"])

    def test_takes_a_name_and_numbers_it_when_taken(self):
        self.assertEqual(self.obj.createNode("null", "here").path(), "/obj/here")
        self.assertNotEqual(self.obj.createNode("null", "here").name(), "here")

    def test_gives_a_node_of_its_kind(self):
        self.assertIsInstance(self.obj.createNode("cam"), hou.ObjNode)
        self.assertIsInstance(self.vex.createNode("null"), hou.VopNode)

    def test_of_an_unknown_type_raises_with_its_name(self):
        with self.fails('"korvan::nothing"'):
            self.obj.createNode("korvan::nothing")

    def test_where_no_nodes_can_be_raises(self):
        with self.fails("cannot contain"):
            self.obj.createNode("cam").createNode("cam")

    def test_with_an_impossible_name_raises(self):
        with self.fails("is no name for a node", hou.InvalidNodeName):
            self.obj.createNode("cam", "a b")

    def test_puts_no_node_onto_another(self):
        positions = [tuple(self.obj.createNode("null").position()) for _ in range(5)]
        self.assertEqual(len(set(positions)), 5)


class Name(SceneTest):
    def test_changes_path_and_keeps_the_handle(self):
        node = self.obj.createNode("null")
        node.setName("pivot")
        self.assertEqual(node.path(), "/obj/pivot")

    def test_that_is_taken_raises_unless_a_unique_one_is_wanted(self):
        self.obj.createNode("null", "a")
        other = self.obj.createNode("null", "b")
        with self.fails('already has a node named "a"'):
            other.setName("a")
        self.assertEqual(other.name(), "b")
        other.setName("a", unique_name=True)
        self.assertNotIn(other.name(), ("a", "b"))

    def test_may_be_set_to_what_it_is(self):
        node = self.obj.createNode("null", "same")
        node.setName("same")
        self.assertEqual(node.name(), "same")

    def test_that_cannot_be_raises(self):
        node = self.obj.createNode("null")
        for bad in ("", "a/b", "..", "ü"):
            with self.assertRaises(hou.InvalidNodeName):
                node.setName(bad)
        with self.assertRaises(hou.OperationFailed):
            hou.root().setName("other")


class Deletion(SceneTest):
    def test_makes_every_use_of_the_handle_raise(self):
        node = self.obj.createNode("null")
        node.destroy()
        for use in (node.name, node.path, node.parms, node.destroy, node.type, node.inputs, node.position,
                    node.children, node.userDataDict, node.inputConnectors, node.parmTemplateGroup, node.errors):
            with self.assertRaises(hou.ObjectWasDeleted):
                use()
        self.assertEqual(repr(node), "<hou.ObjNode, deleted>")

    def test_takes_the_contents_along(self):
        subnet = self.vex.createNode("subnet")
        inside = subnet.createNode("null")
        subnet.destroy()
        with self.assertRaises(hou.ObjectWasDeleted):
            inside.name()

    def test_disconnects(self):
        first, second = self.vex.createNode("null"), self.vex.createNode("null")
        second.setInput(0, first)
        first.destroy()
        self.assertEqual(second.inputs(), ())

    def test_of_root_and_managers_is_refused(self):
        for node in (hou.root(), self.obj):
            with self.fails("cannot be deleted"):
                node.destroy()

    def test_never_gives_the_number_to_another_node(self):
        first = self.obj.createNode("null", "n")
        first.destroy()
        second = self.obj.createNode("null", "n")
        self.assertNotEqual(first, second)
        with self.assertRaises(hou.ObjectWasDeleted):
            first.path()


class Identity(SceneTest):
    def test_is_that_of_the_node_and_not_of_the_handle(self):
        node = self.obj.createNode("null")
        self.assertEqual(node, hou.node(node.path()))
        self.assertEqual(len({node, hou.node(node.path())}), 1)

    def test_is_told_by_the_representation(self):
        node = self.vex.createNode("null", "n")
        self.assertEqual(repr(node), "<hou.VopNode of type null at /vex/n>")


class Place(SceneTest):
    def test_is_two_numbers_that_can_be_set(self):
        node = self.obj.createNode("null")
        node.setPosition((3, -2.5))
        self.assertEqual(node.position(), hou.Vector2(3, -2.5))
        node.move(hou.Vector2(1, 1))
        self.assertEqual(tuple(node.position()), (4.0, -1.5))

    def test_ends_at_the_border_of_the_safe_area(self):
        node = self.obj.createNode("null")
        node.setPosition((1e9, -1e9))
        self.assertEqual(tuple(node.position()), (1e6, -1e6))

    def test_refuses_what_is_not_two_finite_numbers(self):
        node = self.obj.createNode("null")
        for wrong, error in (((1,), ValueError), (("a", "b"), TypeError), (3, TypeError),
                             ((float("nan"), 0), ValueError)):
            with self.assertRaises(error):
                node.setPosition(wrong)

    def test_moves_to_where_no_other_node_is(self):
        first, second = self.vex.createNode("null"), self.vex.createNode("null")
        first.setPosition((0, 0))
        second.setPosition((0, 0))
        self.assertNotEqual(second.moveToGoodPosition(), first.position())


class UserData(SceneTest):
    def test_is_kept_under_its_name(self):
        node = self.obj.createNode("null")
        node.setUserData("outputs", "")
        node.setUserData("note", "größer")
        self.assertEqual(node.userDataDict(), {"outputs": "", "note": "größer"})
        self.assertEqual(node.userData("note"), "größer")
        self.assertIsNone(node.userData("absent"))

    def test_can_be_removed_once(self):
        node = self.obj.createNode("null")
        node.setUserData("note", "x")
        node.destroyUserData("note")
        with self.fails('no user data named "note"'):
            node.destroyUserData("note")

    def test_takes_texts_only(self):
        node = self.obj.createNode("null")
        for name, value in (("n", 1), (1, "v"), ("n", None)):
            with self.assertRaises(TypeError):
                node.setUserData(name, value)

    def test_refuses_a_text_that_the_host_would_cut(self):
        node = self.obj.createNode("null")
        node.setUserData("n", "kept")
        with self.assertRaises(ValueError):
            node.setUserData("n", "a\0b")
        self.assertEqual(node.userData("n"), "kept")


class Flags(SceneTest):
    def test_can_be_set_and_asked(self):
        node = self.obj.createNode("null")
        for flag in (hou.nodeFlag.Bypass, hou.nodeFlag.Display, hou.nodeFlag.Lock):
            before = node.isGenericFlagSet(flag)
            node.setGenericFlag(flag, not before)
            self.assertEqual(node.isGenericFlagSet(flag), not before)

    def test_of_detail_exclude_each_other(self):
        node = self.vex.createNode("null")
        node.setGenericFlag(hou.nodeFlag.VopLowDetail, True)
        node.setGenericFlag(hou.nodeFlag.VopMediumDetail, True)
        self.assertFalse(node.isGenericFlagSet(hou.nodeFlag.VopLowDetail))
        self.assertTrue(node.isGenericFlagSet(hou.nodeFlag.VopMediumDetail))

    def test_of_detail_belong_to_shader_nodes_only(self):
        with self.fails("has no flag VopLowDetail"):
            self.obj.createNode("null").setGenericFlag(hou.nodeFlag.VopLowDetail, True)

    def test_are_no_texts(self):
        with self.assertRaises(TypeError):
            self.obj.createNode("null").setGenericFlag("Bypass", True)


if __name__ == "__main__":
    unittest.main()
