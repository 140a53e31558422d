"""The model itself, against cases worked out by hand."""

import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from catalogue_view import Entry, MetaData  # noqa: E402
from interface_model import DEFAULT_HELP, predict  # noqa: E402
from template_model import CallbackSlots  # noqa: E402
from text_rules import leading_integer, pretty_label, split  # noqa: E402


def node(*parameters, name="zelk__foo", output="rgb", kind="shader", meta=(), parm_meta=(), **fields):
    """A catalogue record; `meta` holds (key, value) and `parm_meta` (parameter, key, value)."""
    items = [{"key": key, "value": value} for key, value in meta]
    items += [{"parameter": parameter, "key": key, "value": value} for parameter, key, value in parm_meta]
    return dict({"name": name, "kind": kind, "output": output, "builtin": False, "parameters": list(parameters),
                 "metadata": items}, **fields)


def parm(name, kind="float", default=None, **fields):
    record = dict({"name": name, "type": kind}, **fields)
    if default is not None:
        record["default"] = default
    return record


def outcome(*records, **options):
    return predict([Entry(record) for record in records], **options)


def operator(record):
    return outcome(record)["operators"][0]


def templates(record):
    return operator(record)["templates"]


def template(record):
    """The only template of a record that has exactly one."""
    (one,) = templates(record)
    return one


def one_parm(kind, default=None, meta=(), **fields):
    """The template of a shader with one parameter "p" of this kind and metadata."""
    return template(node(parm("p", kind, default, **fields), parm_meta=[("p", key, value) for key, value in meta]))


def messages(record):
    return [message["text"] for message in outcome(record)["messages"]]


def tokens(record):
    return [one["token"] for one in templates(record)]


class Texts(unittest.TestCase):
    def test_labels_follow_underscores_or_humps(self):
        for text, label in (("base_color", "Base Color"), ("a__b", "A  B"), ("_a", " A"),
                            ("specularIOR", "Specular IOR"),
                            ("KdColor", "Kd Color"), ("HDRMap", "HDRMap"), ("color2Tint", "Color2Tint"),
                            ("xScale", "X Scale"), ("", ""), ("straße_größe", "Straße Größe"), ("éA", "éA")):
            self.assertEqual(pretty_label(text, True), label)
        self.assertEqual(pretty_label("base_color", False), "base color")

    def test_splitting_an_empty_text_gives_nothing(self):
        self.assertEqual(split("", ";", keep_empty=True), [])
        self.assertEqual(split("a,,b", ",", keep_empty=True), ["a", "", "b"])
        self.assertEqual(split("a  b ", " "), ["a", "b"])

    def test_a_number_is_read_from_the_front_of_a_text(self):
        self.assertEqual([leading_integer(t) for t in ("3", " 3y", "-1", "+2", "x", "", "9" * 20)],
                         [3, 3, -1, 2, 0, 0, 2**63 - 1])

    def test_continuation_ends_at_the_first_gap(self):
        meta = MetaData()
        for key, value in (("help", "a"), ("help2", "b"), ("help4", "d")):
            meta.put(key, value)
        self.assertEqual(meta.text("help"), "ab")

    def test_the_last_continuation_key_is_99(self):
        meta = MetaData()
        for n in range(1, 102):
            meta.put(f"k{n}" if n > 1 else "k", ".")
        self.assertEqual(len(meta.text("k")), 99)

    def test_a_query_of_another_type_finds_nothing(self):
        meta = MetaData()
        meta.put("a", "true")
        meta.put("b", True)
        self.assertFalse(meta.flag("a"))
        self.assertEqual(meta.number("b", 0.5), 0.5)
        self.assertEqual(meta.text("b", "none"), "none")

    def test_a_repeated_key_keeps_its_place(self):
        meta = MetaData()
        for key, value in (("a", 1.0), ("b", 2.0), ("a", "now a text")):
            meta.put(key, value)
        self.assertEqual(list(meta.items.items()), [("a", "now a text"), ("b", 2.0)])


