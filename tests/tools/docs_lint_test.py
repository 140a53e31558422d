"""docs/lint.md: each rule has its section, each section its rule, and the examples are what they say."""

import json
import pathlib
import re
import unittest

from lint_case import LintCase

DOCUMENT = pathlib.Path(__file__).parents[2] / "docs" / "lint.md"
SECTION = re.compile(r"^### ([a-z-]+) \(([a-z]+)\)\n(.*?)(?=^##|\Z)", re.MULTILINE | re.DOTALL)
EXAMPLE = re.compile(r"^```toml\n# (bad|good)\n(.*?)^```$", re.MULTILINE | re.DOTALL)

# Mistakes that are not in a metadata file.
ELSEWHERE = {"unreadable-file", "renderer-plugin", "type-name"}
# The good example shows two parameters of many.
FOR_EACH = {"no-label", "no-help"}

GLOW = {"name": "zelk__glow", "kind": "shader", "output": "rgb", "parameters": [
    {"name": "color", "type": "rgb", "default": [1, 1, 1]},
    {"name": "strength", "type": "float", "default": 1},
    {"name": "samples", "type": "int", "default": 4},
    {"name": "seed", "type": "uint", "default": 1},
    {"name": "bits", "type": "byte", "default": 8},
    {"name": "soft", "type": "boolean", "default": False},
    {"name": "mode", "type": "enum", "enum": ["add", "screen"], "default": 0},
    {"name": "pattern", "type": "string", "default": "stars"},
    {"name": "size", "type": "float", "default": 0.5},
    {"name": "positions", "type": "array", "element": "float", "default": [0, 1]},
    {"name": "values", "type": "array", "element": "float", "default": [0, 1]},
    {"name": "interpolations", "type": "array", "element": "int", "default": [0, 0]},
    {"name": "stops", "type": "array", "element": "rgb", "default": [[0, 0, 0], [1, 1, 1]]}]}


class Rules(LintCase):
    def setUp(self):
        super().setUp()
        self.sections = SECTION.findall(DOCUMENT.read_text(encoding="utf-8"))
        self.rules = json.loads(self.output_of("lint", "--rules", "--json"))["rules"]

    def test_have_their_sections_and_sections_their_rules(self):
        self.assertEqual([(rule, severity) for rule, severity, text in self.sections],
                         [(rule["rule"], rule["severity"]) for rule in self.rules])
        self.assertEqual(len({rule["rule"] for rule in self.rules}), len(self.rules))

    def test_are_listed_for_people_too(self):
        text = self.output_of("lint", "--rules")
        for rule in self.rules:
            self.assertRegex(text, rf"(?m)^{rule['rule']} +{rule['severity']} +{re.escape(rule['summary'])}$")

    def nodes(self, rule):
        """The shaders of an example."""
        kept = dict(GLOW, parameters=list(GLOW["parameters"]))
        if rule in FOR_EACH:
            kept["parameters"] = kept["parameters"][:2]
        if rule == "field-name":
            kept["parameters"].append({"name": "stops_1", "type": "int", "default": 1})
        return [kept]

    def test_have_a_bad_example_and_a_good_one(self):
        for rule, severity, text in self.sections:
            with self.subTest(rule):
                examples = dict(EXAMPLE.findall(text))
                if rule in ELSEWHERE:
                    self.assertEqual(examples, {})
                    continue
                self.assertNotEqual(self.found(rule, examples["bad"], *self.nodes(rule)), [])
                left = [f["rule"] for f in self.lint(examples["good"], *self.nodes(rule))
                        if f["severity"] == "error" or f["rule"] == rule]
                self.assertEqual(left, [])

    def test_have_a_test_each(self):
        tested = "".join(file.read_text(encoding="utf-8")
                         for file in pathlib.Path(__file__).parent.glob("kshop_lint*_test.py"))
        for rule in self.rules:
            self.assertIn(f'"{rule["rule"]}"', tested)


if __name__ == "__main__":
    unittest.main()
