import copy
import os
import pickle
import threading
import unittest

import hou
from scene import SceneTest


class Time(SceneTest):
    def test_is_zero_at_frame_one(self):
        self.assertEqual((hou.frame(), hou.time(), hou.fps()), (1, 0, 24))

    def test_and_frame_are_two_views_of_one_thing(self):
        hou.setFrame(25)
        self.assertEqual(hou.time(), 1)
        hou.setTime(2)
        self.assertEqual(hou.frame(), 49)
        self.assertEqual((hou.timeToFrame(0.5), hou.frameToTime(13)), (13, 0.5))

    def test_stays_when_the_rate_changes(self):
        hou.setTime(1)
        hou.setFps(30)
        self.assertEqual((hou.time(), hou.frame()), (1, 31))

    def test_refuses_what_is_no_time(self):
        for wrong in ("1", None):
            with self.assertRaises(TypeError):
                hou.setFrame(wrong)
        for wrong in (float("inf"), float("nan")):
            with self.assertRaises(ValueError):
                hou.setTime(wrong)
        with self.assertRaises(ValueError):
            hou.setFps(0)


class Hscript(SceneTest):
    def test_gives_output_and_errors(self):
        self.assertEqual(hou.hscript("echo hello"), ("hello\n", ""))
        output, errors = hou.hscript("nonsense 3; echo after")
        self.assertEqual(output, "after\n")
        self.assertIn("nonsense", errors)

    def test_expressions_give_numbers_or_texts(self):
        self.assertEqual(hou.hscriptExpression("1 + 2 * 3"), 7)
        self.assertEqual(hou.hscriptExpression('"a" + "b"'), "ab")
        cam = self.obj.createNode("cam", "cam")
        cam.parm("tx").set(2.5)
        self.assertEqual(hou.hscriptExpression('ch("/obj/cam/tx")'), 2.5)

    def test_expressions_that_fail_raise_a_sentence(self):
        for text in ("1 +", "nofunction(1)", 'ch("/obj/nobody/tx")', ""):
            with self.assertRaises(hou.OperationFailed) as raised:
                hou.hscriptExpression(text)
            self.assertTrue(raised.exception.instanceMessage())

    def test_variables_are_expanded_where_known(self):
        self.assertEqual(hou.expandString("f$F-$NOT_THERE_AT_ALL"), "f1-$NOT_THERE_AT_ALL")
        self.assertEqual(hou.expandString("`1 + 1`"), "2")


class SearchPath(unittest.TestCase):
    def test_ends_with_the_hosts_own_directory(self):
        entries = hou.houdiniPath()
        self.assertTrue(all(os.path.isdir(entry) for entry in entries))
        self.assertIn(os.path.dirname(os.path.dirname(os.path.dirname(os.path.realpath(hou.__file__)))),
                      [os.path.realpath(entry) for entry in entries])

    def test_finds_what_lies_on_it(self):
        self.assertTrue(all(path.endswith("/python/hou") for path in hou.findDirectories("python/hou")))
        self.assertTrue(os.path.isfile(hou.findFiles("python/hou/__init__.py")[0]))

    def test_raises_for_what_is_nowhere(self):
        with self.assertRaisesRegex(hou.OperationFailed, "not/there"):
            hou.findDirectories("not/there")
        with self.assertRaisesRegex(hou.OperationFailed, "not/there"):
            hou.findFiles("not/there")


class Errors(unittest.TestCase):
    def test_have_one_base(self):
        for name in ("OperationFailed", "InvalidInput", "InvalidNodeName", "InvalidNodeType", "InvalidSize",
                     "LoadWarning", "NameConflict", "NotAvailable", "ObjectWasDeleted", "PermissionError",
                     "KeyframeValueNotSet", "SystemExit"):
            self.assertTrue(issubclass(getattr(hou, name), hou.Error), name)

    def test_carry_their_sentence(self):
        try:
            hou.node("/obj").createNode("nothing")
        except hou.OperationFailed as error:
            self.assertIn("nothing", error.instanceMessage())
            self.assertEqual(error.description(), "The attempted operation failed.")
            self.assertEqual(str(error), error.description() + "\n" + error.instanceMessage())
        else:
            self.fail("no error")


class Enumerations(unittest.TestCase):
    def test_have_values_that_are_themselves_everywhere(self):
        value = hou.parmTemplateType.Float
        self.assertIs(copy.deepcopy(value), value)
        self.assertIs(pickle.loads(pickle.dumps(value)), value)
        self.assertEqual((value.name(), repr(value)), ("Float", "parmTemplateType.Float"))
        with self.assertRaises(AttributeError):
            hou.parmTemplateType.Float = 3


class Threads(SceneTest):
    def test_may_use_the_scene_one_after_the_other(self):
        cam = self.obj.createNode("cam")

        def work(index):
            for _ in range(50):
                cam.parm("t" + "xyz"[index]).set(index)

        threads = [threading.Thread(target=work, args=(index,)) for index in range(3)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(cam.parmTuple("t").eval(), (0, 1, 2))


class Absent(unittest.TestCase):
    def test_names_are_attribute_errors(self):
        for name in ("nothing", "ui", "qt"):
            with self.assertRaises(AttributeError):
                getattr(hou, name)


if __name__ == "__main__":
    unittest.main()
