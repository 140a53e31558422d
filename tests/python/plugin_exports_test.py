"""What scripts reach in the loaded plug-in by its plain C name."""
import ctypes
import re
import unittest

import hou  # the host loads the plug-in


def loaded_plugin():
    with open("/proc/self/maps") as maps:
        paths = set(re.findall(r"/.*/korvan_shop\.so$", maps.read(), re.MULTILINE))
    assert len(paths) == 1, paths
    return ctypes.CDLL(paths.pop())


def overrides():
    hou.node("/shop")
    function = loaded_plugin().getMetaDataCacheStr
    function.argtypes = [ctypes.c_char_p] * 3
    function.restype = ctypes.c_char_p
    return function


class ExportedLookUp(unittest.TestCase):
    def test_gives_the_names_of_a_ramps_keys(self):
        self.assertEqual(overrides()(b"zelk__gradient", b"stop_positions", b"houdini.array_token"), b"%s%ipos")
        self.assertEqual(overrides()(b"zelk__gradient", b"stop_positions", b"houdini.remap"), b"stops")

    def test_gives_an_empty_text_for_what_it_does_not_hold(self):
        self.assertEqual(overrides()(b"no_such_shader", b"p", b"houdini.remap"), b"")

    def test_takes_none_for_a_name_it_does_not_hold(self):
        for arguments in ((None, b"p", b"k"), (b"s", None, b"k"), (b"s", b"p", None)):
            self.assertEqual(overrides()(*arguments), b"")


if __name__ == "__main__":
    unittest.main()
