"""The whole road of an edit: hou in one process, the plug-in, the socket, a render in another process."""

import concurrent.futures
import json
import struct
import unittest

from record_case import RecordCase

MATRIX = [float(i) for i in range(16)]

# By type: the type's code, its further keys in a catalogue, how hou sets it, and the value that the record has.
TYPES = {
    "byte": (0, {}, "parm('p').set(200)", 200),
    "int": (1, {}, "parm('p').set(-7)", -7),
    "uint": (2, {}, "parm('p').set(7)", 7),
    "boolean": (3, {}, "parm('p').set(True)", True),
    "float": (4, {}, "parm('p').set(0.1)", 0.1),
    "rgb": (5, {}, "parm('pg').set(0.3)", [0.0, 0.3, 0.0]),
    "rgba": (6, {}, "parm('pa').set(0.7)", [0.0, 0.0, 0.0, 0.7]),
    "vector": (7, {}, "parm('px').set(-0.1)", [-0.1, 0.0, 0.0]),
    "point": (8, {}, "parm('pz').set(1e9)", [0.0, 0.0, 1e9]),
    "point2": (9, {}, "parm('p2').set(0.2)", [0.0, 0.2]),
    "string": (10, {}, "parm('p').set('wood.$F.tx')", "wood.1.tx"),
    "node": (12, {}, "parm('p').set('/obj/cam1')", "/obj/cam1"),
    "matrix": (14, {}, "parmTuple('p').set(range(16))", [MATRIX[4 * c + r] for r in range(4) for c in range(4)]),
    "enum": (15, {"enum": ["one", "two"]}, "parm('p').set('two')", "two"),
    "array": (4, {"element": "float"}, "parm('p').set(3)", 3.0),
}


def single(value):
    """The value as single precision holds it."""
    if isinstance(value, list):
        return [single(v) for v in value]
    return struct.unpack("f", struct.pack("f", value))[0] if isinstance(value, float) else value


def shader(name, type_name, **keys):
    return {"name": name, "kind": "shader", "output": "rgb", "parameters": [{"name": "p", "type": type_name, **keys}]}


