"""kshop describe: the interface as text and as JSON."""

import json
import os
import subprocess
import unittest

from kshop_case import GOLDEN, KSHOP, TREE, KshopCase

OPERATOR_KEYS = ["name", "label", "icon", "class", "tab_menu", "help_url", "min_inputs", "max_inputs", "num_outputs",
                 "vopnet_mask", "flags", "inputs", "outputs", "templates"]
TEMPLATE_KEYS = ["type", "extended", "size", "token", "label", "defaults", "menu", "range", "callback", "spare",
                 "callback_language", "parm_group", "export_level", "help", "disable_when", "hide_when", "invisible",
                 "join_next", "children"]

PROBE = {"name": "zelk__probe", "kind": "shader", "output": "rgb",
         "parameters": [{"name": "gain", "type": "float", "default": 0.1},
                        {"name": "mode", "type": "enum", "enum": ["one", "two"], "default": 1},
                        {"name": "knots", "type": "array", "element": "float", "default": [0.5, 2]},
                        {"name": "path", "type": "string", "default": "a\nb"}],
         "metadata": [{"key": "houdini.category", "value": "Probes"},
                      {"key": "houdini.order", "value": "tabs gain mode"},
                      {"key": "houdini.parm.folder.tabs", "value": "Main;2"},
                      {"parameter": "gain", "key": "min", "value": 0.0},
                      {"parameter": "gain", "key": "softmax", "value": 4.0},
                      {"parameter": "gain", "key": "desc", "value": "Grösse"},
                      {"parameter": "gain", "key": "houdini.disable_when", "value": "{ mode == one }"},
                      {"parameter": "path", "key": "houdini.expression", "value": "python:1+1"},
                      {"parameter": "path", "key": "houdini.callback", "value": "python:print(1)"}]}


