"""The schemas in docs/schemas hold what the program prints, and refuse what it never prints."""

import copy
import json
import os
import pathlib
import random
import re
import unittest

import jsonschema

from kshop_case import KshopCase
from kshop_diff_test import CASES, PROBE, SOURCE

ROOT = pathlib.Path(__file__).parents[2]
SCHEMAS = ROOT / "docs" / "schemas"

EDITS = """
network = hou.node("/shop").createNode("korvan_vopnet", "look")
for type in [t for t in hou.vopNodeTypeCategory().nodeTypes() if t.startswith("korvan::")]:
    node = network.createNode(type)
    for parm in node.parms():
        try:
            parm.set(parm.eval())
        except hou.Error:
            pass
"""


def validator(name):
    schema = json.loads((SCHEMAS / f"{name}.schema.json").read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    return jsonschema.Draft202012Validator(schema)


def random_node(dice, number):
    """A shader with parameters of any type and metadata that may be anything."""
    types = ("byte", "int", "uint", "boolean", "float", "rgb", "rgba", "vector", "point", "point2", "string", "node",
             "matrix", "enum", "array", "undefined")
    parameters = []
    for index in range(dice.randrange(12)):
        parameter = {"name": f"p{index}", "type": dice.choice(types)}
        if parameter["type"] == "enum":
            parameter["enum"] = ["a", "b", "ü"][:dice.randrange(1, 4)]
        if parameter["type"] == "array":
            parameter["element"] = dice.choice(("float", "int", "rgb", "string"))
        parameters.append(parameter)
    keys = ("min", "max", "softmin", "softmax", "desc", "linkable", "houdini.type", "houdini.label", "houdini.menu",
            "houdini.disable_when", "houdini.hide_when", "houdini.callback", "houdini.expression", "houdini.join_next",
            "houdini.no_label")
    values = (1.5, -2.0, 1e300, True, False, "python:1", "menu:python:x", "menu:replace:a;A;b;B", "{ p0 == 1 }", "", "colour")
    metadata = [{"key": "houdini.parm.folder.tabs", "value": "One;2;Two;1"}, {"key": "houdini.parm.ramp_rgb.ramp", "value": "a b c"}]
    for parameter in parameters:
        metadata += [{"parameter": parameter["name"], "key": dice.choice(keys), "value": dice.choice(values)}
                     for _ in range(dice.randrange(4))]
    return {"name": f"zelk__random_{number}", "kind": dice.choice(("shader", "camera")),
            "output": dice.choice(("float", "rgb", "rgba", "string", "matrix")), "parameters": parameters, "metadata": metadata}


def places(value, path=()):
    """Every object in a document, with the way to it."""
    if isinstance(value, dict):
        yield path
    for key, inner in value.items() if isinstance(value, dict) else enumerate(value) if isinstance(value, list) else ():
        yield from places(inner, path + (key,))


def at(value, path):
    for key in path:
        value = value[key]
    return value


class Schemas(KshopCase):
    def assert_valid(self, name, document):
        errors = [f"{list(e.absolute_path)}: {e.message}" for e in validator(name).iter_errors(document)]
        self.assertEqual(errors, [])

    def assert_each_key_counts(self, name, document, free=()):
        """One key too many or too few is refused, in whichever object of the document it is."""
        check = validator(name)
        for path in places(document):
            if free and path and path[-1] in free:
                continue
            with self.subTest(path):
                more = copy.deepcopy(document)
                at(more, path)["surplus"] = 1
                self.assertFalse(check.is_valid(more))
                for key in at(document, path):
                    less = copy.deepcopy(document)
                    del at(less, path)[key]
                    self.assertFalse(check.is_valid(less), key)

    def test_hold_the_description_of_the_shipped_library(self):
        document = self.json_of("describe")
        self.assert_valid("describe", document)
        self.assertGreater(len(document["tables"]["Vop"]), 20)

    def test_hold_the_description_of_a_catalogue_that_is_made_at_random(self):
        seed = int(os.environ.get("KORVAN_SCHEMA_SEED", random.randrange(1 << 30)))
        print(f"KORVAN_SCHEMA_SEED={seed}")
        dice = random.Random(seed)
        nodes = [random_node(dice, n) for n in range(40)]
        run = self.run_kshop("describe", "--json", KORVAN_CATALOGUE=self.catalogue(*nodes))
        self.assertEqual(run.returncode, 0, run.stderr)
        document = json.loads(run.stdout)
        self.assert_valid("describe", document)
        self.assertTrue(any(o["name"] == "korvan::random_0" for o in document["tables"]["Vop"]))

    def test_refuse_a_description_with_a_key_too_many_or_too_few(self):
        document = self.json_of("describe", "korvan::probe", KORVAN_CATALOGUE=self.catalogue(PROBE))
        self.assert_each_key_counts("describe", document, free=("spare",))

    def test_refuse_a_description_with_a_value_of_another_kind(self):
        document = self.json_of("describe", "korvan::probe", KORVAN_CATALOGUE=self.catalogue(PROBE))
        for path, wrong in ((("tables", "Vop", 0, "name"), 1), (("tables", "Vop", 0, "inputs", 0, "type"), "3"),
                            (("tables", "Vop", 0, "templates", 1, "type"), "float"),
                            (("tables", "Vop", 0, "templates", 1, "range", "min_flag"), 9),
                            (("messages", 0, "severity"), "fatal")):
            with self.subTest(path):
                broken = copy.deepcopy(document)
                at(broken, path[:-1])[path[-1]] = wrong
                self.assertFalse(validator("describe").is_valid(broken))

    def records(self):
        script = self.write("edits.py", EDITS)
        self.output_of("python", "--deltas", self.scratch / "deltas", script, KORVAN_CATALOGUE=self.catalogue(PROBE))
        return [json.loads(line) for line in (self.scratch / "deltas").read_text(encoding="utf-8").splitlines()]

    def test_hold_every_record_that_edits_of_all_types_send(self):
        records = self.records()
        types = {p["type"] for r in records for p in r["parms"].values()}
        self.assertGreaterEqual(types, {1, 3, 4, 5, 10, 13, 15})
        for record in records:
            self.assert_valid("listen", record)

    def test_refuse_records_whose_value_is_not_of_their_type(self):
        good = {"node_path": "/shop/a", "entry_name": "e", "parms": {"x": {"type": 5, "value": [1, 2, None]}}}
        self.assert_valid("listen", good)
        self.assert_each_key_counts("listen", good, free=("parms",))
        for code, value in ((0, 1.5), (3, 1), (4, "1"), (5, [1, 2]), (6, [1, 2, 3]), (9, [1]), (10, 1), (13, [1]), (14, []),
                            (13, {"element_type": 4, "values": [], "key_count": 1}), (15, 0), (256, "x")):
            with self.subTest(code=code, value=value):
                bad = dict(good, parms={"x": {"type": code, "value": value}})
                self.assertFalse(validator("listen").is_valid(bad))

    def differences(self):
        found = []
        old = self.write("old.json", self.output_of("describe", "--json", KORVAN_CATALOGUE=self.catalogue(PROBE, SOURCE)))
        for edit, _, _ in CASES.values():
            node = copy.deepcopy(PROBE)
            edit(node)
            text = self.output_of("describe", "--json", KORVAN_CATALOGUE=self.catalogue(node))
            run = self.run_kshop("diff", "--json", old, self.write("new.json", text))
            found.append(json.loads(run.stdout))
        return found

    def test_hold_differences_of_every_sort(self):
        documents = self.differences()
        for document in documents:
            self.assert_valid("diff", document)
        said = {d["what"] for document in documents for d in document["differences"]}
        self.assertGreater(len(said), 25, said)
        first = {"differences": documents[0]["differences"][:1]}
        self.assert_each_key_counts("diff", first)
        first["differences"][0]["what"] = "something"
        self.assertFalse(validator("diff").is_valid(first))

    def test_name_every_word_that_a_difference_can_be(self):
        schema = validator("diff").schema["properties"]["differences"]["items"]["properties"]["what"]["enum"]
        sources = "".join(f.read_text(encoding="utf-8") for f in sorted((ROOT / "tools/kshop/diff").glob("*.cpp")))
        self.assertEqual([word for word in schema if f'"{word}"' not in sources], [])
        texts = set(re.findall(r'"((?:[a-z]+ )*[a-z]+\??)"', sources))
        unlisted = {t for t in texts if re.search(r" (gone|added|moved|renamed\?|label|type|order)$", t)} - set(schema)
        self.assertEqual(unlisted, set())


if __name__ == "__main__":
    unittest.main()
