"""kshop preview: each kind of edit does to the node what a person's hand does, and hou reads it."""

import ast
import unittest

from preview_case import PreviewCase, parm_of, parms_of

TYPE = "korvan::try"

READ = "python:print({p.name(): p.eval() for p in kwargs['node'].parms() if p.name() != 'read'})"

IDENTITY = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]

PARAMETERS = [
    {"name": "amount", "type": "float", "default": 0.5},
    {"name": "steps", "type": "int", "default": 3},
    {"name": "level", "type": "byte", "default": 1},
    {"name": "tint", "type": "rgb", "default": [1, 1, 1]},
    {"name": "shade", "type": "rgba", "default": [0, 0, 0, 1]},
    {"name": "axis", "type": "vector", "default": [0, 1, 0]},
    {"name": "uv", "type": "point2", "default": [0, 0]},
    {"name": "frame", "type": "matrix", "default": IDENTITY},
    {"name": "on", "type": "boolean", "default": False},
    {"name": "mode", "type": "enum", "enum": ["perlin", "cell", "worley"], "default": 0},
    {"name": "title", "type": "string", "default": ""},
    {"name": "picture", "type": "string", "default": ""},
    {"name": "seen_by", "type": "int", "default": 255},
    {"name": "knots", "type": "array", "element": "float", "default": [0, 1]},
    {"name": "target", "type": "node"},
]

METADATA = [
    ("houdini.parm.button.read", READ),
    ("houdini.parm.toggle.extra", "off"),
    ("houdini.parm.menu.quality", "low;Low;high;High"),
    ("houdini.parm.heading.top", "Top"),
    ("amount", "softmax", 1.0), ("amount", "min", 0.0),
    ("picture", "houdini.type", "file:image"),
    ("seen_by", "houdini.type", "visibility"),
    ("title", "houdini.type", "menu:replace:python"),
    ("title", "houdini.menu_script", "return ['a', 'A', kwargs['node'].parm('mode').evalAsString(), 'Now']"),
    ("steps", "houdini.disable_when", "{ on == 0 }"),
    ("level", "houdini.hide_when", "{ mode == cell }"),
]


