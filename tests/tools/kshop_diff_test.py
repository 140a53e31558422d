"""kshop diff: what two interfaces differ in, and whether scenes feel it. Scenes that are really saved and loaded decide."""

import copy
import json
import unittest

from kshop_case import KshopCase

PROBE = {"name": "zelk__probe", "kind": "shader", "output": "rgb",
         "parameters": [{"name": "gain", "type": "float", "default": 0.5},
                        {"name": "tint", "type": "rgb", "default": [0, 0, 0]},
                        {"name": "mode", "type": "enum", "enum": ["one", "two", "three"], "default": 0},
                        {"name": "knots", "type": "array", "element": "float", "default": [0.5, 2]},
                        {"name": "path", "type": "string", "default": "a"}],
         "metadata": [{"key": "houdini.category", "value": "Probes"},
                      {"key": "houdini.order", "value": "tabs gain tint mode knots path"},
                      {"key": "houdini.parm.folder.tabs", "value": "Main;2;Rest;1"},
                      {"parameter": "gain", "key": "max", "value": 10.0},
                      {"parameter": "gain", "key": "desc", "value": "How much"}]}
SOURCE = {"name": "zelk__source", "kind": "shader", "output": "float", "parameters": [], "metadata": []}

# Sets every value to one that is no default, wires every input, and saves.
SAVE = """
import sys
network = hou.node("/shop").createNode("korvan_vopnet", "look")
probe = network.createNode("korvan::probe", "probe")
probe.parm("gain").set(7.25)
probe.parmTuple("tint").set((0.25, 0.5, 0.75))
probe.parm("mode").set("two")
probe.parm("knots").set(3)
probe.parm("knots_2").set(4.5)
probe.parm("path").set("12.5 words")
source = network.createNode("korvan::source", "source")
target = network.createNode("korvan::probe", "target")
probe.setInput(probe.inputNames().index("gain"), source, 0)
target.setInput(target.inputNames().index("tint"), probe, probe.outputNames().index("rgb"))
hou.hipFile.save(sys.argv[1])
"""

# Says what of that is there, by the names that the old interface had.
LOAD = """
import json, sys
try:
    hou.hipFile.load(sys.argv[1])
except hou.LoadWarning:
    pass
names = ("gain", "tintr", "tintg", "tintb", "mode", "knots", "knots_2", "path")
probe = hou.node("/shop/look/probe")
felt = {name: probe.parm(name).eval() if probe.parm(name) else None for name in names}
for node in ("probe", "target"):
    for wire in hou.node("/shop/look/" + node).inputConnections():
        felt["wire to " + node] = (wire.inputNode().name(), wire.outputNode().name(), wire.inputIndex(), wire.outputIndex(),
                                   hou.node("/shop/look/" + node).inputNames()[wire.inputIndex()],
                                   wire.inputNode().outputNames()[wire.outputIndex()])
for name, wire in felt.items():
    if name.startswith("wire"):
        felt[name] = wire[:2] + wire[4:]
print(json.dumps(felt, sort_keys=True))
"""


def parameter(node, name):
    return next(p for p in node["parameters"] if p["name"] == name)


def rename(node, old, new):
    parameter(node, old)["name"] = new
    for item in node["metadata"]:
        if item["key"] == "houdini.order":
            item["value"] = item["value"].replace(old, new)
        if item.get("parameter") == old:
            item["parameter"] = new


def remove(node, name):
    node["parameters"] = [p for p in node["parameters"] if p["name"] != name]
    node["metadata"] = [m for m in node["metadata"] if m.get("parameter") != name]


def retype(node, name, **fields):
    index = next(i for i, p in enumerate(node["parameters"]) if p["name"] == name)
    node["parameters"][index] = dict({"name": name}, **fields)


def say(node, key, value, of=None):
    wanted = {"key": key, "value": value} if of is None else {"parameter": of, "key": key, "value": value}
    node["metadata"] = [m for m in node["metadata"] if (m.get("parameter"), m["key"]) != (of, key)] + [wanted]