class Describe(KshopCase):
    def probe(self, *arguments):
        return self.output_of("describe", "korvan::probe", *arguments, KORVAN_CATALOGUE=self.catalogue(PROBE))

    def probe_operator(self):
        return json.loads(self.probe("--json"))["tables"]["Vop"][0]

    def test_gives_the_shipped_library_as_in_its_golden_file(self):
        actual = self.output_of("describe", "--json").replace(str(TREE), "TREE")
        golden = GOLDEN / "describe" / "shipped.json"
        if os.environ.get("ZELK_UPDATE_GOLDEN"):
            golden.parent.mkdir(parents=True, exist_ok=True)
            golden.write_text(actual, encoding="utf-8")
        self.assertEqual(golden.read_text(encoding="utf-8"), actual,
                         f"If the change is meant, rerun with ZELK_UPDATE_GOLDEN=1 and commit {golden}")

    def test_says_nothing_worse_than_information_about_the_shipped_library(self):
        messages = self.json_of("describe")["messages"]
        self.assertEqual([m for m in messages if m["severity"] != "info"], [])
        self.assertEqual(messages[0]["text"], "[vop_shaders] Registering shaders ...")
        self.assertEqual(messages[-1]["text"], "[vop_shaders] shader registration done.")

    def test_is_the_same_byte_for_byte_from_run_to_run_and_under_every_locale(self):
        def described(**changes):
            run = subprocess.run([str(KSHOP), "describe", "--json"], capture_output=True,
                                 env=self.environment(**changes), check=True)
            return run.stdout
        plain = described(LC_ALL="C")
        self.assertEqual(plain, described(LC_ALL="C"))
        available = subprocess.run(["locale", "-a"], capture_output=True, text=True, check=True).stdout.lower()
        for name in ("tr_TR", "de_DE"):
            with self.subTest(name):
                if f"{name.lower()}.utf8" not in available:
                    self.skipTest(f"THE LOCALE {name}.UTF-8 IS MISSING; run script/bootstrap --test")
                self.assertEqual(plain, described(LC_ALL=f"{name}.UTF-8"))

    def test_keeps_the_documented_order_of_keys(self):
        described = self.json_of("describe")
        self.assertEqual(list(described), ["tables", "messages"])
        self.assertEqual(list(described["tables"]), ["Vop", "Shop"])
        for operator in described["tables"]["Vop"] + described["tables"]["Shop"]:
            self.assertEqual(list(operator), OPERATOR_KEYS)
            for template in operator["templates"]:
                self.assertEqual(list(template), TEMPLATE_KEYS)

    def test_gives_the_container_in_the_shop_table(self):
        [container] = self.json_of("describe", "korvan_vopnet")["tables"]["Shop"]
        self.assertEqual(container, {
            "name": "korvan_vopnet", "label": "Korvan Shader Network", "icon": container["icon"],
            "class": "SHOP_Operator", "tab_menu": None, "help_url": None, "min_inputs": 0, "max_inputs": 0,
            "num_outputs": container["num_outputs"], "vopnet_mask": None, "flags": 16, "inputs": [], "outputs": [],
            "templates": []})

    def test_gives_an_operator_with_its_connectors(self):
        operator = self.probe_operator()
        del operator["templates"], operator["help_url"]
        self.assertEqual(operator, {
            "name": "korvan::probe", "label": "Probe", "icon": "MISC_generic", "class": "VOP_KorvanOperator",
            "tab_menu": "Probes", "min_inputs": 0, "max_inputs": 2048, "num_outputs": 4,
            "vopnet_mask": "korvan_vopnet", "flags": 0,
            "inputs": [{"name": "gain", "label": "Gain", "type": 3}, {"name": "mode", "label": "Mode", "type": 4},
                       {"name": "knots", "label": "Knots", "type": 3}, {"name": "path", "label": "Path", "type": 5}],
            "outputs": [{"name": "rgb", "label": "rgb", "type": 2}, {"name": "r", "label": "r", "type": 3},
                        {"name": "g", "label": "g", "type": 3}, {"name": "b", "label": "b", "type": 3}]})

    def test_gives_each_field_of_a_template(self):
        gain = self.probe_operator()["templates"][1]
        self.assertEqual(gain, {
            "type": "PRM_FLT", "extended": 0, "size": 1, "token": "gain", "label": "Gain",
            "defaults": [{"value": 0.10000000149011612, "string": None, "meaning": 0}], "menu": None,
            "range": {"min_flag": 3, "min": 0.0, "max_flag": 1, "max": 4.0}, "callback": gain["callback"],
            "spare": {}, "callback_language": "hscript", "parm_group": 1, "export_level": 0, "help": "Grösse",
            "disable_when": "{ mode == one }", "hide_when": None, "invisible": False, "join_next": False,
            "children": None})

    def test_gives_folders_menus_lists_and_scripts(self):
        tabs, _, mode, group, knots, path = self.probe_operator()["templates"]
        self.assertEqual((tabs["type"], tabs["size"], tabs["defaults"]),
                         ("PRM_SWITCHER", 1, [{"value": 2.0, "string": "Main", "meaning": 0}]))
        self.assertEqual(mode["menu"], {"type": 0x1001, "items": [["one", "One"], ["two", "Two"]]})
        self.assertEqual(mode["defaults"], [{"value": 1.0, "string": "two", "meaning": 0}])
        self.assertEqual((group["spare"], group["callback_language"]), ({"group_type": "simple"}, "hscript"))
        self.assertEqual((knots["type"], knots["defaults"][0]["value"], [c["token"] for c in knots["children"]]),
                         ("PRM_MULTITYPE_LIST", 2.0, ["knots_#"]))
        self.assertEqual((knots["spare"], knots["callback_language"]), (None, None))
        self.assertEqual((path["spare"], path["callback_language"], path["callback"]),
                         ({"script_callback": "print(1)"}, "python", True))
        self.assertEqual(path["defaults"], [{"value": 0.0, "string": "1+1", "meaning": 2}])

    def test_shows_a_person_the_same_interface(self):
        text = self.probe()
        for words in ('korvan::probe  "Probe"', "tab menu  Probes", "[Main]", "at least 0, slider to 4", "Grösse",
                      "disabled when { mode == one }", "one of these: one (One), two (Two)", "= 1+1 (python)",
                      "script_callback (python): print(1)", "2 at first", "4 inputs", "4 outputs", "vector (2)"):
            self.assertIn(words, text)
        self.assertNotIn("\x1b", text, "colour only on a terminal")

    def test_shows_what_a_folder_holds_below_its_tab(self):
        lines = self.probe().splitlines()
        depth = {line.split()[0]: len(line) - len(line.lstrip()) for line in lines if line.strip()}
        self.assertEqual([depth["[Main]"], depth["Gain"], depth["Mode"], depth["Path"]], [4, 6, 6, 4])

    def test_keeps_control_characters_away_from_the_terminal(self):
        node = {"name": "zelk__bell", "kind": "shader", "output": "float", "parameters": [],
                "metadata": [{"key": "houdini.label", "value": "a\u0007b"}]}
        text = self.output_of("describe", "korvan::bell", KORVAN_CATALOGUE=self.catalogue(node))
        self.assertIn('"a\\x07b"', text)

    def test_describes_several_types_in_table_order_whatever_the_order_asked(self):
        nodes = [dict(PROBE, name=f"zelk__probe_{n}") for n in "abc"]
        described = self.json_of("describe", "korvan::probe_c", "korvan::probe_a", KORVAN_CATALOGUE=self.catalogue(*nodes))
        self.assertEqual([o["name"] for o in described["tables"]["Vop"]], ["korvan::probe_a", "korvan::probe_c"])

    def test_describes_what_it_knows_beside_an_unknown_type(self):
        run = self.run_kshop("describe", "korvan::probe", "korvan::prob", KORVAN_CATALOGUE=self.catalogue(PROBE))
        self.assertEqual(run.returncode, 1)
        self.assertTrue(run.stdout.startswith("korvan::probe "))
        self.assertEqual(run.stderr, "kshop: no plug-in registered a type called 'korvan::prob'; "
                                     "did you mean korvan::probe?\n")

    def test_points_to_the_list_when_nothing_is_near(self):
        self.assertEqual(self.failure_of("describe", "xyzzyxyzzyxyzzy"),
                         "kshop: no plug-in registered a type called 'xyzzyxyzzyxyzzy'; 'kshop list' shows all\n")

    def test_repeats_complaints_of_registration_on_standard_error_but_not_with_json(self):
        node = dict(PROBE, metadata=[{"key": "houdini.parm.heading", "value": "x"}])
        sentence = "[zelk::shop::ShaderDesc] Skipping badly formatted extra parameter: houdini.parm.heading"
        text = self.run_kshop("describe", "korvan::probe", KORVAN_CATALOGUE=self.catalogue(node))
        self.assertEqual((text.returncode, text.stderr), (0, f"kshop: error: {sentence}\n"))
        messages = self.json_of("describe", "korvan::probe", KORVAN_CATALOGUE=self.catalogue(node))["messages"]
        self.assertEqual([m for m in messages if m["severity"] != "info"], [{"severity": "error", "text": sentence}])


if __name__ == "__main__":
    unittest.main()
