"""kshop lint: menus, ranges, conditions and scripts of single fields."""

import unittest

from lint_case import ARRAYS, PARAMETERS, LintCase, USUAL, parameter, shader, table

MENU = '"houdini.type" = "menu:single:menu"'


class Menus(LintCase):
    def test_odd_menu(self):
        text = parameter("e", '"houdini.menu" = "one;One;two"')
        finding = self.assert_found("odd-menu", text, parameter="e", severity="error")
        self.assertEqual(finding["effect"], 'The last item, "two", is not in the menu.')
        self.assertEqual(self.template(text, "e")["menu"]["items"], [["one", "One"]])
        self.assert_silent(parameter("e", '"houdini.menu" = "one;One;two;"'))

    def test_odd_menu_of_one_item(self):
        text = parameter("e", '"houdini.menu" = "one"')
        self.assertEqual(self.assert_found("odd-menu", text, parameter="e")["effect"], "The menu is empty.")
        self.assertEqual(self.template(text, "e")["menu"]["items"], [])

    def test_odd_menu_of_an_extra_parameter(self):
        text = table('"houdini.parm.menu.m" = "one;One;two"')
        self.assertIn("ends here", self.assert_found("odd-menu", text, parameter="m")["effect"])
        self.assertNotIn("m", [t["token"] for t in self.describe(text)["templates"]])
        self.assert_silent(table('"houdini.parm.menu.m" = "one;One;two;Two"'))

    def test_empty_menu(self):
        self.assert_found("empty-menu", parameter("s", MENU), parameter="s")
        self.assert_found("empty-menu", table('"houdini.parm.menu.m" = ""'), parameter="m")
        self.assert_found("empty-menu", parameter("s", '"houdini.type" = "menu:replace:python"'), parameter="s")
        self.assert_silent(parameter("s", MENU, '"houdini.menu" = "one;One"'))

    def test_empty_menu_of_an_enumeration(self):
        bare = shader({"name": "e", "type": "enum", "enum": [], "default": 0})
        self.assert_found("empty-menu", parameter("e"), bare, at=(1, 23), parameter="e")
        self.assert_silent(parameter("e", '"houdini.menu" = "one;One"'), bare)

    def test_repeated_token(self):
        self.assert_found("repeated-token", parameter("s", MENU, '"houdini.menu" = "one;One;one;Two"'), at=(3, 1),
                          parameter="s")
        self.assert_found("repeated-token", table('"houdini.parm.menu.m" = "a;A;b;B;a;C"'), parameter="m")
        self.assert_silent(parameter("s", MENU, '"houdini.menu" = "one;One;two;One"'))

    def test_menu_kind(self):
        text = parameter("s", '"houdini.type" = "menu:singel:menu"', '"houdini.menu" = "one;One"')
        finding = self.assert_found("menu-kind", text, parameter="s", severity="error")
        self.assertIn('did you mean "single"', finding["message"])
        self.assertIsNone(self.template(text, "s")["menu"])
        for word in ("single", "exclusive", "replace", "toggle", "append", "wild"):
            self.assert_silent(parameter("s", f'"houdini.type" = "menu:{word}:menu"', '"houdini.menu" = "one;One"'))

    def test_menu_source(self):
        text = parameter("s", '"houdini.type" = "menu:single:pyhton"', '"houdini.menu_script" = "return []"')
        finding = self.assert_found("menu-source", text, parameter="s")
        self.assertIn('did you mean "python"', finding["message"])
        self.assertIsNone(self.template(text, "s")["menu"])
        self.assert_found("menu-source", parameter("s", '"houdini.type" = "menu:single"'), parameter="s")
        self.assert_silent(parameter("s", '"houdini.type" = "menu:single:python"',
                                     '"houdini.menu_script" = "return [\'one\', \'One\']"'))

    def test_menu_default(self):
        text = parameter("s", MENU, '"houdini.menu" = "two;Two;three;Three"')
        self.assert_found("menu-default", text, at=(3, 1), parameter="s")
        self.assertEqual(self.template(text, "s")["defaults"][0]["string"], "one")
        self.assert_silent(parameter("s", MENU, '"houdini.menu" = "one;One;two;Two"'))
        self.assert_silent(parameter("s", '"houdini.type" = "menu:replace:menu"', '"houdini.menu" = "two;Two"'))

    def test_menu_default_of_an_enumeration(self):
        far = shader({"name": "e", "type": "enum", "enum": ["one", "two"], "default": 2})
        self.assert_found("menu-default", parameter("e"), far, at=(1, 23), parameter="e",
                          message="the default is item 2, counted from 0, and the menu has 2 items")
        self.assert_found("menu-default", parameter("e", '"houdini.menu" = "one;One"'),
                          shader({"name": "e", "type": "enum", "enum": ["one", "two"], "default": 1}), parameter="e")

    def test_menu_enumeration(self):
        self.assert_found("menu-enumeration", parameter("e", '"houdini.menu" = "one;One;tow;Two"'), parameter="e")
        self.assert_silent(parameter("e", '"houdini.menu" = "two;Two;one;One"'))