class Edits(PreviewCase):
    def setUp(self):
        super().setUp()
        self.page = self.preview_of(PARAMETERS, METADATA)

    def edit(self, action, **members):
        answer = self.page.edit(TYPE, action, **members)
        self.assertEqual(answer["errors"], [], members)
        return answer

    def refused(self, action, **members):
        """The sentence of an edit that the node does not take."""
        before = self.read()
        answer = self.page.edit(TYPE, action, **members)
        self.assertEqual(self.read(), before)
        (sentence,) = answer["errors"]
        return sentence

    def wrong(self, status, action, **members):
        """The sentence of a request that makes no sense."""
        before = self.read()
        sentence = self.page.edit(TYPE, action, expect=status, **members)["error"]
        self.assertEqual(self.read(), before)
        return sentence

    def read(self):
        """What hou reads of every channel."""
        answer = self.page.edit(TYPE, "press", token="read")
        self.assertEqual(answer["errors"], [])
        return ast.literal_eval(answer["console"])

    def test_every_kind_takes_its_value_and_hou_reads_it(self):
        rows = [("amount", 0.25, "float", [0.25], {"amount": 0.25}),
                ("steps", 7, "int", [7], {"steps": 7}),
                ("tint", [0.1, 1, 0.3], "color", [0.1, 1, 0.3], {"tintr": 0.1, "tintg": 1.0, "tintb": 0.3}),
                ("shade", [0.1, 0.2, 0.3, 0.4], "color", [0.1, 0.2, 0.3, 0.4], {"shadea": 0.4}),
                ("axis", [1, 2, -3.5], "vector", [1, 2, -3.5], {"axisx": 1.0, "axisz": -3.5}),
                ("uv", [0.5, 2], "float", [0.5, 2], {"uv1": 0.5, "uv2": 2.0}),
                ("frame", [2] + IDENTITY[1:], "matrix", [2] + IDENTITY[1:], {"frame1": 2.0, "frame16": 1.0})]
        for token, value, kind, values, channels in rows:
            with self.subTest(token):
                parm = parm_of(self.edit("set", token=token, value=value), token)
                self.assertEqual((parm["kind"], parm["values"], parm["changed"]), (kind, values, True))
                self.assertEqual({k: v for k, v in self.read().items() if k in channels}, channels)

    def test_choices_take_tokens_and_places(self):
        for value in True, 1, "on", "1":
            with self.subTest(value):
                self.edit("set", token="on", value=False)
                self.assertIs(parm_of(self.edit("set", token="on", value=value), "on")["value"], True)
                self.assertEqual(self.read()["on"], 1)
        for value in "worley", 2:
            with self.subTest(value):
                self.edit("set", token="mode", value=0)
                parm = parm_of(self.edit("set", token="mode", value=value), "mode")
                self.assertEqual((parm["kind"], parm["value"], parm["current"]), ("menu", 2, "worley"))
                self.assertEqual(self.read()["mode"], "worley")
        parm = parm_of(self.edit("set", token="quality", value="high"), "quality")
        self.assertEqual((parm["value"], parm["items"], parm["extra"]), (1, [["low", "Low"], ["high", "High"]], True))
        parm = parm_of(self.edit("set", token="seen_by", value=5), "seen_by")
        self.assertEqual((parm["kind"], parm["value"], parm["items"][1]), ("strip", 5, ["shadow", "Shadow"]))
        self.assertEqual(self.read()["seen_by"], 5)

    def test_texts_are_kept_as_typed(self):
        for token, kind in ("title", "string"), ("picture", "file"), ("target", "node"):
            for text in "plain", "$HIP/a b.tx", "\u00e4\u2603\U0001f600", "a\"b'c\\d\n\te", "":
                with self.subTest(token=token, text=text):
                    parm = parm_of(self.edit("set", token=token, value=text), token)
                    self.assertEqual((parm["kind"], parm["value"]), (kind, text))
        self.assertTrue(parm_of(self.page.node(TYPE), "picture")["image"])

    def test_a_single_channel_can_be_set(self):
        self.edit("set", channel="tintg", value=0.5)
        self.assertEqual(parm_of(self.page.node(TYPE), "tint")["values"], [1, 0.5, 1])

    def test_what_a_hard_end_forbids_is_limited_and_a_soft_end_is_not(self):
        parm = parm_of(self.edit("set", token="amount", value=1.5), "amount")
        self.assertEqual(parm["values"], [1.5])
        self.assertEqual(parm["range"], {"min": 0.0, "min_hard": True, "max": 1.0, "max_hard": False})
        self.assertTrue(parm["slider"])
        self.assertEqual(parm_of(self.edit("set", token="amount", value=-1), "amount")["values"], [0])
        self.assertEqual(parm_of(self.edit("set", token="level", value=300), "level")["values"], [255])

    def test_conditions_are_those_of_the_host_after_every_edit(self):
        state = lambda answer, token, key: parm_of(answer, token)[key]
        node = self.page.node(TYPE)
        self.assertFalse(state(node, "steps", "enabled"))
        self.assertEqual(state(node, "steps", "disable_when"), "{ on == 0 }")
        self.assertTrue(state(self.edit("set", token="on", value=1), "steps", "enabled"))
        self.assertTrue(state(self.page.node(TYPE), "level", "visible"))
        self.assertFalse(state(self.edit("set", token="mode", value="cell"), "level", "visible"))
        self.assertFalse(state(self.page.node(TYPE), "level", "visible"))
        self.edit("undo")
        self.assertTrue(state(self.page.node(TYPE), "level", "visible"))

    def test_scripted_menus_run_each_time(self):
        menu = parm_of(self.page.node(TYPE), "title")["menu"]
        self.assertEqual((menu["kind"], menu["scripted"], menu["error"]), ("replace", True, None))
        self.assertEqual(menu["items"], [["a", "A"], ["perlin", "Now"]])
        menu = parm_of(self.edit("set", token="mode", value="cell"), "title")["menu"]
        self.assertEqual(menu["items"], [["a", "A"], ["cell", "Now"]])

    def test_an_expression_has_its_value_its_language_and_its_mistake(self):
        parm = parm_of(self.edit("expression", channel="amount", text="ch('steps') / 10", language="hscript"), "amount")
        self.assertEqual(parm["values"], [0.3])
        self.assertEqual(parm["expressions"], [{"text": "ch('steps') / 10", "language": "hscript", "error": None}])
        self.edit("set", token="steps", value=8)
        self.assertEqual(self.read()["amount"], 0.8)
        parm = parm_of(self.edit("expression", channel="tintb", text="hou.parm('steps').eval() * 2", language="python"),
                       "tint")
        self.assertEqual(parm["expressions"][2]["language"], "python")
        answer = self.page.edit(TYPE, "expression", channel="amount", text="nonsense(", language="hscript")
        self.assertTrue(parm_of(answer, "amount")["expressions"][0]["error"])
        self.assertTrue(any("/amount: " in error for error in answer["node"]["errors"]))
        parm = parm_of(self.edit("expression", channel="tintb", text=None), "tint")
        self.assertEqual((parm["expressions"][2], parm["values"][2]), (None, 16))
        parm = parm_of(self.edit("set", token="amount", value=0.75), "amount")
        self.assertEqual((parm["expressions"], parm["values"]), ([None], [0.75]))

    def test_lists_grow_and_shrink(self):
        parm = parm_of(self.page.node(TYPE), "knots")
        self.assertEqual((parm["kind"], parm["count"], parm["first"], parm["changed"]), ("list", 2, 1, False))
        self.edit("set", token="knots_1", value=0.25)
        parm = parm_of(self.edit("insert", token="knots", index=0), "knots")
        self.assertEqual([i["parms"][0]["token"] for i in parm["instances"]], ["knots_1", "knots_2", "knots_3"])
        self.assertEqual(self.read()["knots_2"], 0.25)
        self.edit("remove", token="knots", index=0)
        self.assertEqual(self.read()["knots_1"], 0.25)
        self.assertEqual(parm_of(self.edit("count", token="knots", count=5), "knots")["count"], 5)
        self.assertEqual(self.read()["knots"], 5)
        self.assertEqual(parm_of(self.edit("reset", token="knots"), "knots")["count"], 2)

    def test_buttons_run_their_callbacks_and_show_what_these_print(self):
        self.assertEqual(self.read()["steps"], 3)
        parm = parm_of(self.page.node(TYPE), "read")
        self.assertEqual((parm["kind"], parm["callback"], parm["callback_script"]), ("button", True, READ[len("python:"):]))

    def test_edits_can_be_undone_and_redone(self):
        before = self.read()
        self.edit("set", token="tint", value=[0, 0, 0])
        self.edit("count", token="knots", count=4)
        after = self.read()
        self.edit("undo")
        self.edit("undo")
        self.assertEqual(self.read(), before)
        self.edit("redo")
        self.edit("redo")
        self.assertEqual(self.read(), after)
        self.assertEqual(self.refused("redo"), "There is nothing to redo.")

    def test_resets_one_or_all(self):
        fresh = self.read()
        self.edit("set", token="tint", value=[0, 0, 0])
        self.edit("set", token="mode", value="cell")
        self.edit("set", token="knots_2", value=9)
        self.assertFalse(parm_of(self.edit("reset", token="tint"), "tint")["changed"])
        node = self.edit("reset_all")["node"]
        self.assertEqual([t for t, p in parms_of(node["parms"]).items() if p["changed"]], [])
        self.assertEqual(self.read(), fresh)

    def test_each_edit_sends_its_records(self):
        answer = self.edit("set", token="amount", value=0.25)
        record = {"node_path": "/shop/korvan_vopnet1/try1", "entry_name": "zelk__try",
                  "parms": {"amount": {"type": 4, "value": 0.25}}}
        self.assertEqual(answer["records"], [record])
        self.assertEqual(self.page.get("records", since=0), {"next": 1, "records": [{"n": 0, "record": record}]})
        self.edit("set", token="steps", value=4)
        later = self.page.get("records", since=1)
        self.assertEqual((later["next"], [r["n"] for r in later["records"]]), (2, [1]))

    def test_a_whole_colour_is_one_step_and_leaves_unchanged_components_alone(self):
        answer = self.edit("set", token="tint", value=[1, 0.5, 1])
        self.assertEqual(len(answer["records"]), 1)
        self.edit("set", token="tint", value=[0, 0, 0])
        self.edit("undo")
        self.assertEqual(parm_of(self.page.node(TYPE), "tint")["values"], [1, 0.5, 1])

    def test_refuses_values_that_are_none(self):
        self.assertIn('is no value for the parameter "amount"', self.refused("set", token="amount", value="much"))
        self.assertEqual(self.refused("set", token="amount", value=None),
                         'The parameter "amount" takes a number or one of its menu\'s items.')
        self.assertEqual(self.refused("set", token="picture", value=3), 'The parameter "picture" takes a text.')
        self.assertEqual(self.refused("set", token="title", value="a\0b"),
                         'The parameter "title" takes a text without a zero character in it.')
        self.assertEqual(self.refused("set", token="mode", value=3),
                         'The parameter "mode" takes an item of its menu: its token or its place, from 0.')
        for count in -1, 10001, 2**62, -2**53:
            with self.subTest(count):
                sentence = "%d instances cannot be; 0 to 10000 can." % count
                if abs(count) < 9e15:
                    self.assertEqual(self.refused("count", token="knots", count=count), sentence)
                else:
                    self.assertEqual(self.wrong(400, "count", token="knots", count=count),
                                     '"count" is to be a whole number.')
        self.assertEqual(self.refused("insert", token="knots", index=3), 'There is no place 3; "knots" has 2 instances.')
        self.assertEqual(self.refused("remove", token="knots", index=2), 'There is no place 2; "knots" has 2 instances.')
        self.assertEqual(self.refused("remove", token="knots", index=-1), 'There is no place -1; "knots" has 2 instances.')

    def test_names_what_a_request_gets_wrong(self):
        self.assertEqual(self.wrong(404, "set", token="nothing", value=1), 'The node has no parameter "nothing".')
        self.assertEqual(self.wrong(404, "set", channel="tint", value=1), 'The node has no channel "tint".')
        self.assertEqual(self.wrong(400, "set", token="tint", value=1), 'The parameter "tint" takes 3 values, not 1.')
        self.assertEqual(self.wrong(400, "set", token="tint", value=[1] * 4), 'The parameter "tint" takes 3 values, not 4.')
        self.assertEqual(self.wrong(400, "set", token="tint"), 'The request has no "value".')
        self.assertEqual(self.wrong(400, "set", value=1), 'The request has no "token".')
        self.assertEqual(self.wrong(400, "set", token="knots", value=1),
                         'The parameter "knots" holds no value; its instances do.')
        self.assertEqual(self.wrong(400, "set", token="top", value=1), 'The parameter "top" holds no value.')
        self.assertEqual(self.wrong(400, "press", token="amount"), 'The parameter "amount" is no button.')
        self.assertEqual(self.wrong(400, "count", token="amount", count=1),
                         'The parameter "amount" is no list and no ramp.')
        self.assertEqual(self.wrong(400, "count", token="knots", count=1.5), '"count" is to be a whole number.')
        self.assertEqual(self.wrong(400, "ramp", token="knots", keys=[]), 'The parameter "knots" is no ramp.')
        self.assertEqual(self.wrong(400, "expression", channel="amount", text="1", language="lua"),
                         '"language" is "hscript" or "python".')
        self.assertEqual(self.wrong(400, "expression", channel="amount", language="python"), 'The request has no "text".')
        self.assertIn('There is no action "paint"; there are: set, expression, ', self.wrong(400, "paint"))


