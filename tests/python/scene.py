"""What the test files of this folder share: a scene that is empty before and after each test."""

import unittest

import hou


class SceneTest(unittest.TestCase):
    """Deletes what a test made and brings the time back."""

    def setUp(self):
        self.obj = hou.node("/obj")
        self.vex = hou.node("/vex")

    def tearDown(self):
        for manager in hou.root().children():
            for child in manager.children():
                child.destroy()
        hou.setFps(24)
        hou.setFrame(1)

    def fails(self, sentence, error=hou.OperationFailed):
        """The block raises that error, and its sentence holds that text."""
        return self.assertRaisesRegex(error, sentence)
