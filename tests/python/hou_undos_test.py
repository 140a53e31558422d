import unittest

import hou
from scene import SceneTest


class Undo(SceneTest):
    def setUp(self):
        super().setUp()
        self.cam = self.obj.createNode("cam", "cam")
        hou.undos.clear()

    def tearDown(self):
        self.assertTrue(hou.undos.areEnabled())
        hou.undos.clear()
        super().tearDown()

    def test_finds_nothing_at_first(self):
        self.assertEqual((hou.undos.undoLabels(), hou.undos.redoLabels()), ((), ()))
        self.assertFalse(hou.undos.performUndo())
        self.assertFalse(hou.undos.performRedo())

    def test_takes_back_one_edit_and_brings_it_again(self):
        self.cam.parm("focal").set(35)
        self.assertEqual(hou.undos.undoLabels(), ("Parameter Change",))
        self.assertTrue(hou.undos.performUndo())
        self.assertTrue(self.cam.parm("focal").isAtDefault())
        self.assertEqual(hou.undos.redoLabels(), ("Parameter Change",))
        self.assertTrue(hou.undos.performRedo())
        self.assertEqual(self.cam.evalParm("focal"), 35.0)

    def test_takes_back_a_tuple_and_several_parameters_at_once(self):
        self.cam.parmTuple("t").set((1, 2, 3))
        self.cam.setParms({"focal": 35, "resx": 640})
        self.assertEqual(len(hou.undos.undoLabels()), 2)
        hou.undos.performUndo()
        self.assertTrue(self.cam.parm("focal").isAtDefault() and self.cam.parm("resx").isAtDefault())
        hou.undos.performUndo()
        self.assertEqual(self.cam.evalParm("t"), (0.0, 0.0, 0.0))

    def test_restores_expressions(self):
        focal = self.cam.parm("focal")
        focal.setExpression("$F * 2")
        focal.deleteAllKeyframes()
        focal.set(5)
        hou.undos.performUndo()
        hou.undos.performUndo()
        self.assertEqual(focal.expression(), "$F * 2")
        hou.undos.performUndo()
        with self.fails("does not have an expression"):
            focal.expression()

    def test_names_a_group_after_the_outermost(self):
        with hou.undos.group("Outer"):
            self.cam.parm("tx").set(1)
            with hou.undos.group("Inner"):
                self.cam.parm("ty").set(2)
            self.cam.parm("tx").set(3)
        self.assertEqual(hou.undos.undoLabels(), ("Outer",))
        hou.undos.performUndo()
        self.assertEqual(self.cam.evalParm("t"), (0.0, 0.0, 0.0))
        hou.undos.performRedo()
        self.assertEqual(self.cam.evalParm("t"), (3.0, 2.0, 0.0))

    def test_leaves_no_step_of_a_group_without_changes(self):
        with hou.undos.group("Empty"):
            with hou.undos.group("Inside"):
                self.cam.parm("tx").eval()
        self.assertEqual(hou.undos.undoLabels(), ())

    def test_keeps_a_group_that_an_exception_leaves(self):
        with self.assertRaises(ZeroDivisionError):
            with hou.undos.group("Half"):
                self.cam.parm("tx").set(1)
                1 / 0
        self.assertEqual((self.cam.evalParm("tx"), hou.undos.undoLabels()), (1.0, ("Half",)))
        hou.undos.performUndo()
        self.assertEqual(self.cam.evalParm("tx"), 0.0)

    def test_waits_for_the_end_of_a_group(self):
        self.cam.parm("tx").set(1)
        with hou.undos.group("Busy"):
            for perform in (hou.undos.performUndo, hou.undos.performRedo):
                with self.fails('The undo block "Busy" is open'):
                    perform()
        self.assertTrue(hou.undos.performUndo())

    def test_drops_what_was_undone_for_a_new_change(self):
        self.cam.parm("tx").set(1)
        hou.undos.performUndo()
        self.cam.parm("ty").set(1)
        self.assertEqual(hou.undos.redoLabels(), ())
        self.assertFalse(hou.undos.performRedo())

    def test_leaves_alone_what_a_disabler_holds(self):
        with hou.undos.group("Group"):
            self.cam.parm("tx").set(1)
            with self.assertRaises(KeyError):
                with hou.undos.disabler():
                    self.assertFalse(hou.undos.areEnabled())
                    self.cam.parm("ty").set(2)
                    raise KeyError
        hou.undos.performUndo()
        self.assertEqual(self.cam.evalParm("t"), (0.0, 2.0, 0.0))

    def test_passes_over_nodes_that_are_gone(self):
        other = self.obj.createNode("cam", "other")
        self.cam.parm("tx").set(1)
        other.parm("tx").set(2)
        other.destroy()
        self.obj.createNode("cam", "other").parm("ty").eval()
        self.assertEqual(len(hou.undos.undoLabels()), 1)
        hou.undos.performUndo()
        self.assertEqual(self.cam.evalParm("tx"), 0.0)

    def test_finds_a_node_that_was_renamed(self):
        self.cam.parm("tx").set(1)
        self.cam.setName("renamed")
        hou.undos.performUndo()
        self.assertEqual(self.cam.evalParm("tx"), 0.0)

    def test_holds_a_thousand_steps(self):
        for number in range(1, 2001):
            self.cam.parm("tx").set(number)
        self.assertEqual(len(hou.undos.undoLabels()), 1000)
        while hou.undos.performUndo():
            pass
        self.assertEqual(self.cam.evalParm("tx"), 1000.0)

    def test_refuses_labels_that_are_no_texts(self):
        with self.assertRaises(TypeError):
            with hou.undos.group(5):
                self.fail("the group was opened")

    def test_covers_what_hscript_does(self):
        hou.hscript("opparm /obj/cam tx 4; opparm /obj/cam focal 20")
        self.assertEqual((self.cam.evalParm("tx"), hou.undos.undoLabels()), (4.0, ("hscript",)))
        hou.undos.performUndo()
        self.assertEqual(self.cam.evalParm("tx"), 0.0)


if __name__ == "__main__":
    unittest.main()