class Ranges(LintCase):
    def test_min_above_max(self):
        text = parameter("f", "max = 1.0", "min = 2.0")
        self.assert_found("min-above-max", text, at=(3, 1), parameter="f", severity="error",
                          message='"min" is 2 and "max" is 1')
        self.assert_silent(parameter("f", "min = 0.0", "max = 1.0"))

    def test_slider_range_inverted_by_a_forgotten_end(self):
        text = parameter("f", "min = 5.0")
        finding = self.assert_found("slider-range", text, parameter="f", severity="warning")
        self.assertEqual(finding["message"], 'the slider goes from 5 by "min" to 1, as nothing is said')
        self.assertIn("inverted", finding["effect"])
        range = self.template(text, "f")["range"]
        self.assertGreater(range["min"], range["max"])
        self.assertEqual(self.found("slider-range", parameter("f", "min = 0.5")), [])

    def test_slider_range_without_length(self):
        finding = self.assert_found("slider-range", parameter("f", "softmin = 1.0"), parameter="f")
        self.assertIn("no length", finding["effect"])

    def test_slider_range_of_what_has_no_slider(self):
        finding = self.assert_found("slider-range", parameter("c", "softmin = 5", "softmax = 2"), parameter="c")
        self.assertEqual(finding["message"], 'the range goes from 5 by "softmin" to 2 by "softmax"')
        self.assertIn("no slider", finding["effect"])

    def test_type_range_of_a_byte(self):
        text = parameter("b", "max = 1000")
        self.assert_found("type-range", text, parameter="b", message='"max" is 1000, and a byte ends at 255')
        self.assertEqual(self.template(text, "b")["range"]["max"], 255)
        self.assert_silent(parameter("b", "max = 255"))

    def test_type_range_of_what_has_no_sign(self):
        text = parameter("u", "min = -1")
        self.assert_found("type-range", text, parameter="u")
        self.assertEqual(self.template(text, "u")["range"]["min"], 0)
        self.assert_silent(parameter("u", "min = 0"))

    def test_default_range(self):
        finding = self.assert_found("default-range", parameter("f", "min = 0.75"), parameter="f")
        self.assertEqual(finding["message"], "the default, 0.5, is outside of the bounds, 0.75 to 1")
        self.assert_found("default-range", parameter("c", "min = 0", "max = 0.5"), parameter="c")
        self.assert_silent(parameter("f", "min = 0.5"))
        self.assert_silent(parameter("f", "min = 0.75", '"houdini.expression" = "$F"'))

    def test_default_slider(self):
        far = shader({"name": "f", "type": "float", "default": 5}, {"name": "g", "type": "float", "default": 7})
        finding = self.assert_found("default-slider", table(), far, at=(1, 2), severity="advice")
        self.assertEqual(finding["message"], "the slider does not reach the default of f and g")
        both = "softmax = 10"
        self.assert_silent(parameter("f", both) + parameter("g", both), far, rule="default-slider")

    def test_default_slider_of_what_has_no_slider(self):
        node = shader({"name": "v", "type": "vector", "default": [5, 5, 5]})
        self.assertEqual(self.found("default-slider", table(), node), [])

    def test_default_slider_of_one_parameter_is_about_that(self):
        far = shader({"name": "f", "type": "float", "default": 5})
        self.assert_found("default-slider", parameter("f", "softmax = 3"), far, parameter="f")