class Operators(unittest.TestCase):
    def test_name_label_and_defaults_come_from_the_entry(self):
        made = operator(node())
        self.assertEqual((made["name"], made["label"], made["icon"]), ("korvan::foo", "Foo", "MISC_generic"))
        self.assertEqual((made["tab_menu"], made["help_url"]), (None, DEFAULT_HELP))
        self.assertEqual((made["max_inputs"], made["num_outputs"], made["templates"]), (2048, 4, []))

    def test_colours_and_vectors_have_component_outputs(self):
        for output, names in (("rgb", ["rgb", "r", "g", "b"]), ("rgba", ["rgba", "r", "g", "b", "a"]),
                              ("point2", ["point2", "x", "y"]), ("matrix", ["matrix"]), ("undefined", ["undefined"])):
            self.assertEqual([one["name"] for one in operator(node(output=output))["outputs"]], names)

    def test_the_shader_type_decides_the_main_connector(self):
        for word, kind, name in (("light_filter", 36, "light filter"), ("atmosphere", 39, "rgb"),
                                 ("volume", 51, "rgb")):
            made = operator(node(meta=[("houdini.shader_type", word)]))
            self.assertEqual(made["outputs"][0], {"name": name, "label": name, "type": kind})

    def test_cameras_show_only_what_no_camera_has(self):
        made = operator(node(parm("fov"), parm("matrix"), parm("squeeze"), kind="camera",
                             meta=[("houdini.category", "Lens")]))
        self.assertEqual([one["token"] for one in made["templates"]], ["squeeze"])
        self.assertEqual((made["tab_menu"], made["icon"], made["outputs"][0]["type"]), ("Camera", "OBJ_camera", 40))

    def test_skipped_entries_and_builtin_cameras_are_no_operators(self):
        made = outcome(node(meta=[("houdini.skip", True)]), node(name="c", kind="camera", builtin=True),
                       node(name="s", builtin=True), node(name="t", meta=[("houdini.skip", "true")]))
        self.assertEqual([one["name"] for one in made["operators"]], ["korvan::s", "korvan::t"])

    def test_the_first_of_two_equal_operator_names_wins(self):
        made = outcome(node(parm("a"), name="zelk__x"), node(parm("b", "undefined"), name="x"))
        self.assertEqual([[t["token"] for t in one["templates"]] for one in made["operators"]], [["a"]])
        self.assertEqual(len(made["messages"]), 1)

    def test_inputs_are_what_is_linkable_unless_said_otherwise(self):
        made = operator(node(parm("a"), parm("b"), parm("c"), parm("d", "array", element="rgb"),
                             meta=[("houdini.parm.toggle.t", "on")],
                             parm_meta=[("a", "linkable", False), ("b", "linkable", False),
                                        ("b", "houdini.no_input", False), ("c", "houdini.no_input", True)]))
        self.assertEqual([(one["name"], one["type"]) for one in made["inputs"]], [("b", 3), ("d", 2)])


