"""docs/shader-writers.md: each metadata key has an example that lints clean, and a picture; the walk leads where it says."""

import json
import pathlib
import re
import unittest

from lint_case import LintCase

ROOT = pathlib.Path(__file__).parents[2]
DOCS = ROOT / "docs"
PAGE = DOCS / "shader-writers.md"
PICTURES = DOCS / "images" / "keys"
LARGEST = 15 * 1024  # bytes of a picture

CHAPTER = re.compile(r"^## (.*?)\n(.*?)(?=^## |\Z)", re.MULTILINE | re.DOTALL)
SECTION = re.compile(r"^### (.*?)\n(.*?)(?=^### |\Z)", re.MULTILINE | re.DOTALL)
EXAMPLE = re.compile(r"^<!-- picture: ([\w-]+)[^\n]*? -->\n```toml\n(.*?)^```\n!\[([^\]]+)\]\(images/keys/([\w-]+)\.png\)$",
                     re.MULTILINE | re.DOTALL)
BLOCK = re.compile(r"^```(toml|json)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
QUOTED = re.compile(r"`([^`]+)`")

# The tables that say what there is.
KNOWN_KEY = re.compile(r'\{KeyOwner::(\w+), "([a-z_.]+)"')
OWNERS = {"Shader": "Keys of a shader", "Parameter": "Keys of a parameter", "Extra": "Sub-keys of extra parameters"}


def rows_of(heading):
    """What stands in the first column of the first table under a heading of the reference, without the quotes."""
    text = dict(CHAPTER.findall((DOCS / "metadata.md").read_text(encoding="utf-8")))[heading]
    table = text[text.index("\n|---"):].split("\n\n")[0]
    return re.findall(r"^\| `([^`]+)` \|", table, re.MULTILINE)


def keys_of(owner):
    source = (ROOT / "tools" / "kshop" / "lint" / "known_keys.cpp").read_text(encoding="utf-8")
    return [name for who, name in KNOWN_KEY.findall(source) if who == owner]


class Guide(LintCase):
    def setUp(self):
        super().setUp()
        self.text = PAGE.read_text(encoding="utf-8")
        self.chapters = dict(CHAPTER.findall(self.text))
        self.demo = json.loads((DOCS / "guide" / "demo.json").read_text(encoding="utf-8"))["nodes"]

    def sections(self, chapter):
        """The text of each section of a chapter, by what its heading quotes; a heading may quote several."""
        return {name: text for heading, text in SECTION.findall(self.chapters[chapter])
                for name in QUOTED.findall(heading)}

    def shaders_of(self, example):
        """The shaders that an example names, with the parameters that it names."""
        def named(thing):
            return re.search(r"\b%s\b" % thing["name"], example)
        return [dict(node, parameters=[p for p in node["parameters"] if named(p)]) for node in self.demo if named(node)]

    def assert_covers(self, chapter, names, spelling):
        sections = self.sections(chapter)
        self.assertEqual(list(sections), names)
        for name, text in sections.items():
            with self.subTest(name):
                [(_, example, _, _)] = EXAMPLE.findall(text)
                self.assertRegex(example, spelling(name))

    def test_has_an_example_of_each_key(self):
        for owner, chapter in OWNERS.items():
            dot = r"\." if owner == "Extra" else r'^"?'
            names = keys_of(owner)
            self.assertTrue(names)
            self.assert_covers(chapter, names, lambda name: r'(?m)%s%s"? = ' % (dot, re.escape(name)))

    def test_has_an_example_of_each_form_of_a_field(self):
        def spelling(form):
            return re.escape(form).replace("WORD", r"\w+").replace("PATTERN", r"\*\.\w+").replace("FILTER", "!!OBJ!!") + '"'
        self.assert_covers("Forms of `houdini.type`", rows_of("`houdini.type`"), spelling)

    def test_has_an_example_of_each_extra_parameter(self):
        self.assert_covers("Extra parameters", rows_of("Extra parameters"),
                           lambda kind: r'"houdini\.parm\.%s\.\w+" = ' % kind)

    def test_has_examples_that_lint_clean_and_make_their_types(self):
        examples = EXAMPLE.findall(self.text)
        self.assertGreater(len(examples), 40)
        for name, example, _, _ in examples:
            with self.subTest(name):
                shaders = self.shaders_of(example)
                left = [f for f in self.lint(example, *shaders) if f["severity"] != "advice"]
                self.assertEqual(left, [])
                skipped = '"zelk__rust_core"' in example
                self.assertEqual(len(shaders), 2 if skipped else 1)
                self.assertEqual(self.describe(example, *shaders, type="korvan::rust")["name"], "korvan::rust")

    def test_would_notice_an_example_that_is_wrong(self):
        example = '["zelk__rust".parameters.amount]\nmin = 1\nmax = 0\n'
        self.assertIn("error", {f["severity"] for f in self.lint(example, *self.shaders_of(example))})

    def test_shows_the_picture_of_each_example_and_no_other_is_kept(self):
        named = [name for name, _, _, shown in EXAMPLE.findall(self.text) if self.assertEqual(name, shown) is None]
        self.assertEqual(self.text.count("<!-- picture:"), len(named))
        self.assertEqual(sorted(named + ["ten-minutes"]), sorted(file.stem for file in PICTURES.iterdir()))
        for file in PICTURES.iterdir():
            with self.subTest(file.name):
                self.assertIn("](images/keys/%s)" % file.name, self.text)
                self.assertEqual(file.read_bytes()[:8], b"\x89PNG\r\n\x1a\n")
                self.assertLess(file.stat().st_size, LARGEST)

    def test_walks_to_a_shader_that_lints_clean_with_tabs_a_ramp_and_a_condition(self):
        blocks = BLOCK.findall(self.chapters["Ten minutes"])
        [catalogue] = [json.loads(text)["nodes"] for kind, text in blocks if kind == "json"]
        first, into, condition = [text for kind, text in blocks if kind == "toml"]
        category, width = '"houdini.category" = "Texture"\n', "softmax = 2\n"
        self.assertEqual((first.count(category), first.count(width)), (1, 1))
        steps = [first, first.replace(category, category + into).replace(width, width + condition)]
        for metadata in steps:
            self.assertEqual([f for f in self.lint(metadata, *catalogue) if f["severity"] != "advice"], [])
        self.assertEqual(self.lint(steps[1], *catalogue), [])
        templates = self.describe(steps[1], *catalogue, type="korvan::rust")["templates"]
        self.assertEqual([t["token"] for t in templates],
                         ["tabs", "amount", "stains", "edges", "edge_width", "scale"])
        self.assertEqual([(t["type"], t["disable_when"]) for t in templates if t["token"] in ("stains", "edge_width")],
                         [("PRM_MULTITYPE_RAMP_RGB", None), ("PRM_FLT", "{ edges == 0 }")])
        mistaken = steps[1].replace("Look;4", "Look;5")
        self.assertNotEqual([f for f in self.lint(mistaken, *catalogue) if f["severity"] == "error"], [])


if __name__ == "__main__":
    unittest.main()
