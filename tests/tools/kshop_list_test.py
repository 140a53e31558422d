"""kshop list: what was registered, and why the rest was not."""

import json
import re
import unittest

from kshop_case import OUTPUTS, UTILITIES, KshopCase


def node(name, **more):
    return dict({"name": name, "kind": "shader", "output": "float", "parameters": [], "metadata": []}, **more)


class List(KshopCase):
    def reasons(self, *nodes):
        """Names and reasons, and what the host complained about meanwhile."""
        run = self.run_kshop("list", "--why", "--json", KORVAN_CATALOGUE=self.catalogue(*nodes))
        self.assertEqual(run.returncode, 0, run.stderr)
        listed = json.loads(run.stdout)["unregistered"]
        return {entry["name"]: entry["reason"] for entry in listed}, run.stderr

    def test_shows_at_least_twenty_shaders_and_the_container(self):
        listed = self.json_of("list")
        names = [o["name"] for o in listed["tables"]["Vop"]]
        self.assertGreaterEqual(len(names), 22 + len(OUTPUTS + UTILITIES))
        self.assertEqual(names[:4], OUTPUTS)
        self.assertEqual(names[-3:], UTILITIES)
        self.assertTrue(all(name.startswith("korvan::") for name in names[4:]), names)
        self.assertEqual([o["name"] for o in listed["tables"]["Shop"]], ["korvan_vopnet"])

    def test_counts_the_connectors_that_describe_shows(self):
        described = {o["name"]: o for o in self.json_of("describe")["tables"]["Vop"]}
        for listed in self.json_of("list")["tables"]["Vop"]:
            full = described[listed["name"]]
            self.assertEqual((listed["inputs"], listed["outputs"]), (len(full["inputs"]), len(full["outputs"])))

    def test_counts_the_types_of_each_category(self):
        text = self.output_of("list", KORVAN_CATALOGUE=self.catalogue(
            *(node(f"zelk__p{i}", metadata=[{"key": "houdini.category", "value": "Probes"}]) for i in range(3))))
        total = int(re.search(r"By category: (\d+) types", text).group(1))
        rows = re.findall(r"^  (.+?)  +(\d+)$", text.split("By category")[1], re.MULTILINE)
        self.assertEqual(dict(rows)["Probes"], "3")
        self.assertEqual(sum(int(count) for _, count in rows), total)

    def test_tells_why_an_entry_has_no_node_type(self):
        reasons, complaints = self.reasons(node("zelk__skipped", metadata=[{"key": "houdini.skip", "value": True}]),
                                           node("twin"), node("zelk__twin"))
        self.assertEqual(complaints.count('"korvan::twin" is already in the Vop table'), 1, complaints)
        self.assertEqual(reasons["zelk__skipped"], 'its metadata skips it ("houdini.skip" is true)')
        self.assertEqual(reasons["zelk__twin"],
                         "its type name korvan::twin is taken by the entry twin; rename one of them")
        self.assertEqual(reasons["persp_camera"],
                         "it is a camera built into the renderer; only cameras of plug-ins become node types")
        self.assertEqual(reasons["zelk__ramp_rgb"], 'its metadata skips it ("houdini.skip" is true)')
        self.assertTrue(any("neither a shader nor a camera" in reason for reason in reasons.values()))
        self.assertNotIn("twin", reasons)

    def test_tells_that_a_hand_written_type_stands_for_a_shader(self):
        reasons, complaints = self.reasons(node("ramp_rgb"))
        self.assertEqual(reasons["ramp_rgb"], "its type korvan::ramp_rgb is hand-written; set houdini.skip on the shader")
        self.assertIn("[vop_utility] Ignoring the renderer's shader korvan::ramp_rgb", complaints)

    def test_accounts_for_every_entry_of_the_renderer_once(self):
        nodes = [node(f"zelk__n{i}") for i in range(5)] + [node("zelk__b", kind="camera", builtin=True)]
        listed = self.json_of("list", "--why", KORVAN_CATALOGUE=self.catalogue(*nodes))
        registered = {o["name"].replace("korvan::", "zelk__") for o in listed["tables"]["Vop"]
                      if o["name"] not in UTILITIES}
        unregistered = [entry["name"] for entry in listed["unregistered"]]
        self.assertEqual(len(unregistered), len(set(unregistered)))
        self.assertEqual(registered & set(unregistered), set())
        for declared in nodes:
            self.assertIn(declared["name"], registered | set(unregistered))

    def test_tells_reasons_as_text_too_and_only_when_asked(self):
        self.assertIn("Renderer entries without a node type: ", self.output_of("list", "--why"))
        self.assertNotIn("without a node type", self.output_of("list"))

    def test_does_not_repeat_the_complaints_when_it_walks_the_renderer_again(self):
        bad = self.write("try/korvan/metadata/bad.mtd", "not toml at all\n")
        run = self.run_kshop("list", "--why", HOUDINI_PATH=f"{self.scratch}/try;&")
        self.assertEqual(run.returncode, 0)
        self.assertEqual(run.stderr.count(str(bad)), 1, run.stderr)


if __name__ == "__main__":
    unittest.main()
