"""kshop env: what belongs into a report of a mistake."""

import json
import os
import subprocess
import unittest

from kshop_case import KSHOP, TREE, KshopCase


class Env(KshopCase):
    def test_finds_its_own_tree_with_plug_ins_and_metadata(self):
        environment = self.json_of("env")
        self.assertEqual(environment["tree"], str(TREE))
        self.assertEqual(environment["host_path"][-1], str(TREE))
        self.assertEqual([(p["path"], p["loaded"]) for p in environment["plugins"]],
                         [(f"{TREE}/dso/korvan_shop.so", True)])
        self.assertEqual(environment["plugins"][0]["entry_points"], ["newShopOperator", "newVopOperator"])
        self.assertIn(f"{TREE}/korvan/plugins", environment["renderer_plugin_path"])
        self.assertGreaterEqual(len(environment["renderer_plugins"]), 2)
        self.assertTrue(all(f.endswith(".mtd") for f in environment["metadata_files"]))
        self.assertGreater(len(environment["metadata_files"]), 0)

    def test_says_what_the_plug_in_was_made_for_and_what_became_of_it(self):
        environment = self.json_of("env", KORVAN_CATALOGUE=self.catalogue(
            {"name": "zelk__one", "kind": "shader", "output": "rgb", "parameters": []},
            {"name": "zelk__hidden", "kind": "shader", "output": "rgb", "parameters": [],
             "metadata": [{"key": "houdini.skip", "value": True}]}))
        self.assertEqual([(p["made_for"], p["compiler_tag"]) for p in environment["plugins"]], [("15.5", 408)])
        listed = self.json_of("list")
        plain = self.json_of("env")
        self.assertEqual(plain["registered"], {table: len(types) for table, types in listed["tables"].items()})
        self.assertEqual(environment["registered"]["Vop"], plain["registered"]["Vop"] + 1)
        self.assertIn("zelk__hidden", environment["left_out"]['its metadata skips it ("houdini.skip" is true)'])
        self.assertEqual((plain["said"]["warning"], plain["said"]["error"]), (0, 0))

    def test_counts_what_was_said_while_shaders_registered(self):
        bad = self.catalogue({"name": "zelk__bad", "kind": "shader", "output": "rgb", "parameters": [],
                              "metadata": [{"key": "houdini.parm.x", "value": "1"}]})
        run = self.run_kshop("env", "--json", KORVAN_CATALOGUE=bad)
        self.assertIn("Skipping badly formatted extra parameter: houdini.parm.x", run.stderr)
        self.assertEqual(json.loads(run.stdout)["said"]["error"], 1)

    def test_shows_the_variables_as_the_person_set_them(self):
        variables = self.json_of("env", KORVAN_PLUGIN_PATH=self.scratch)["variables"]
        self.assertEqual(variables["KORVAN_PLUGIN_PATH"], str(self.scratch))
        self.assertEqual((variables["HOUDINI_PATH"], variables["ZELK_STARTUP_LOG"]), (None, None))

    def test_resolves_the_search_path(self):
        (self.scratch / "mine/korvan/metadata").mkdir(parents=True)
        self.write("mine/korvan/metadata/extra.mtd", "")
        environment = self.json_of("env", HOUDINI_PATH=f"{self.scratch}/mine;{self.scratch}/missing;&")
        self.assertEqual(environment["host_path"], [f"{self.scratch}/mine", str(TREE)])
        self.assertEqual(environment["metadata_files"][0], f"{self.scratch}/mine/korvan/metadata/extra.mtd")

    def test_shows_where_change_records_go(self):
        shown = self.json_of("env", XDG_RUNTIME_DIR=self.scratch)
        self.assertEqual((shown["endpoints"], shown["keys"]), ([f"ipc://{self.scratch}/korvan-ipr"], None))
        shown = self.json_of("env", ZELK_IPR_ENDPOINT=" ipc:///tmp/a , ,tcp://127.0.0.1:9000")
        self.assertEqual(shown["endpoints"], ["ipc:///tmp/a", "tcp://127.0.0.1:9000"])
        self.assertIn("  tcp://127.0.0.1:9000\n", self.output_of("env", ZELK_IPR_ENDPOINT="tcp://127.0.0.1:9000"))

    def test_shows_whether_the_keys_can_be_used(self):
        file = self.scratch / "keys"
        self.output_of("keys", file)
        shown = self.json_of("env", ZELK_IPR_KEYS=file)
        self.assertEqual(shown["keys"], {"path": str(file), "usable": True, "reason": None})
        file.write_text("no keys")
        shown = self.json_of("env", ZELK_IPR_KEYS=file)["keys"]
        self.assertFalse(shown["usable"])
        self.assertIn(str(file), shown["reason"])
        self.assertIn(f"not used: {shown['reason']}", self.output_of("env", ZELK_IPR_KEYS=file))

    def test_shows_a_person_the_same(self):
        text = self.output_of("env")
        for words in ("Versions", "Host plug-ins", "made for 15.5 and compiler tag 408", "Registered node types",
                      "kshop list --why", "Said while they were registered", "loaded; exports newShopOperator, newVopOperator", "HOUDINI_PATH",
                      "(not set)", "Metadata files", str(TREE)):
            self.assertIn(words, text)

    def test_survives_variables_that_are_no_utf_8(self):
        environment = {os.fsencode(k): os.fsencode(v) for k, v in self.environment().items()}
        environment[b"KORVAN_PLUGIN_PATH"] = b"/odd\xff\xfepath"
        for arguments in (["env"], ["env", "--json"]):
            run = subprocess.run([str(KSHOP), *arguments], capture_output=True, env=environment)
            self.assertEqual(run.returncode, 0, run.stderr)
            self.assertIn("/odd\ufffd\ufffdpath", run.stdout.decode("utf-8"))
        self.assertTrue(json.loads(run.stdout))


if __name__ == "__main__":
    unittest.main()
