"""docs/metadata.md: every example loads without a complaint and makes a node type."""

import json
import pathlib
import re
import tomllib
import unittest

from kshop_case import OUTPUTS, TREE, UTILITIES, KshopCase

DOCUMENT = pathlib.Path(__file__).parents[2] / "docs" / "metadata.md"
BLOCK = re.compile(r"^```toml\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def parameter_type(items):
    """The renderer type that an example's metadata is meant for."""
    kind = items.get("houdini.type", "")
    if kind == "visibility":
        return {"type": "int"}
    if kind:
        return {"type": "string"}
    if "houdini.menu" in items:
        return {"type": "enum", "enum": ["a", "b"]}
    return {"type": "float"}


def parameters_of(items):
    """What the shader of an example must declare: the parameters it has metadata for, and the arrays of its ramps."""
    found = {name: dict(parameter_type(own), name=name) for name, own in items.get("parameters", {}).items()}
    for key, value in items.items():
        if re.fullmatch(r"houdini\.parm\.ramp_(float|rgb)\.\w+", key):
            for name in value.split():
                found[name] = {"name": name, "type": "array", "element": "float", "default": [0, 1]}
    return list(found.values())


class Examples(KshopCase):
    def describe(self, block):
        """The messages and types that one example gives, where nobody but it says anything."""
        tables = tomllib.loads(block)
        nodes = [{"name": name, "kind": "shader", "output": "float", "parameters": parameters_of(items)}
                 for name, items in tables.items()]
        self.write("try/korvan/metadata/example.mtd", block)
        run = self.run_kshop("--dso", TREE / "dso" / "korvan_shop.so", "describe", "--json",
                             HOUDINI_PATH=self.scratch / "try", KORVAN_PLUGIN_PATH=self.catalogue_reader(),
                             KORVAN_CATALOGUE=self.catalogue(*nodes))
        self.assertEqual(run.returncode, 0, run.stderr)
        return json.loads(run.stdout), tables

    def catalogue_reader(self):
        """A directory with the catalogue reader alone, so that the shipped library stays out."""
        directory = self.scratch / "plugins"
        directory.mkdir(exist_ok=True)
        link = directory / "korvan_catalogue.so"
        if not link.exists():
            link.symlink_to(TREE / "korvan" / "plugins" / "korvan_catalogue.so")
        return directory

    def test_are_there(self):
        self.assertGreaterEqual(len(BLOCK.findall(DOCUMENT.read_text(encoding="utf-8"))), 5)

    def test_load_without_a_complaint_and_make_their_types(self):
        for block in BLOCK.findall(DOCUMENT.read_text(encoding="utf-8")):
            with self.subTest(block.splitlines()[0]):
                described, tables = self.describe(block)
                self.assertEqual([m for m in described["messages"] if m["severity"] != "info"], [])
                self.assertEqual([o["name"] for o in described["tables"]["Vop"]],
                                 OUTPUTS + [name.replace("zelk__", "korvan::") for name in tables] + UTILITIES)

    def test_would_be_caught_if_they_were_wrong(self):
        described, _ = self.describe('["zelk__x"]\n"houdini.parm.folder.tabs" = "Main;2;Rest"\n')
        self.assertEqual([m["text"] for m in described["messages"] if m["severity"] == "error"],
                         ['[zelk::shop::ShaderDesc] Odd number of arguments (3) for folder "tabs"'])


if __name__ == "__main__":
    unittest.main()
