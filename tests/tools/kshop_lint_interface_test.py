"""kshop lint: folders, extra parameters, ramps, the order, names, and advice."""

import unittest

from lint_case import ARRAYS, PARAMETERS, LintCase, USUAL, parameter, shader, table

FLOATS = [{"name": name, "type": "float", "default": 0.5} for name in "abcd"]
FOUR = shader(*FLOATS)
RAMPS = shader(*ARRAYS, *FLOATS)


class Folders(LintCase):
    def tokens(self, text, *nodes):
        return [t["token"] for t in self.describe(text, *nodes)["templates"]]

    def test_odd_folder(self):
        text = table('"houdini.parm.folder.tabs" = "Main;2;Rest"', '"houdini.order" = "a tabs"')
        finding = self.assert_found("odd-folder", text, FOUR, parameter="tabs", severity="error")
        self.assertIn("nothing that follows is shown", finding["effect"])
        self.assertEqual(self.tokens(text, FOUR), ["a"])
        self.assert_silent(table('"houdini.parm.folder.tabs" = "Main;2;Rest;2"', '"houdini.order" = "tabs"'), FOUR)

    def test_hidden_parameters(self):
        text = table('"houdini.parm.folder.tabs" = "Main;2;Rest"', '"houdini.order" = "a tabs b c d"')
        finding = self.assert_found("hidden-parameters", text, FOUR, parameter="tabs", severity="error")
        self.assertEqual(finding["message"], "3 fields are hidden behind it: b, c and d")
        self.assertEqual(self.found("hidden-parameters", table('"houdini.parm.folder.tabs" = "Main"'), FOUR), [])

    def test_hidden_parameters_behind_a_menu(self):
        text = table('"houdini.parm.menu.m" = "x"', '"houdini.parm.toggle.t" = "on"', '"houdini.order" = "m d t"')
        finding = self.assert_found("hidden-parameters", text, FOUR, parameter="m")
        self.assertEqual(finding["message"], "5 fields are hidden behind it: a, b, c, d and t")
        self.assertEqual(self.tokens(text, FOUR), [])

    def test_empty_folder(self):
        self.assert_found("empty-folder", table('"houdini.parm.folder.tabs" = ";"'), FOUR, parameter="tabs",
                          severity="error")

    def test_folder_count(self):
        for count, message in (("x", '"x" is no number; 0 is taken'), ("2 ", '"2 " is no number; 2 is taken'),
                               ("0", "the count is 0"), ("-1", "the count is -1")):
            with self.subTest(count):
                text = table(f'"houdini.parm.folder.tabs" = "Main;{count}"', '"houdini.order" = "tabs"')
                self.assert_found("folder-count", text, FOUR, parameter="tabs", message=f'tab "Main": {message}')

    def test_folder_short(self):
        text = table('"houdini.parm.folder.tabs" = "Main;3;Rest;2"', '"houdini.order" = "tabs"')
        finding = self.assert_found("folder-short", text, FOUR, parameter="tabs", severity="error")
        self.assertEqual(finding["message"], 'tab "Rest" asks for 2 fields, and 1 is left for it')
        self.assertEqual(finding["effect"], 'Tab "Main" holds a, b and c. Tab "Rest" holds d.')
        self.assert_silent(table('"houdini.parm.folder.tabs" = "Main;3;Rest;1"', '"houdini.order" = "tabs"'), FOUR)

    def test_folder_short_when_arrays_were_counted_twice(self):
        two = shader({"name": "list", "type": "array", "element": "float", "default": [0]}, *FLOATS)
        text = table('"houdini.parm.folder.tabs" = "Main;3;Rest;3"', '"houdini.order" = "tabs"')
        finding = self.assert_found("folder-short", text, two, parameter="tabs")
        self.assertEqual(finding["effect"], 'Tab "Main" holds list, a and b. Tab "Rest" holds c and d.')
        self.assertEqual(self.labels_around(text, "b", two), ["Main"])
        self.assert_silent(text.replace("Main;3", "Main;2"), two)

    def labels_around(self, text, token, *nodes):
        """Labels of the folders that a script in the host finds around a parameter."""
        surroundings = self.surroundings(*nodes)
        self.metadata(text)
        script = ("import hou\nnode = hou.node('/shop').createNode('korvan_vopnet').createNode('korvan::x')\n"
                  f"print(';'.join(node.parm('{token}').containingFolders()))")
        run = self.run_kshop(*self.plugin(), "python", "-", stdin=script, **surroundings)
        self.assertEqual(run.returncode, 0, run.stderr)
        return run.stdout.strip().split(";")

    def test_folder_short_counts_a_folder_inside_as_one(self):
        text = table('"houdini.parm.folder.outer" = "Out;2;Rest;1"', '"houdini.parm.folder.inner" = "In;2"',
                     '"houdini.order" = "outer a inner b c d"')
        self.assert_silent(text, FOUR)
        finding = self.assert_found("folder-short", text.replace("Out;2", "Out;4"), FOUR, parameter="outer")
        self.assertIn('Tab "Out" holds a, inner and d.', finding["effect"])

    def test_folder_misses(self):
        text = table('"houdini.parm.folder.tabs" = "Main;2"', '"houdini.order" = "tabs"')
        finding = self.assert_found("folder-misses", text, FOUR, parameter="tabs", severity="warning")
        self.assertEqual(finding["message"], "2 fields stand behind the last tab: c and d")
        self.assertEqual(self.labels_around(text, "b", FOUR), ["Main"])
        self.assertEqual(self.labels_around(text, "c", FOUR), [""])