class DisplayOrder(unittest.TestCase):
    def test_listed_parameters_come_first(self):
        record = node(parm("a"), parm("b"), parm("c"), meta=[("houdini.order", "x b a")])
        self.assertEqual(tokens(record), ["b", "a", "c"])

    def test_a_name_listed_twice_takes_its_last_place(self):
        record = node(parm("a"), parm("b"), meta=[("houdini.order", "a b a")])
        self.assertEqual(tokens(record), ["b", "a"])

    def test_a_ramp_stands_for_its_three_parameters(self):
        record = node(parm("p"), parm("v"), parm("i"), parm("z"), meta=[("houdini.parm.ramp_rgb.r", "p  v i ")])
        self.assertEqual(tokens(record), ["z", "r"])

    def test_a_ramp_with_other_than_three_words_is_reported_and_removes_nothing(self):
        record = node(parm("p"), meta=[("houdini.parm.ramp_float.r", "p v")])
        self.assertEqual(tokens(record), ["p", "r"])
        self.assertEqual(messages(record),
                         ["[zelk::shop::ShaderDesc] Exactly 3 arguments needed for ramp \"r\", found 2"])

    def test_a_ramp_does_not_remove_extra_parameters(self):
        record = node(parm("p"), meta=[("houdini.parm.heading.h", "H"), ("houdini.parm.ramp_float.r", "p h r")])
        self.assertEqual(tokens(record), ["h", "r"])

    def test_an_extra_of_a_parameter_s_name_takes_its_place_in_the_order_but_not_in_a_ramp(self):
        same = [("houdini.parm.heading.a", "H")]
        ordered = templates(node(parm("a"), parm("b"), meta=same + [("houdini.order", "b a")]))
        self.assertEqual([one["type"] for one in ordered], ["PRM_FLT", "PRM_HEADING", "PRM_FLT"])
        self.assertEqual([one["token"] for one in ordered], ["b", "a", "a"])
        wired = templates(node(parm("a"), parm("b"), meta=same + [("houdini.parm.ramp_rgb.r", "a b x")]))
        self.assertEqual([one["type"] for one in wired], ["PRM_HEADING", "PRM_MULTITYPE_RAMP_RGB"])

    def test_malformed_extra_keys_are_reported_and_sub_keys_are_not(self):
        record = node(meta=[("houdini.parm.heading", "x"), ("houdini.parm.ramp_float.r.label", "y"),
                            ("houdini.parm..heading.h", "z")])
        self.assertEqual(messages(record),
                         ["[zelk::shop::ShaderDesc] Skipping badly formatted extra parameter: houdini.parm.heading"])
        self.assertEqual(tokens(record), ["h"])


class Defaults(unittest.TestCase):
    def values(self, *arguments, **fields):
        return [one["value"] for one in one_parm(*arguments, **fields)["defaults"]]

    def test_numbers_are_what_the_renderer_keeps(self):
        self.assertEqual(self.values("float", 0.1), [0.10000000149011612])
        self.assertEqual(self.values("uint", 4294967295), [-1])
        self.assertEqual(self.values("point2", [1, 2]), [1.0, 2.0])
        self.assertEqual(len(self.values("matrix", [0.5] * 16)), 16)

    def test_a_null_record_gives_zeros(self):
        self.assertEqual(self.values("rgba"), [0.0] * 4)
        self.assertIsNone(one_parm("string")["defaults"][0]["string"])
        self.assertIsNone(one_parm("enum", enum=["perlin"])["defaults"][0]["string"])

    def test_an_empty_array_gives_zeros_and_an_empty_text(self):
        for element, string in (("string", ""), ("float", None), ("enum", "a")):
            made = templates(node(parm("p", "array", element=element), parm_meta=[("p", "houdini.menu", "a;A")]))
            self.assertEqual(made[1]["children"][0]["defaults"], [{"value": 0, "string": string, "meaning": 0}])

    def test_an_enum_keeps_an_index_outside_its_list(self):
        items = ["perlin", "cellNoise"]
        for index, string in ((1, "cellNoise"), (9, None)):
            made = one_parm("enum", index, enum=items)["defaults"]
            self.assertEqual(made, [{"value": index, "string": string, "meaning": 0}])

    def test_types_without_a_field_show_a_sentence(self):
        self.assertEqual(one_parm("pointer")["defaults"][0]["string"], "Unhandled parameter type: KR_TYPE_POINTER")
        record = node({"name": "p", "type_code": 77})
        self.assertEqual(template(record)["defaults"][0]["string"], "Unknown parameter type")
        self.assertEqual(messages(record), ["[zelk::shop::ParmDesc] Unknown parameter type for p"])

    def test_an_expression_takes_the_place_of_the_text(self):
        for text, string, meaning in (("$F", "$F", 1), ("python:x", "x", 2), ("hscript:$F", "hscript:$F", 1),
                                      ("python:", None, 0)):
            made = one_parm("float", 2.0, [("houdini.expression", text)])["defaults"]
            self.assertEqual(made, [{"value": 2.0, "string": string, "meaning": meaning}])


