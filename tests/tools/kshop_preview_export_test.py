"""kshop preview: what was edited can be copied out."""

import ast
import unittest

from preview_case import PreviewCase

TYPE = "korvan::try"

DUMP = """
print({p.name(): repr(p.eval()) for p in node.parms()})
print([(p.name(), p.expression(), p.expressionLanguage().name()) for p in node.parms()
       if p.name() in ("amount", "tintb")])
"""

READ = "python:print({p.name(): repr(p.eval()) for p in kwargs['node'].parms()})"


class Export(PreviewCase):
    def setUp(self):
        super().setUp()
        self.catalogue_file = self.shader(
            [{"name": "amount", "type": "float", "default": 0.5}, {"name": "tint", "type": "rgb", "default": [1, 1, 1]},
             {"name": "title", "type": "string", "default": ""}, {"name": "on", "type": "boolean", "default": False},
             {"name": "mode", "type": "enum", "enum": ["a", "b"], "default": 0},
             {"name": "shift", "type": "float", "default": 0},
             {"name": "knots", "type": "array", "element": "float", "default": [0, 1]},
             {"name": "positions", "type": "array", "element": "float", "default": [0, 1]},
             {"name": "values", "type": "array", "element": "float", "default": [0, 1]},
             {"name": "interps", "type": "array", "element": "int", "default": [1, 1]}],
            [("houdini.parm.button.read", READ), ("houdini.parm.toggle.extra", "off"),
             ("shift", "houdini.expression", "$F * 2"),
             ("houdini.parm.ramp_float.curve", "positions values interps")])
        self.page = self.preview(KORVAN_CATALOGUE=self.catalogue_file)

    def edit(self, action, **members):
        self.assertEqual(self.page.edit(TYPE, action, **members)["errors"], [], members)

    def edit_everything(self):
        self.edit("expression", channel="amount", text='ch("on") + 0.1', language="hscript")
        self.edit("set", token="tint", value=[0.1, 1 / 3, 1e-7])
        self.edit("expression", channel="tintb", text="1 if hou.parm('on').eval() else 2", language="python")
        self.edit("set", token="title", value='a"b\\c\n\u00e4\U0001f600 $HIP')
        self.edit("set", token="on", value=True)
        self.edit("set", token="mode", value="b")
        self.edit("set", token="extra", value=1)
        self.edit("set", token="shift", value=-7)
        self.edit("count", token="knots", count=3)
        self.edit("set", token="knots_3", value=2.5)
        self.edit("ramp", token="curve", keys=[{"position": 0, "value": 3, "interpolation": 2},
                                                {"position": 0.125, "value": -1, "interpolation": 0},
                                                {"position": 1, "value": 0.1, "interpolation": 6}])

    def read(self):
        return ast.literal_eval(self.page.edit(TYPE, "press", token="read")["console"])

    def test_the_script_makes_the_same_node_in_hou(self):
        self.edit_everything()
        text = self.page.get("export", type=TYPE, **{"as": "python"})["text"]
        script = self.write("again.py", text + DUMP)
        values, expressions = self.output_of("python", script, KORVAN_CATALOGUE=self.catalogue_file).splitlines()
        self.assertEqual(ast.literal_eval(values), self.read())
        self.assertEqual(ast.literal_eval(expressions), [("amount", 'ch("on") + 0.1', "Hscript"),
                                                         ("tintb", "1 if hou.parm('on').eval() else 2", "Python")])

    def test_only_what_differs_is_set(self):
        empty = ('import hou\n\nnetwork = hou.node("/shop").createNode("korvan_vopnet")\n'
                 'node = network.createNode("korvan::try")\n')
        self.assertEqual(self.page.get("export", type=TYPE, **{"as": "python"})["text"], empty)
        self.edit("set", token="tint", value=[0.1, 1, 1])
        self.edit("set", token="amount", value=0.25)
        self.assertEqual(self.page.get("export", type=TYPE, **{"as": "python"})["text"],
                         empty + 'node.parm("amount").set(0.25)\nnode.parmTuple("tint").set((0.1, 1, 1))\n')
        self.edit("reset_all")
        self.assertEqual(self.page.get("export", type=TYPE, **{"as": "python"})["text"], empty)

    def test_expressions_can_be_pasted_into_a_metadata_file(self):
        self.assertEqual(self.page.get("export", type=TYPE, **{"as": "mtd"})["text"],
                         "# Nothing differs from the defaults.\n")
        self.edit_everything()
        text = self.page.get("export", type=TYPE, **{"as": "mtd"})["text"]
        self.assertIn("# tint: 0.1 0.3333333333333333 the expression ", text)
        self.assertIn("# curve: 3 instances\n", text)
        self.write("path/korvan/metadata/try.mtd", text)
        page = self.preview(KORVAN_CATALOGUE=self.catalogue_file, HOUDINI_PATH="%s:&" % (self.scratch / "path"))
        self.assertEqual([m for m in page.get("state")["messages"] if m["severity"] == "error"], [])
        node = page.node(TYPE)
        (amount,) = [p for p in node["parms"] if p["token"] == "amount"]
        self.assertEqual((amount["expressions"][0]["text"], amount["changed"]), ('ch("on") + 0.1', False))

    def test_a_python_expression_keeps_its_language_in_a_metadata_file(self):
        self.edit("expression", channel="amount", text="0.5", language="python")
        self.assertIn('["zelk__try".parameters."amount"]\n"houdini.expression" = "python:0.5"\n',
                      self.page.get("export", type=TYPE, **{"as": "mtd"})["text"])


if __name__ == "__main__":
    unittest.main()
