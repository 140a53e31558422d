"""Base of the tests of kshop lint: shaders of a catalogue, a metadata file, and what is found in it."""

import json

from kshop_case import TREE, KshopCase

SHADER = "zelk__x"

# One parameter of each kind that the rules tell apart.
PARAMETERS = [
    {"name": "f", "type": "float", "default": 0.5},
    {"name": "g", "type": "float", "default": 0.5},
    {"name": "i", "type": "int", "default": 1},
    {"name": "u", "type": "uint", "default": 1},
    {"name": "b", "type": "byte", "default": 1},
    {"name": "t", "type": "boolean", "default": False},
    {"name": "c", "type": "rgb", "default": [0, 0, 1]},
    {"name": "s", "type": "string", "default": "one"},
    {"name": "e", "type": "enum", "enum": ["one", "two"], "default": 0},
]
ARRAYS = [
    {"name": "pos", "type": "array", "element": "float", "default": [0, 1]},
    {"name": "val", "type": "array", "element": "float", "default": [0, 1]},
    {"name": "col", "type": "array", "element": "rgb", "default": [[0, 0, 0], [1, 1, 1]]},
    {"name": "interp", "type": "array", "element": "int", "default": [0, 0]},
]

# What every shader without labels, helps and folders is told.
ALWAYS = {"no-label", "no-help", "no-folder", "default-slider"}


def shader(*parameters, name=SHADER, **more):
    return dict({"name": name, "kind": "shader", "output": "rgb", "parameters": list(parameters)}, **more)


USUAL = shader(*PARAMETERS)


def table(*lines):
    """Metadata of the shader itself; the first line given is line 2."""
    return "\n".join(['["%s"]' % SHADER, *lines]) + "\n"


def parameter(name, *lines):
    """Metadata of one parameter; the first line given is line 2."""
    return "\n".join(['["%s".parameters.%s]' % (SHADER, name), *lines]) + "\n"


class LintCase(KshopCase):
    def surroundings(self, *nodes):
        """Options of a run that sees these shaders and the metadata directory of the scratch alone."""
        directory = self.scratch / "plugins"
        directory.mkdir(exist_ok=True)
        link = directory / "korvan_catalogue.so"
        if not link.exists():
            link.symlink_to(TREE / "korvan" / "plugins" / "korvan_catalogue.so")
        (self.scratch / "try" / "korvan" / "metadata").mkdir(parents=True, exist_ok=True)
        return {"HOUDINI_PATH": self.scratch / "try", "KORVAN_PLUGIN_PATH": directory,
                "KORVAN_CATALOGUE": self.catalogue(*nodes)}

    def plugin(self):
        return ("--dso", TREE / "dso" / "korvan_shop.so")

    def metadata(self, text, name="x.mtd"):
        return self.write("try/korvan/metadata/" + name, text)

    def run_lint(self, *arguments, nodes=(USUAL,), **changes):
        return self.run_kshop(*self.plugin(), "lint", *arguments, **dict(self.surroundings(*nodes), **changes))

    def lint(self, text, *nodes):
        """What is found in a metadata file about these shaders."""
        surroundings = self.surroundings(*(nodes or (USUAL,)))
        self.metadata(text)
        run = self.run_kshop(*self.plugin(), "lint", "--json", **surroundings)
        self.assertLessEqual({line.split(":")[0] for line in run.stderr.splitlines()}, {"Error"}, run.stderr)
        findings = json.loads(run.stdout)["findings"]
        self.assertEqual(run.returncode, int(any(f["severity"] == "error" for f in findings)), findings)
        return findings

    def describe(self, text, *nodes, type="korvan::x"):
        """What the plug-in makes of the same."""
        surroundings = self.surroundings(*(nodes or (USUAL,)))
        self.metadata(text)
        run = self.run_kshop(*self.plugin(), "describe", "--json", type, **surroundings)
        self.assertEqual(run.returncode, 0, run.stderr)
        described = json.loads(run.stdout)
        return described["tables"]["Vop"][0]

    def template(self, text, token, *nodes):
        found = [t for t in self.describe(text, *nodes)["templates"] if t["token"] == token]
        self.assertEqual(len(found), 1, token)
        return found[0]

    def found(self, rule, text, *nodes):
        return [f for f in self.lint(text, *nodes) if f["rule"] == rule]

    def assert_found(self, rule, text, *nodes, at=(2, 1), parameter=None, shader=SHADER, message=None, severity=None):
        """One finding of the rule; gives it."""
        found = self.found(rule, text, *nodes)
        self.assertEqual(len(found), 1, (rule, found))
        finding = found[0]
        self.assertEqual((finding["line"], finding["column"]), at, finding)
        self.assertEqual((finding["shader"], finding["parameter"]), (shader, parameter), finding)
        self.assertTrue(finding["file"].endswith("x.mtd"), finding)
        self.assertTrue(finding["effect"].endswith(".") and finding["remedy"].endswith("."), finding)
        if message is not None:
            self.assertEqual(finding["message"], message)
        if severity is not None:
            self.assertEqual(finding["severity"], severity)
        return finding

    def assert_silent(self, text, *nodes, rule=None):
        """Nothing is found but what every bare shader is told; with a rule, nothing of that rule either."""
        kept = [f for f in self.lint(text, *nodes) if f["rule"] not in ALWAYS or f["rule"] == rule]
        self.assertEqual(kept, [])