class Conditions(LintCase):
    def test_condition_syntax(self):
        text = parameter("f", '"houdini.disable_when" = "{ g==1 }"')
        finding = self.assert_found("condition-syntax", text, parameter="f", severity="error")
        self.assertEqual(finding["effect"], "The field is never greyed.")
        self.assert_found("condition-syntax", parameter("f", '"houdini.hide_when" = "{ g == 1"'), parameter="f")
        self.assert_silent(parameter("f", '"houdini.disable_when" = "{ g == 1 } { t != 0 i > 2 }"'))

    def test_condition_parameter(self):
        text = parameter("f", '"houdini.hide_when" = "{ e == two gg == 1 }"')
        finding = self.assert_found("condition-parameter", text, parameter="f", severity="error")
        self.assertIn('"gg", which is no parameter; did you mean "g"', finding["message"])

    def test_condition_parameter_that_is_not_shown(self):
        text = parameter("f", '"houdini.hide_when" = "{ g == 1 }"') + parameter("g", '"houdini.skip" = true')
        finding = self.assert_found("condition-parameter", text, parameter="f")
        self.assertIn('"houdini.skip" is true for it', finding["message"])

    def test_condition_parameter_may_be_a_component_an_instance_a_call_or_extra(self):
        node = shader(*PARAMETERS, *ARRAYS)
        for subject in ("cr", "cb", "pos", "pos_1", "ninputs()", "hasinput(0)", "isparm(f)", "extra", "ramp1pos"):
            text = table('"houdini.parm.toggle.extra" = "on"',
                         '"houdini.parm.ramp_rgb.ramp" = "val col interp"') + parameter(
                             "f", '"houdini.hide_when" = "{ %s == 1 }"' % subject)
            with self.subTest(subject):
                self.assertEqual(self.found("condition-parameter", text, node),[])

    def test_condition_parameter_that_is_almost_one(self):
        for subject in ("cx1", "fr", "isparm(h)", "pos_group_1"):
            with self.subTest(subject):
                text = parameter("f", '"houdini.hide_when" = "{ %s == 1 }"' % subject)
                self.assertEqual(len(self.found("condition-parameter", text, USUAL)), 1)

    def test_condition_value(self):
        text = parameter("f", '"houdini.hide_when" = "{ e == tow }"')
        finding = self.assert_found("condition-value", text, parameter="f", severity="warning")
        self.assertEqual(finding["effect"], "That comparison never holds.")
        self.assertEqual(self.assert_found("condition-value", text.replace("==", "!="), parameter="f")["effect"],
                         "That comparison always holds.")
        for value in ("two", "1"):
            self.assert_silent(parameter("f", '"houdini.hide_when" = "{ e == %s }"' % value))

    def test_condition_value_of_a_check_box(self):
        text = parameter("f", '"houdini.hide_when" = "{ t == true }"')
        finding = self.assert_found("condition-value", text, parameter="f")
        self.assertEqual(finding["message"],
                         'the condition compares "t" with "true", and a check box is 0 or 1')
        for value in ("0", "1", "on", "off"):
            self.assert_silent(parameter("f", '"houdini.hide_when" = "{ t == %s }"' % value))

    def test_condition_value_of_a_number(self):
        for term in ("g == full", "i != on", "cr == red"):
            with self.subTest(term):
                self.assert_found("condition-value", parameter("f", '"houdini.hide_when" = "{ %s }"' % term),
                                  parameter="f")
        for term in ("g == 1", "g == +1", "i != -2", "cr == 0.5", "s == red", "i > full", "isparm(t) == yes"):
            with self.subTest(term):
                self.assertEqual(
                    self.found("condition-value", parameter("f", '"houdini.hide_when" = "{ %s }"' % term)), [])

    def test_condition_value_names_each_token_once(self):
        text = (parameter("e", '"houdini.menu" = "one;One;one;Again;two;Two"') +
                parameter("f", '"houdini.hide_when" = "{ e == tow }"'))
        finding = self.assert_found("condition-value", text, parameter="f", at=(4, 1))
        self.assertEqual(finding["remedy"], "Write one of the tokens: one and two.")