# What is changed, what must be said of it among other things, and whether a scene that uses everything is another one.
CASES = {
    "nothing": (lambda n: None, set(), False),
    "parameter gone": (lambda n: remove(n, "path"), {("breaks", "path", "parameter gone")}, True),
    "parameter renamed": (lambda n: rename(n, "path", "file"), {("breaks", "path", "parameter renamed?")}, True),
    "parameter added": (lambda n: n["parameters"].append({"name": "extra", "type": "float", "default": 1}),
                        {("adds", "extra", "parameter added"), ("adds", None, "input added")}, False),
    "number to text": (lambda n: retype(n, "gain", type="string", default="x"),
                       {("breaks", "gain", "type"), ("breaks", None, "input type")}, True),
    "text to number": (lambda n: retype(n, "path", type="float", default=1), {("breaks", "path", "type")}, True),
    "fraction to whole": (lambda n: retype(n, "gain", type="int", default=1), {("breaks", "gain", "type")}, True),
    "more components": (lambda n: retype(n, "tint", type="rgba", default=[0, 0, 0, 0]),
                        {("breaks", "tint", "size")}, None),
    "fewer components": (lambda n: retype(n, "tint", type="point2", default=[0, 0]), {("breaks", "tint", "size")}, True),
    "component names": (lambda n: retype(n, "tint", type="vector", default=[0, 0, 0]), {("breaks", "tint", "type")}, True),
    "default": (lambda n: parameter(n, "gain").update(default=0.75), {("changes", "gain", "default")}, False),
    "instances": (lambda n: parameter(n, "knots").update(default=[1]), {("changes", "knots", "default")}, False),
    "child type": (lambda n: retype(n, "knots", type="array", element="string", default=["a", "b"]),
                   {("breaks", "knots/knots_#", "type")}, True),
    "range": (lambda n: say(n, "max", 5.0, "gain"), {("changes", "gain", "range")}, False),
    "menu item gone": (lambda n: parameter(n, "mode").update(enum=["one", "three"]),
                       {("breaks", "mode", "menu item gone")}, None),
    "menu item added": (lambda n: parameter(n, "mode").update(enum=["zero", "one", "two", "three"]),
                        {("adds", "mode", "menu item added")}, False),
    "menu order": (lambda n: parameter(n, "mode").update(enum=["three", "two", "one"]),
                   {("changes", "mode", "menu order")}, False),
    "label": (lambda n: say(n, "houdini.label", "Volume", "gain"), {("changes", "gain", "label")}, False),
    "help": (lambda n: say(n, "desc", "How loud", "gain"), {("changes", "gain", "help")}, False),
    "condition": (lambda n: say(n, "houdini.disable_when", "{ mode == one }", "gain"),
                  {("changes", "gain", "disable condition")}, False),
    "callback": (lambda n: say(n, "houdini.callback", "python:print(1)", "gain"), {("changes", "gain", "spare data")}, False),
    "other folder": (lambda n: say(n, "houdini.parm.folder.tabs", "Main;1;Rest;2"), {("changes", "tint", "folder")}, False),
    "tabs renamed": (lambda n: say(n, "houdini.parm.folder.tabs", "Basic;2;Rest;1"), {("changes", "tabs", "tabs")}, False),
    "order": (lambda n: say(n, "houdini.order", "tabs tint gain mode knots path"),
              {("changes", None, "order of parameters"), ("changes", None, "input moved")}, False),
    "folder gone": (lambda n: n["metadata"].remove({"key": "houdini.parm.folder.tabs", "value": "Main;2;Rest;1"}),
                    {("changes", "tabs", "parameter gone")}, False),
    "input gone": (lambda n: say(n, "linkable", False, "gain"), {("breaks", None, "input gone")}, True),
    "outputs": (lambda n: n.update(output="float"),
                {("breaks", None, "output gone"), ("adds", None, "output added")}, True),
    "category": (lambda n: say(n, "houdini.category", "Tests"), {("changes", None, "tab menu")}, False),
    "type label": (lambda n: say(n, "houdini.label", "Gauge"), {("changes", None, "label")}, False),
}