class Fields(unittest.TestCase):
    def test_a_float_without_ranges_is_shown_from_0_to_1(self):
        self.assertEqual(one_parm("float")["range"], {"min_flag": 1, "min": 0.0, "max_flag": 1, "max": 1.0})

    def test_bytes_and_unsigned_numbers_are_restricted(self):
        self.assertEqual(one_parm("byte", meta=[("max", 1000.0)])["range"],
                         {"min_flag": 3, "min": 0.0, "max_flag": 3, "max": 255.0})
        self.assertEqual(one_parm("uint", meta=[("min", -3)])["range"],
                         {"min_flag": 3, "min": 0.0, "max_flag": 1, "max": 1.0})

    def test_an_odd_menu_keeps_its_pairs_and_is_reported(self):
        record = node(parm("p", "enum", 0, enum=["x"]), parm_meta=[("p", "houdini.menu", "a;A;b")])
        self.assertEqual(template(record)["menu"], {"type": 0x1001, "items": [["a", "A"]]})
        self.assertEqual(messages(record),
                         ["[zelk::shop::ParmDesc] Odd number of items in menu metadata for zelk__foo.p"])

    def test_only_the_first_tab_escape_of_a_label_is_replaced(self):
        menu = one_parm("enum", meta=[("houdini.menu", "a;x\\ty\\tz;b;")], enum=[])["menu"]
        self.assertEqual(menu["items"], [["a", "x\ty\\tz"], ["b", ""]])

    def test_visibility_is_a_strip_of_seven_buttons(self):
        made = one_parm("int", 255, [("houdini.type", "visibility")])
        self.assertEqual((made["type"], made["menu"]["items"][4]), ("PRM_BUTTONSTRIP", ["unused", ""]))

    def test_a_toggle_is_joined_only_without_a_label(self):
        both = [("houdini.join_next", True), ("houdini.no_label", True)]
        self.assertEqual(one_parm("boolean", True, both)["type"], "PRM_JOINED_TOGGLE")
        plain = one_parm("boolean", True, both[:1])
        self.assertEqual((plain["type"], plain["join_next"], plain["extended"]), ("PRM_TOGGLE", True, 0))

    def test_string_forms(self):
        for form, kind, extended, spare in (
                ("file:image", "PRM_PICFILE", 0, {}),
                ("file:*.ass:x", "PRM_FILE", 0, {"filechooser_pattern": "*.ass"}),
                ("opfilter", "PRM_STRING", 0x11, {}),
                ("opfilter:!!VOP!!", "PRM_STRING", 0x11, {"opfilter": "!!VOP!!"}),
                ("opfilter:a:b", "PRM_STRING", 0x11, {}), ("other", "PRM_STRING", 0, {})):
            made = one_parm("string", "", [("houdini.type", form)])
            self.assertEqual((made["type"], made["extended"], made["spare"]), (kind, extended, spare))

    def test_script_menus_keep_script_and_language(self):
        made = one_parm("string", "", [("houdini.type", "menu:replace:python"), ("houdini.menu_script", "a\\nb")])
        self.assertEqual(made["menu"], {"type": 1, "script": "a\nb", "language": "python"})

    def test_unknown_menu_words_are_reported(self):
        for form, text in (("menu:x:menu", "Unhandled menu type: x"),
                           ("menu:single", "Unhandled menu script language: ")):
            record = node(parm("p", "string", ""), parm_meta=[("p", "houdini.type", form)])
            self.assertIsNone(template(record)["menu"])
            self.assertEqual(messages(record), ["[zelk::shop::ParmDesc] " + text])

    def test_an_array_is_a_folder_and_a_list_of_elements(self):
        folder, instances = templates(node(
            parm("a", "array", [2, 3], element="float"),
            parm_meta=[("a", "houdini.invisible", True), ("a", "desc", "help"),
                       ("a", "houdini.hide_when", "{ b == 1 }")]))
        self.assertEqual((folder["type"], folder["token"], folder["spare"]),
                         ("PRM_SWITCHER", "a_group", {"group_type": "simple"}))
        self.assertEqual((folder["defaults"], folder["invisible"], folder["help"], folder["hide_when"]),
                         ([{"value": 1.0, "string": "A", "meaning": 0}], True, None, None))
        self.assertEqual((instances["type"], instances["defaults"][0]["value"], instances["invisible"]),
                         ("PRM_MULTITYPE_LIST", 2, False))
        (element,) = instances["children"]
        self.assertEqual((element["token"], element["label"], element["defaults"][0]["value"]), ("a_#", "A #", 2.0))
        self.assertEqual((element["help"], element["hide_when"], element["invisible"]), ("help", "{ b == 1 }", False))