class Extras(LintCase):
    def test_extra_key(self):
        self.assert_found("extra-key", table('"houdini.parm.toggle" = "on"'), severity="error")
        self.assert_found("extra-key", table('"houdini.parm" = "on"'))
        self.assert_silent(table('"houdini.parm.toggle.x" = "on"'))

    def test_extra_kind(self):
        text = table('"houdini.parm.tgogle.x" = "on"')
        finding = self.assert_found("extra-kind", text, parameter="x", severity="error")
        self.assertIn('did you mean "toggle"', finding["message"])
        self.assertIsNone(self.template(text, "x")["type"])
        for kind, argument in (("heading", "H"), ("separator", "-"), ("toggle", "off"), ("menu", "a;A"),
                               ("button", "python:pass")):
            self.assert_silent(table(f'"houdini.parm.{kind}.x" = "{argument}"'))

    def test_extra_sub_key(self):
        text = table('"houdini.parm.toggle.x" = "on"', '"houdini.parm.toggle.x.lable" = "X"')
        self.assertIn('did you mean "label"',
                      self.assert_found("extra-sub-key", text, at=(3, 1), parameter="x")["message"])
        self.assert_found("extra-sub-key", table('"houdini.parm.toggle.x.label" = "X"'), parameter="x")
        self.assert_found("extra-sub-key", table('"houdini.parm.toggle.x" = "on"', '"houdini.parm.toggle.x.label.y" = "X"'),
                          at=(3, 1), parameter="x")
        self.assert_silent(text.replace("lable", "label"))

    def test_toggle_default(self):
        text = table('"houdini.parm.toggle.x" = "true"')
        self.assert_found("toggle-default", text, parameter="x", severity="warning")
        self.assertEqual(self.template(text, "x")["defaults"][0]["value"], 0)
        self.assert_silent(table('"houdini.parm.toggle.x" = "off"'))

    def test_extra_name(self):
        text = table('"houdini.parm.toggle.f" = "on"')
        self.assert_found("extra-name", text, parameter="f", severity="error")
        self.assertEqual([t["token"] for t in self.describe(text)["templates"]].count("f"), 2)
        self.assert_found("extra-name", table('"houdini.parm.toggle.x" = "on"', '"houdini.parm.heading.x" = "X"'),
                          at=(3, 1), parameter="x")
        self.assert_silent(table('"houdini.parm.toggle.x" = "on"', '"houdini.parm.heading.y" = "Y"'))

    def test_extra_name_may_be_that_of_a_skipped_parameter(self):
        self.assert_silent(table('"houdini.parm.toggle.f" = "on"') + parameter("f", '"houdini.skip" = true'))


