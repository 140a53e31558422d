"""kshop lint: metadata files, and keys that are not read as they were meant."""

import unittest

from lint_case import LintCase, USUAL, parameter, shader, table


class Files(LintCase):
    def test_syntax(self):
        text = table('"houdini.label" = "X"') + "oops\n"
        self.assert_found("syntax", text, at=(3, 5), shader=None, severity="error")
        self.assert_silent(table('"houdini.label" = "X"'))

    def test_written_twice(self):
        self.assert_found("written-twice", table('"houdini.label" = "X"', '"houdini.label" = "Y"'), at=(3, 19),
                          shader=None)
        self.assert_silent(table('"houdini.label" = "X"', '"houdini.icon" = "Y"'))

    def test_a_file_with_a_mistake_counts_for_nothing(self):
        text = table('"houdini.label" = "Written"') + "oops\n"
        self.assertIn("Nothing in this file counts", self.found("syntax", text)[0]["effect"])
        self.assertEqual(self.describe(text)["label"], "X")

    def test_unreadable_file(self):
        self.surroundings(USUAL)
        self.metadata("").with_name("gone.mtd").symlink_to("/nowhere/gone.mtd")
        found = self.found("unreadable-file", "")
        self.assertEqual([f["file"].rsplit("/")[-1] for f in found], ["gone.mtd"])
        self.assertIn("No such file", found[0]["message"])

    def test_unknown_shader(self):
        finding = self.assert_found("unknown-shader", '\n["zelk__y"]\ndesc = "x"\n', at=(2, 2), shader="zelk__y",
                                    severity="error")
        self.assertIn('did you mean "zelk__x"?', finding["message"])
        self.assert_silent('["zelk__x"]\n')

    def test_unknown_parameter(self):
        finding = self.assert_found("unknown-parameter", '["zelk__x".parameters.ff]\n', at=(1, 23), parameter="ff")
        self.assertIn('did you mean "f"', finding["message"])
        self.assert_silent(parameter("f"))

    def test_no_metadata_value(self):
        finding = self.assert_found("no-metadata-value", parameter("f", "min = [1, 2]"), parameter="f")
        self.assertEqual(finding["message"], 'the value of "min" is an array')
        self.assertEqual(self.template(parameter("f", "min = [1, 2]"), "f")["range"]["min_flag"], 1)
        self.assert_silent(parameter("f", "min = 0.25"))

    def test_misplaced_value(self):
        self.assert_found("misplaced-value", 'label = "X"\n', at=(1, 1), shader=None)
        self.assert_found("misplaced-value", '["zelk__x".parameters]\nf = 1\n')
        self.assert_silent(table('"houdini.label" = "X"'))

    def test_renderer_plugin(self):
        broken = shader({"name": "f", "type": "flaot"}, name="zelk__broken")
        found = self.found("renderer-plugin", "", USUAL, broken)
        self.assertEqual(len(found), 1)
        self.assertIn("flaot", found[0]["message"])
        self.assertEqual([found[0][k] for k in ("file", "line", "column", "shader", "parameter")], [None] * 5)
        self.assert_silent("", USUAL)