class Diff(KshopCase):
    def described(self, name, *nodes):
        text = self.output_of("describe", "--json", KORVAN_CATALOGUE=self.catalogue(*nodes))
        return self.write(name, text)

    def compared(self, old, new):
        """Exit status and differences of two lists of nodes."""
        run = self.run_kshop("diff", "--json", self.described("old.json", *old), self.described("new.json", *new))
        self.assertEqual(run.stderr, "")
        return run.returncode, json.loads(run.stdout)["differences"]

    def changed(self, edit):
        node = copy.deepcopy(PROBE)
        edit(node)
        return node

    def felt(self, scene, *nodes):
        script = self.write("load.py", LOAD)
        run = self.run_kshop("python", script, scene, KORVAN_CATALOGUE=self.catalogue(*nodes))
        self.assertEqual(run.returncode, 0, run.stderr)
        return run.stdout

    def test_says_what_changed_and_whether_scenes_feel_it(self):
        scene = self.scratch / "scene.hip"
        self.output_of("python", self.write("save.py", SAVE), scene, KORVAN_CATALOGUE=self.catalogue(PROBE, SOURCE))
        before = self.felt(scene, PROBE, SOURCE)
        self.assertEqual(json.loads(before)["gain"], 7.25)
        self.assertEqual(json.loads(before)["wire to target"], ["probe", "target", "tint", "rgb"])
        for name, (edit, expected, isFelt) in CASES.items():
            with self.subTest(name):
                node = self.changed(edit)
                status, differences = self.compared([PROBE, SOURCE], [node, SOURCE])
                said = {(d["severity"], d["parameter"], d["what"]) for d in differences}
                self.assertLessEqual(expected, said)
                self.assertEqual(bool(said), bool(expected))
                breaks = any(severity == "breaks" for severity, _, _ in said)
                self.assertEqual(status, 1 if breaks else 0, said)
                if isFelt is not None:
                    after = self.felt(scene, node, SOURCE)
                    self.assertEqual(after != before, isFelt, after)
                    self.assertEqual(breaks, isFelt, said)

    def test_tells_types_that_are_gone_new_and_perhaps_renamed(self):
        renamed = dict(SOURCE, name="zelk__spring", metadata=[{"key": "houdini.label", "value": "Source"}])
        status, differences = self.compared([PROBE, SOURCE], [renamed, dict(SOURCE, name="zelk__other")])
        self.assertEqual(status, 1)
        self.assertEqual([(d["severity"], d["type"], d["what"], d["old"], d["new"]) for d in differences],
                         [("breaks", "korvan::probe", "type gone", "korvan::probe", None),
                          ("breaks", "korvan::source", "type renamed?", "korvan::source", "korvan::spring"),
                          ("adds", "korvan::other", "type added", None, "korvan::other")])

    def test_gives_each_difference_with_the_documented_keys(self):
        _, [difference] = self.compared([PROBE], [self.changed(CASES["default"][0])])
        self.assertEqual(difference, {
            "severity": "changes", "table": "Vop", "type": "korvan::probe", "parameter": "gain", "what": "default",
            "old": [{"value": 0.5, "string": None, "meaning": 0}], "new": [{"value": 0.75, "string": None, "meaning": 0}],
            "effect": "Saved nodes keep their own values, set or not; new nodes start with the new default."})
        self.assertEqual(list(difference), ["severity", "table", "type", "parameter", "what", "old", "new", "effect"])

    def test_tells_what_becomes_of_a_wire_whose_connector_is_gone(self):
        _, differences = self.compared([PROBE], [self.changed(lambda n: remove(n, "gain"))])
        [gone] = [d for d in differences if d["what"] == "input gone"]
        self.assertEqual(gone["old"]["name"], "gain")
        self.assertIn("go to 'tint', which has its number now", gone["effect"])

    def edited(self, edit_old, edit_new):
        """Text and status for two descriptions of the probe, each changed by hand where metadata cannot."""
        files = []
        for name, edit in (("first.json", edit_old), ("second.json", edit_new)):
            document = json.loads(self.described("plain.json", PROBE).read_text())
            edit(next(o for o in document["tables"]["Vop"] if o["name"] == "korvan::probe"))
            files.append(self.write(name, json.dumps(document)))
        run = self.run_kshop("diff", *files)
        self.assertEqual(run.stderr, "")
        return run.stdout, run.returncode

    def template(self, operator, token):
        return next(t for t in operator["templates"] if t["token"] == token)

    def test_knows_a_menu_that_is_stored_by_number(self):
        def old(operator):
            self.template(operator, "mode")["type"] = "PRM_ORD"

        def new(operator):
            old(operator)
            self.template(operator, "mode")["menu"]["items"].reverse()
        text, status = self.edited(old, new)
        self.assertEqual(status, 1)
        self.assertIn('breaks   mode: menu item moved: {"index":0,"token":"one"} -> {"index":2,"token":"one"}', text)

    def test_knows_a_menu_that_only_helps_to_fill_a_text_field(self):
        def old(operator):
            self.template(operator, "mode")["menu"]["type"] = 1

        def new(operator):
            old(operator)
            del self.template(operator, "mode")["menu"]["items"][0]
        text, status = self.edited(old, new)
        self.assertEqual(status, 0)
        self.assertIn('changes  mode: menu item gone: "one"', text)

    def test_counts_the_first_of_several_parameters_with_one_token_as_the_host_does(self):
        def old(operator):
            operator["templates"].append(dict(self.template(operator, "gain"), label="Another"))

        def new(operator):
            operator["templates"].append(dict(self.template(operator, "path"), token="gain"))
        self.assertEqual(self.edited(old, new), ("No differences.\n", 0))

    def test_guesses_that_a_connector_was_renamed(self):
        text, status = self.edited(lambda o: None, lambda o: o["outputs"][1].update(name="red"))
        self.assertEqual(status, 1)
        self.assertIn('breaks   output renamed?: 1 "r" -> 1 "red"', text)
        self.assertIn("Wires of saved scenes go to 'red', which has its number now", text)

    def test_shows_a_person_the_differences_of_each_type_and_counts_them(self):
        old = self.described("old.json", PROBE, SOURCE)
        new = self.described("new.json", self.changed(CASES["parameter renamed"][0]), SOURCE)
        run = self.run_kshop("diff", old, new)
        self.assertEqual((run.returncode, run.stderr), (1, ""))
        self.assertEqual(run.stdout.count("Vop korvan::probe\n"), 1)
        self.assertIn('  breaks   path: parameter renamed?: "path" -> "file"\n', run.stdout)
        self.assertRegex(run.stdout, r"\d+ differences: \d+ could break a scene, \d+ an artist sees, \d+ new\.\n$")
        self.assertEqual(self.output_of("diff", old, old), "No differences.\n")

    def test_reads_one_of_the_two_from_standard_input(self):
        old = self.described("old.json", PROBE)
        self.assertEqual(self.output_of("diff", old, "-", stdin=old.read_text()), "No differences.\n")

    def test_names_file_place_and_remedy_when_it_cannot_compare_and_ends_with_2(self):
        good = self.described("good.json", PROBE)
        document = json.loads(good.read_text())
        place = next(i for i, o in enumerate(document["tables"]["Vop"]) if o["name"] == "korvan::probe")
        del document["tables"]["Vop"][place]["templates"][0]["size"]
        wrong = json.loads(good.read_text())
        wrong["tables"]["Vop"][0]["inputs"][0]["type"] = "x"
        remedy = "Make it with 'kshop describe --json'."
        cases = {
            "missing.json": (None, "cannot be read: No such file or directory. Check the path and its permissions."),
            "broken.json": ('{"tables":\n  {"Vop": [}', "broken.json:2:12: this is no JSON. " + remedy),
            "list.json": ("[]", "list.json: the document is no object. " + remedy),
            "field.json": (json.dumps(document), f'tables.Vop[{place}].templates[0] has no "size". ' + remedy),
            "type.json": (json.dumps(wrong), "tables.Vop[0].inputs[0].type must be a whole number. " + remedy),
            "number.json": ('{"tables": {"Vop": 1e999}}', "number.json: number overflow parsing '1e999'. " + remedy),
            "deep.json": ("[" * 100000, "this is no JSON"),
        }
        for name, (text, sentence) in cases.items():
            with self.subTest(name):
                file = self.scratch / name if text is None else self.write(name, text)
                for pair in ((file, good), (good, file)):
                    self.assertIn(sentence, self.failure_of("diff", *pair, status=2))
        self.assertIn("Is a directory", self.failure_of("diff", self.scratch, good, status=2))

    def test_says_how_it_is_used_when_a_file_is_missing_on_the_command_line(self):
        self.assertIn("NEW is required", self.failure_of("diff", "old.json", status=2))


if __name__ == "__main__":
    unittest.main()