class Ramps(LintCase):
    GOOD = table('"houdini.parm.ramp_rgb.ramp" = "pos col interp"')

    def test_ramp_arguments(self):
        text = table('"houdini.parm.ramp_rgb.ramp" = "pos col"')
        self.assert_found("ramp-arguments", text, RAMPS, parameter="ramp", severity="error",
                          message="a ramp names three parameters, and this one 2")
        self.assertIn("col_group", [t["token"] for t in self.describe(text, RAMPS)["templates"]])
        self.assert_found("ramp-arguments", table('"houdini.parm.ramp_float.ramp" = ""'), RAMPS, parameter="ramp")
        self.assert_silent(self.GOOD, RAMPS)

    def test_ramp_parameter(self):
        finding = self.assert_found("ramp-parameter", self.GOOD.replace("interp", "intrep"), RAMPS, parameter="ramp")
        self.assertIn('did you mean "interp"', finding["message"])
        self.assert_found("ramp-parameter", self.GOOD.replace("interp", "pos"), RAMPS, parameter="ramp",
                          message='the ramp names "pos" twice')

    def test_ramp_type(self):
        self.assert_found("ramp-type", self.GOOD.replace("col", "val"), RAMPS, parameter="ramp", severity="error")
        self.assert_found("ramp-type", table('"houdini.parm.ramp_float.ramp" = "pos col interp"'), RAMPS,
                          parameter="ramp")
        self.assert_found("ramp-type", self.GOOD.replace("pos", "a"), RAMPS, parameter="ramp")
        self.assert_silent(table('"houdini.parm.ramp_float.ramp" = "pos val interp"'), RAMPS)

    def test_ramp_type_of_one_interpolation_for_all_keys(self):
        one = shader(*ARRAYS[:3], {"name": "interp", "type": "string", "default": "linear"})
        self.assert_silent(self.GOOD, one)

    def test_several_ramps(self):
        text = self.GOOD + '"houdini.parm.ramp_float.curve" = "pos val interp"\n'
        self.assert_found("several-ramps", text, RAMPS, parameter="ramp", severity="warning")


class Order(LintCase):
    def test_order_unknown(self):
        text = table('"houdini.order" = "b aa"')
        finding = self.assert_found("order-unknown", text, FOUR, severity="warning")
        self.assertIn('"aa", which is no parameter; did you mean "a"', finding["message"])
        self.assertEqual([t["token"] for t in self.describe(text, FOUR)["templates"]], ["b", "a", "c", "d"])
        self.assert_silent(table('"houdini.order" = "b t a"', '"houdini.parm.toggle.t" = "on"'), FOUR)

    def test_order_unknown_for_what_is_not_shown(self):
        text = table('"houdini.order" = "b a"') + parameter("a", '"houdini.skip" = true')
        self.assert_found("order-unknown", text, FOUR, parameter="a")
        self.assert_found("order-unknown", table('"houdini.parm.ramp_rgb.ramp" = "pos col interp"',
                                                 '"houdini.order" = "ramp col"'), RAMPS, at=(3, 1), parameter="col")

    def test_order_unknown_for_words_that_only_blanks_separate(self):
        finding = self.assert_found("order-unknown", table('"houdini.order" = "b,a"'), FOUR)
        self.assertIn("only blanks separate words", finding["message"])

    def test_order_repeated(self):
        text = table('"houdini.order" = "a b a"')
        self.assert_found("order-repeated", text, FOUR, parameter="a", severity="warning")
        self.assertEqual([t["token"] for t in self.describe(text, FOUR)["templates"]][:2], ["b", "a"])
        self.assert_silent(table('"houdini.order" = "b a"'), FOUR)