class Extras(unittest.TestCase):
    def extra(self, kind, arguments, *sub_keys):
        key = f"houdini.parm.{kind}.x"
        return template(node(meta=[(key, arguments)] + [(f"{key}.{sub}", value) for sub, value in sub_keys]))

    def test_a_folder_has_a_tab_per_pair(self):
        made = self.extra("folder", "Main;3;More;2x")
        self.assertEqual((made["type"], made["size"], made["spare"]), ("PRM_SWITCHER", 2, None))
        self.assertEqual([(tab["string"], tab["value"]) for tab in made["defaults"]], [("Main", 3), ("More", 2)])

    def test_a_bad_folder_or_menu_ends_the_list_but_not_the_reports(self):
        record = node(parm("a"), parm("u", "undefined"),
                      meta=[("houdini.parm.folder.f", ";"), ("houdini.parm.folder.g", "A"),
                            ("houdini.parm.menu.m", "a;A;b"), ("houdini.order", "a f g m u")])
        self.assertEqual(tokens(record), ["a"])
        self.assertEqual(messages(record), ["[zelk::shop::ShaderDesc] Folder \"f\" is empty",
                                            "[zelk::shop::ShaderDesc] Odd number of arguments (1) for folder \"g\"",
                                            "[zelk::shop::ShaderDesc] Odd number of arguments (3) for menu \"m\"",
                                            "[zelk::shop::ParmDesc] Undefined parameter type for u"])

    def test_toggles_are_on_only_for_the_word_on(self):
        for word, value in (("on", 1), ("On", 0), ("on ", 0), (True, 0)):
            self.assertEqual(self.extra("toggle", word)["defaults"][0]["value"], value)

    def test_headings_show_their_arguments(self):
        self.assertEqual(self.extra("heading", "Title", ("label", "unused"))["label"], "Title")

    def test_ramps_have_two_points_and_no_extended_type(self):
        made = self.extra("ramp_rgb", "a b c", ("no_label", True))
        self.assertEqual((made["type"], made["extended"], made["defaults"][0]["value"], made["children"]),
                         ("PRM_MULTITYPE_RAMP_RGB", 0, 2.0, None))

    def test_an_unknown_kind_is_an_empty_template_and_the_list_goes_on(self):
        made = templates(node(meta=[("houdini.parm.odd.x", ""), ("houdini.parm.separator.y", "")]))
        self.assertEqual([one["type"] for one in made], [None, "PRM_SEPARATOR"])

    def test_a_button_runs_its_callback_or_else_its_arguments(self):
        made = self.extra("button", "python:b()", ("icon", "I"))
        self.assertEqual((made["spare"], made["callback_language"]),
                         ({"button_icon": "I", "script_callback": "b()"}, "python"))
        self.assertEqual(self.extra("button", "b", ("callback", "c"))["spare"], {"script_callback": "c"})


class CallbackSlot(unittest.TestCase):
    def test_a_slot_stays_set_for_its_own_generator(self):
        first = node(parm("a"), parm("b"), name="f", meta=[("houdini.parm.toggle.t", "")],
                     parm_meta=[("b", "houdini.callback", "x")])
        second = node(parm("c"), name="g", meta=[("houdini.parm.toggle.t", "")])
        made = outcome(first, second)["operators"]
        self.assertEqual([[t["callback"] for t in one["templates"]] for one in made],
                         [[False, True, False], [True, False]])

    def test_the_slots_can_be_set_from_the_start(self):
        made = outcome(node(parm("a", "array", element="int")), slots=CallbackSlots(parm=True))["operators"][0]
        folder, instances = made["templates"]
        self.assertEqual((folder["callback"], instances["callback"], instances["children"][0]["callback"]),
                         (False, False, True))


if __name__ == "__main__":
    unittest.main()