class Keys(LintCase):
    def test_unknown_key(self):
        finding = self.assert_found("unknown-key", parameter("f", '"houdini.lable" = "F"'), parameter="f",
                                    severity="warning")
        self.assertIn('nobody reads the key "houdini.lable"; did you mean "houdini.label"', finding["message"])
        self.assert_found("unknown-key", table('"houdini.ordre" = "f"'))
        self.assert_silent(parameter("f", '"houdini.label" = "F"', 'desc = "Help."', 'other_host = "not ours"'))

    def test_unknown_key_where_only_texts_are_continued(self):
        self.assert_found("unknown-key", parameter("f", '"houdini.skip2" = false'), parameter="f")

    def test_misplaced_key(self):
        self.assert_found("misplaced-key", parameter("f", '"houdini.category" = "Texture"'), parameter="f")
        self.assert_found("misplaced-key", table('"houdini.hide_when" = "{ f == 1 }"'))
        self.assert_found("misplaced-key", parameter("f", '"houdini.parm.toggle.x" = "on"'), parameter="f")
        self.assert_silent(table('"houdini.category" = "Texture"'))

    def test_wrong_type(self):
        finding = self.assert_found("wrong-type", parameter("f", '"houdini.invisible" = "yes"'), parameter="f",
                                    severity="error")
        self.assertEqual(finding["message"],
                         'the value of "houdini.invisible" is a text, and a boolean belongs there')
        self.assertIn("the field is shown", finding["effect"])
        self.assertFalse(self.template(parameter("f", '"houdini.invisible" = "yes"'), "f")["invisible"])
        self.assert_silent(parameter("f", '"houdini.invisible" = true'))

    def test_wrong_type_of_each_kind(self):
        self.assert_found("wrong-type", table('"houdini.label" = 3'))
        self.assert_found("wrong-type", parameter("f", 'softmax = "3"'), parameter="f")
        self.assert_found("wrong-type", parameter("f", "desc = true"), parameter="f")

    def test_wrong_type_of_an_extra_parameter(self):
        self.assert_found("wrong-type", table('"houdini.parm.toggle.x" = true'), parameter="x")
        self.assert_found("wrong-type", table('"houdini.parm.toggle.x" = "on"', '"houdini.parm.toggle.x.no_label" = 1'),
                          at=(3, 1), parameter="x")
        self.assert_silent(table('"houdini.parm.toggle.x" = "on"', '"houdini.parm.toggle.x.no_label" = true'))

    def test_continuation_gap(self):
        text = parameter("f", 'desc = "a"', 'desc3 = "c"')
        finding = self.assert_found("continuation-gap", text, at=(3, 1), parameter="f")
        self.assertIn('there is no text "desc2"', finding["message"])
        self.assertEqual(self.template(text, "f")["help"], "a")
        self.assert_silent(parameter("f", 'desc = "a"', 'desc2 = "b"', 'desc3 = "c"'))

    def test_continuation_that_cannot_begin(self):
        self.assert_found("continuation-gap", parameter("f", 'desc = "a"', 'desc1 = "b"'), at=(3, 1), parameter="f")
        self.assert_found("continuation-gap", parameter("f", 'desc = "a"', 'desc02 = "b"'), at=(3, 1), parameter="f")
        self.assert_found("continuation-gap", parameter("f", 'desc2 = "b"'), parameter="f")
        lines = ['"houdini.label" = "a"'] + ['"houdini.label%d" = "a"' % n for n in range(2, 101)]
        self.assert_found("continuation-gap", table(*lines), at=(101, 1))
        self.assert_silent(table(*lines[:-1]))

    def test_continuation_of_an_extra_parameter(self):
        text = table('"houdini.parm.toggle.x" = "on"', '"houdini.parm.toggle.x.desc3" = "c"')
        self.assert_found("continuation-gap", text, at=(3, 1), parameter="x")

    def test_empty_text(self):
        text = table('"houdini.label" = ""')
        finding = self.assert_found("empty-text", text)
        self.assertIn("counts as absent: the node type's label is made from its name", finding["effect"])
        self.assertEqual(self.describe(text)["label"], "X")
        self.assert_silent(table('"houdini.label" = ""', '"houdini.label2" = "in pieces"'))

    def test_empty_text_of_an_extra_parameter(self):
        self.assert_found("empty-text", table('"houdini.parm.toggle.x" = "on"', '"houdini.parm.toggle.x.label" = ""'),
                          at=(3, 1), parameter="x")
        self.assert_silent(table('"houdini.parm.separator.x" = ""'))


class Places(LintCase):
    def test_are_those_of_the_value_in_force(self):
        self.surroundings(USUAL)
        self.metadata(table('"houdini.label" = 1'), "a.mtd")
        finding = self.assert_found("wrong-type", table("", '"houdini.label" = 2'), at=(3, 1))
        self.assertTrue(finding["file"].endswith("/x.mtd"))

    def test_of_a_catalogue_are_its_file_alone(self):
        node = shader({"name": "f", "type": "float"}, metadata=[{"key": "houdini.lod", "value": "x"}])
        finding = [f for f in self.lint("", node) if f["rule"] == "level-of-detail"][0]
        self.assertTrue(finding["file"].endswith("catalogue.json"))
        self.assertEqual((finding["line"], finding["column"]), (None, None))

    def test_of_dotted_keys_are_those_of_the_last_word(self):
        self.assert_found("level-of-detail", table('houdini.lod = "x"'), at=(2, 9))


if __name__ == "__main__":
    unittest.main()