class Ramps(PreviewCase):
    KEYS = [{"position": 0, "value": 1, "interpolation": "linear"},
            {"position": 0.25, "value": 0.5, "interpolation": 0},
            {"position": 1, "value": 0, "interpolation": "bspline"}]

    def setUp(self):
        super().setUp()
        self.page = self.preview()

    def test_all_keys_are_set_as_one_edit_with_one_record(self):
        ramp = parm_of(self.page.node("korvan::ramp_float"), "ramp")
        self.assertEqual((ramp["kind"], ramp["ramp"], ramp["count"], ramp["changed"]), ("ramp", "float", 2, False))
        answer = self.page.edit("korvan::ramp_float", "ramp", token="ramp", keys=self.KEYS)
        ramp = parm_of(answer, "ramp")
        self.assertEqual([(k["position"], k["value"], ramp["interpolations"][k["interpolation"]][0]) for k in ramp["keys"]],
                         [(0, 1, "linear"), (0.25, 0.5, "constant"), (1, 0, "bspline")])
        self.assertEqual([i["parms"][0]["token"] for i in ramp["instances"]], ["ramp1pos", "ramp2pos", "ramp3pos"])
        self.assertTrue(ramp["changed"])
        (record,) = answer["records"]
        self.assertEqual(record["parms"]["position"]["value"]["values"], [0, 0.25, 1])
        self.assertEqual(len(answer["node"]["inputs"]), 10)
        ramp = parm_of(self.page.edit("korvan::ramp_float", "undo"), "ramp")
        self.assertEqual((ramp["count"], ramp["changed"]), (2, False))

    def test_a_key_more_or_less_is_an_instance_more_or_less(self):
        ramp = parm_of(self.page.edit("korvan::ramp_float", "insert", token="ramp", index=1), "ramp")
        self.assertEqual([k["position"] for k in ramp["keys"]], [0, 0.5, 1])
        ramp = parm_of(self.page.edit("korvan::ramp_float", "set", token="ramp2pos", value=0.25), "ramp")
        self.assertEqual([k["position"] for k in ramp["keys"]], [0, 0.25, 1])
        self.assertEqual(parm_of(self.page.edit("korvan::ramp_float", "remove", token="ramp", index=0), "ramp")["count"], 2)
        answer = self.page.edit("korvan::ramp_float", "ramp", token="ramp", keys=[])
        self.assertEqual((parm_of(answer, "ramp")["count"], len(answer["records"])), (0, 1))

    def test_colour_ramps_hold_colours(self):
        keys = [{"position": 0, "value": [1, 0, 0.5], "interpolation": 1}]
        ramp = parm_of(self.page.edit("korvan::ramp_rgb", "ramp", token="ramp", keys=keys), "ramp")
        self.assertEqual((ramp["ramp"], ramp["keys"]), ("color", [{"position": 0, "value": [1, 0, 0.5], "interpolation": 1}]))

    def test_names_a_key_that_is_none(self):
        good = self.KEYS[0]
        rows = [(7, '"keys" is to be a list.'),
                ([7], 'The request has no "position".'),
                ([{**good, "position": "x"}], '"position" of a key is a number.'),
                ([{**good, "value": [1, 1, 1]}], '"value" of a key is a number.'),
                ([{**good, "interpolation": 99}],
                 '"interpolation" of a key is an item of the interpolation menu: its token or its place.'),
                ([{**good, "interpolation": "curly"}],
                 '"interpolation" of a key is an item of the interpolation menu: its token or its place.')]
        for keys, sentence in rows:
            with self.subTest(sentence):
                answer = self.page.edit("korvan::ramp_float", "ramp", expect=400, token="ramp", keys=keys)
                self.assertEqual(answer["error"], sentence)
        answer = self.page.edit("korvan::ramp_rgb", "ramp", expect=400, token="ramp", keys=[good])
        self.assertEqual(answer["error"], '"value" of a colour ramp\'s key is a list of three numbers.')
        answer = self.page.edit("korvan::ramp_float", "ramp", token="ramp", keys=[good] * 10001)
        self.assertEqual(answer["errors"], ["10001 instances cannot be; 0 to 10000 can."])

    def test_wires_connect_and_disable_what_they_drive(self):
        source = {"type": "korvan::ramp_rgb", "output": 1}
        answer = self.page.edit("korvan::ramp_float", "wire", **{"input": 0, "from": source})
        self.assertEqual(answer["errors"], [])
        self.assertEqual(answer["node"]["inputs"][0]["connected"],
                         {"path": "/shop/korvan_vopnet1/ramp_rgb1", "type": "korvan::ramp_rgb", "output": 1})
        self.assertFalse(parm_of(answer, "input")["enabled"])
        answer = self.page.edit("korvan::ramp_float", "wire", **{"input": 0, "from": {**source, "output": 0}})
        self.assertEqual(len(answer["errors"]), 1)
        answer = self.page.edit("korvan::ramp_float", "wire", **{"input": 0, "from": None})
        self.assertIsNone(answer["node"]["inputs"][0]["connected"])
        self.assertTrue(parm_of(answer, "input")["enabled"])
        for wire, sentence in [({"input": 99, "from": None}, "The node has no input 99; it has 7 inputs."),
                               ({"input": 0, "from": {"type": "korvan::ramp_rgb", "output": 9}},
                                "The node ramp_rgb1 has no output 9."),
                               ({"input": 0}, 'The request has no "from".')]:
            with self.subTest(sentence):
                self.assertEqual(self.page.edit("korvan::ramp_float", "wire", expect=400, **wire)["error"], sentence)


if __name__ == "__main__":
    unittest.main()