class Names(LintCase):
    def test_type_name(self):
        twin = shader(*FLOATS, name="x")
        found = self.found("type-name", "", USUAL, twin)
        self.assertEqual([(f["shader"], f["severity"]) for f in found], [("x", "error")])
        self.assertEqual(found[0]["message"], 'its type name "korvan::x" is taken by "zelk__x"')
        skipped = dict(twin, metadata=[{"key": "houdini.skip", "value": True}])
        self.assertEqual(self.found("type-name", "", USUAL, skipped), [])

    def test_type_name_of_a_node_that_is_written_by_hand(self):
        found = self.found("type-name", "", shader(name="zelk__fetch"))
        self.assertEqual([f["shader"] for f in found], ["zelk__fetch"])
        described = self.describe("", shader(name="zelk__fetch"), type="korvan::fetch")
        self.assertEqual(described["class"], "VOP_KorvanUtilityOperator")

    def test_field_name(self):
        twin = shader(ARRAYS[0], {"name": "pos_1", "type": "float", "default": 0})
        self.assert_found("field-name", parameter("pos_1"), twin, at=(1, 23), parameter="pos_1", severity="warning")
        frame = shader(ARRAYS[0], {"name": "pos_group", "type": "float", "default": 0})
        self.assert_found("field-name", parameter("pos_group"), frame, at=(1, 23), parameter="pos_group")
        self.assert_silent(parameter("pos_x"), shader(ARRAYS[0], {"name": "pos_x", "type": "float", "default": 0}))

    def test_level_of_detail(self):
        self.assert_found("level-of-detail", table('"houdini.lod" = "full"'), severity="warning")
        for word in ("high", "Medium", "l"):
            self.assert_silent(table(f'"houdini.lod" = "{word}"'))

    def test_shader_type(self):
        text = table('"houdini.shader_type" = "athmosphere"')
        finding = self.assert_found("shader-type", text, severity="warning")
        self.assertIn('did you mean "atmosphere"', finding["message"])
        self.assertEqual(self.describe(text)["outputs"][0]["type"], 2)
        for word in ("light_filter", "atmosphere", "volume"):
            self.assert_silent(table(f'"houdini.shader_type" = "{word}"'))

    def test_field_type(self):
        text = parameter("s", '"houdini.type" = "image"')
        self.assert_found("field-type", text, parameter="s", severity="warning")
        self.assertEqual(self.template(text, "s")["type"], "PRM_STRING")
        self.assert_found("field-type", parameter("f", '"houdini.type" = "visibility"'), parameter="f")
        self.assert_silent(parameter("i", '"houdini.type" = "visibility"'))
        for kind in ("file:image", "file:*.ies", "opfilter", "opfilter:!!OBJ!!"):
            self.assert_silent(parameter("s", f'"houdini.type" = "{kind}"'))

    def test_no_use(self):
        self.assert_found("no-use", parameter("f", '"houdini.menu" = "one;One"'), parameter="f", severity="warning")
        self.assert_found("no-use", parameter("s", '"houdini.menu_script" = "return []"'), parameter="s")
        self.assert_found("no-use", parameter("s", '"houdini.no_menu_caps" = true'), parameter="s")
        self.assert_found("no-use", parameter("t", "max = 1"), parameter="t")
        self.assertIsNone(self.template(parameter("t", "max = 1"), "t")["range"])
        self.assert_silent(parameter("e", '"houdini.no_menu_caps" = true'))


class Advice(LintCase):
    def test_no_label(self):
        text = table() + parameter("a", '"houdini.label" = "A"')
        finding = self.assert_found("no-label", text, FOUR, at=(1, 2), severity="advice")
        self.assertEqual(finding["message"], "without a label: b, c and d")
        labelled = table() + "".join(parameter(n, '"houdini.label" = "A"') for n in "abcd")
        self.assert_silent(labelled, FOUR, rule="no-label")

    def test_no_help(self):
        text = table() + "".join(parameter(n, 'desc = "Help."') for n in "abc")
        self.assert_found("no-help", text, FOUR, at=(1, 2), parameter="d", severity="advice")
        self.assert_silent(text + parameter("d", '"houdini.invisible" = true'), FOUR, rule="no-help")

    def test_no_folder(self):
        text = table('"houdini.parm.folder.tabs" = "Main;3"', '"houdini.order" = "a tabs"')
        self.assert_found("no-folder", text, FOUR, at=(1, 2), parameter="a", severity="advice")
        self.assert_silent(table('"houdini.parm.folder.tabs" = "Main;4"', '"houdini.order" = "tabs"'), FOUR,
                           rule="no-folder")

    def test_no_folder_of_many(self):
        finding = self.assert_found("no-folder", table(), at=(1, 2))
        self.assertEqual(finding["message"], "in no folder: f, g, i, u, b, t, c, s and 1 more")
        self.assert_silent(table(), FOUR, rule="no-folder")

    def test_is_given_once_for_each_shader(self):
        self.assertEqual(len(self.lint(table())), len({f["rule"] for f in self.lint(table())}))
        self.assertEqual(len(PARAMETERS), 9)


if __name__ == "__main__":
    unittest.main()