class ConditionsHold(LintCase):
    """What the findings say is what the node in the host does."""

    def is_hidden(self, text):
        surroundings = self.surroundings(USUAL)
        self.metadata(text)
        script = ("import hou\nnode = hou.node('/shop').createNode('korvan_vopnet').createNode('korvan::x')\n"
                  "print(node.parm('f').isHidden())")
        run = self.run_kshop(*self.plugin(), "python", "-", stdin=script, **surroundings)
        self.assertEqual(run.returncode, 0, run.stderr)
        return run.stdout.strip() == "True"

    def test_as_it_is_said(self):
        for condition, hidden in (("{ e == one }", True), ("{ e == tow }", False), ("{ e != tow }", True),
                                  ("{ gg == 0 }", False), ("{ e==one }", False),
                                  ("{ t == 0 }", True), ("{ t == off }", True), ("{ t == false }", False),
                                  ("{ t != false }", True),
                                  ("{ g == half }", False), ("{ g == 0.5 }", True), ("{ i == +1 }", True)):
            with self.subTest(condition):
                self.assertEqual(self.is_hidden(parameter("f", '"houdini.hide_when" = "%s"' % condition)), hidden)


class Scripts(LintCase):
    def test_callback_language(self):
        text = parameter("f", '"houdini.callback" = "print(1)"')
        self.assert_found("callback-language", text, parameter="f", severity="warning")
        self.assertEqual(self.template(text, "f")["callback_language"], "hscript")
        self.assert_found("callback-language", table('"houdini.parm.button.p" = "print(1)"'), parameter="p")
        self.assert_silent(parameter("f", '"houdini.callback" = "python:print(1)"'))
        self.assert_silent(table('"houdini.parm.button.p" = "text"', '"houdini.parm.button.p.callback" = "hscript:echo x"'))

    def test_expression_prefix(self):
        text = parameter("f", '"houdini.expression" = "hscript:$F"')
        self.assert_found("expression-prefix", text, parameter="f", severity="error")
        self.assertEqual(self.template(text, "f")["defaults"][0]["string"], "hscript:$F")
        self.assert_silent(parameter("f", '"houdini.expression" = "$F"'))

    def test_expression_syntax(self):
        self.assert_found("expression-syntax", parameter("f", '"houdini.expression" = "$F +"'), parameter="f",
                          severity="advice")
        self.assert_silent(parameter("f", '"houdini.expression" = "$F + ch(\\"g\\")"'))

    def test_python_syntax_of_a_callback(self):
        finding = self.assert_found("python-syntax", parameter("f", '"houdini.callback" = "python:x = 1\\nprint x"'),
                                    parameter="f", severity="advice")
        self.assertIn("under Python 3 the callback does not compile, in line 2 of it: SyntaxError", finding["message"])
        self.assert_silent(parameter("f", '"houdini.callback" = "python:x = 1\\nprint(x)"'))

    def test_python_syntax_of_extra_parameters(self):
        self.assert_found("python-syntax", table('"houdini.parm.button.p" = "python:("'), parameter="p")
        self.assert_found("python-syntax", table('"houdini.parm.toggle.p" = "on"',
                                                 '"houdini.parm.toggle.p.callback" = "python:("'), at=(3, 1),
                          parameter="p")

    def test_python_syntax_of_a_menu_script(self):
        type_line = '"houdini.type" = "menu:replace:python"'
        self.assert_found("python-syntax", parameter("s", type_line, '"houdini.menu_script" = "return ["'), at=(3, 1),
                          parameter="s")
        self.assert_silent(parameter("s", type_line, "\"houdini.menu_script\" = 'a = [1, 2]\\nreturn a'"))
        self.assertEqual(self.found("python-syntax", parameter("s", '"houdini.menu_script" = "return ["')), [])

    def test_python_syntax_of_an_expression(self):
        self.assert_found("python-syntax", parameter("f", '"houdini.expression" = "python:1 +"'), parameter="f")
        self.assert_silent(parameter("f", '"houdini.expression" = "python:hou.frame()"'))

    def test_nothing_is_run(self):
        mark = self.scratch / "mark"
        self.lint(parameter("f", f'"houdini.callback" = "python:open(\'{mark}\', \'w\')"',
                            f'"houdini.expression" = "python:open(\'{mark}\', \'w\')"'))
        self.assertFalse(mark.exists())


if __name__ == "__main__":
    unittest.main()