class LiveEdits(RecordCase):
    def edit(self, script, *nodes):
        """Runs a script; the records that it handed over."""
        deltas = self.scratch / "deltas.json"
        self.output_of("python", "--deltas", deltas, self.write("edit.py", "import hou\n" + script),
                       KORVAN_CATALOGUE=self.catalogue(*nodes))
        return [json.loads(line) for line in deltas.read_text(encoding="utf-8").splitlines()]

    def test_every_type_arrives_as_it_was_sent_and_as_its_table_says(self):
        nodes = [shader(f"zelk__of_{name}", name, **keys) for name, (_, keys, _, _) in TYPES.items()]
        script = "net = hou.node('/shop').createNode('korvan_vopnet', 'net')\n"
        for name, (_, _, edit, _) in TYPES.items():
            script += f"net.createNode('korvan::of_{name}', '{name}').{edit}\n"
        render = self.listening("--json")
        handed = self.edit(script, *nodes)
        heard = [json.loads(render.line()) for _ in handed]
        self.assertEqual(heard, handed)
        for name, (code, _, _, value) in TYPES.items():
            with self.subTest(name):
                last = [r for r in heard if r["node_path"] == f"/shop/net/{name}"][-1]
                self.assertEqual(last, {"node_path": f"/shop/net/{name}", "entry_name": f"zelk__of_{name}",
                                        "parms": {"p": {"type": code, "value": single(value)}}})

    def test_a_thousand_changes_of_a_float_arrive_in_order(self):
        render = self.listening("--json", "--count", 1000)
        with concurrent.futures.ThreadPoolExecutor() as pool:
            heard = pool.submit(self.heard_by, render)  # a pipe does not hold them all
            self.edit("parm = hou.node('/shop').createNode('korvan_vopnet').createNode('korvan::s').parm('p')\n"
                      "for i in range(1000):\n    parm.set(i)\n", shader("zelk__s", "float"))
        self.assertEqual([r["parms"]["p"]["value"] for r in heard.result()], list(map(float, range(1000))))

    def test_a_camera_shader_is_addressed_to_its_cameras(self):
        lens = {"name": "lens", "kind": "camera", "output": "node", "parameters": [{"name": "p", "type": "float"}]}
        script = ("net = hou.node('/shop').createNode('korvan_vopnet', 'net')\n"
                  "lens = net.createNode('korvan::lens', 'c10')\n"
                  "sink = net.createNode('null')\n"
                  "def camera(path):\n"
                  "    cam = hou.node('/obj').createNode('cam')\n"
                  "    cam.addSpareParmTuple(hou.StringParmTemplate('kv_camera_shader', 'Shader', 1))\n"
                  "    cam.parm('kv_camera_shader').set(path)\n"
                  "lens.parm('p').set(1)\n"                      # not wired, no camera
                  "sink.setInput(0, lens)\n"
                  "lens.parm('p').set(2)\n"                      # no camera
                  "for path in ('/shop/net/c10', '/shop/net/c1', '', '/shop/net2'): camera(path)\n"
                  "lens.parm('p').set(3)\n"
                  "sink.setInput(0, None)\n"
                  "lens.parm('p').set(4)\n")                     # not wired any more
        records = self.edit(script, lens)
        self.assertEqual([(r["node_path"], r["parms"]["p"]["value"]) for r in records],
                         [("/obj/cam1", 3.0), ("/obj/cam2", 3.0), ("/obj/cam3", 3.0)])

    def test_what_a_callback_changes_and_undo_takes_back_is_sent(self):
        node = {"name": "zelk__s", "kind": "shader", "output": "rgb",
                "parameters": [{"name": "a", "type": "float"}, {"name": "b", "type": "float"}],
                "metadata": [{"parameter": "a", "key": "houdini.callback",
                              "value": "python:kwargs['node'].parm('b').set(2 * float(kwargs['script_value']))"}]}
        records = self.edit("node = hou.node('/shop').createNode('korvan_vopnet').createNode('korvan::s')\n"
                            "node.parm('a').set(1.5)\n"
                            "node.parm('a').pressButton()\n"
                            "assert hou.undos.undoLabels()[0] == 'Parameter Callback', hou.undos.undoLabels()\n"
                            "hou.undos.performUndo()\n", node)
        self.assertEqual([{k: v["value"] for k, v in r["parms"].items()} for r in records],
                         [{"a": 1.5}, {"b": 3.0}, {"b": 0.0}])

    def test_a_failing_callback_is_reported_and_the_script_goes_on(self):
        node = {"name": "zelk__s", "kind": "shader", "output": "rgb", "parameters": [{"name": "a", "type": "float"}],
                "metadata": [{"key": "houdini.parm.button.py", "value": "python:1 / 0"},
                             {"key": "houdini.parm.button.hs", "value": "hscript:nonsense"}]}
        script = self.write("press.py", "import hou\n"
                            "node = hou.node('/shop').createNode('korvan_vopnet').createNode('korvan::s')\n"
                            "node.parm('py').pressButton()\nnode.parm('hs').pressButton()\nprint('went on')\n")
        run = self.run_kshop("python", script, KORVAN_CATALOGUE=self.catalogue(node))
        self.assertEqual((run.returncode, run.stdout), (0, "went on\n"))
        self.assertIn("Error running callback:\n", run.stderr)
        self.assertIn("ZeroDivisionError: division by zero", run.stderr)
        self.assertIn('unknown command "nonsense"', run.stderr)

    def test_an_expression_without_a_value_sends_zero_and_the_node_says_why(self):
        records = self.edit("parm = hou.node('/shop').createNode('korvan_vopnet').createNode('korvan::s').parm('p')\n"
                            "parm.setExpression('nonsense(1)')\n"
                            "assert any('nonsense' in e for e in parm.node().errors()), parm.node().errors()\n",
                            shader("zelk__s", "float"))
        self.assertEqual([r["parms"]["p"]["value"] for r in records], [0.0])


if __name__ == "__main__":
    unittest.main()
