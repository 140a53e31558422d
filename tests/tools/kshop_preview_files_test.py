"""kshop preview: the page follows the files, and the edits stay."""

import json
import os
import time
import unittest

from preview_case import PreviewCase, parm_of, parms_of

TYPE = "korvan::try"

PARAMETERS = [{"name": "amount", "type": "float", "default": 0.5}, {"name": "mode", "type": "string", "default": ""}]

GOOD = '["zelk__try"]\n"houdini.label" = "Tried"\n"houdini.parm.toggle.extra" = "off"\n'


class Files(PreviewCase):
    def setUp(self):
        super().setUp()
        self.metadata = self.write("path/korvan/metadata/try.mtd", GOOD)
        self.page = self.preview_of(PARAMETERS, HOUDINI_PATH="%s:&" % (self.scratch / "path"))

    def replaced(self, text, file=None):
        """Writes a file as an editor does; the answer of the wait for it."""
        known = self.page.get("state")["generation"]
        file = file or self.metadata
        aside = file.with_name(file.name + "~")
        aside.write_text(text, encoding="utf-8")
        os.replace(aside, file)
        return self.page.wait_for(known)

    def test_a_saved_file_is_told_to_a_waiting_page(self):
        self.assertEqual(self.page.node(TYPE)["label"], "Tried")
        for label in "Once", "Twice":
            self.assertEqual(self.replaced(GOOD.replace("Tried", label))["reason"], "metadata")
            self.assertEqual(self.page.node(TYPE)["label"], label)

    def test_edits_made_so_far_stay(self):
        self.page.edit(TYPE, "set", token="amount", value=0.25)
        self.page.edit(TYPE, "set", token="extra", value=1)
        self.replaced(GOOD.replace("Tried", "New"))
        node = self.page.node(TYPE)
        self.assertEqual((parm_of(node, "amount")["values"], parm_of(node, "extra")["value"]), ([0.25], True))

    def test_edits_wait_for_a_parameter_that_is_gone_for_a_while(self):
        self.page.edit(TYPE, "set", token="extra", value=1)
        self.replaced('["zelk__try"]\n"houdini.label" = "Less"\n')
        self.assertNotIn("extra", parms_of(self.page.node(TYPE)["parms"]))
        self.page.edit(TYPE, "set", token="amount", value=0.25)
        self.replaced(GOOD)
        node = self.page.node(TYPE)
        self.assertEqual((parm_of(node, "amount")["values"], parm_of(node, "extra")["value"]), ([0.25], True))

    def test_edits_wait_for_a_type_that_is_gone_for_a_while(self):
        self.page.edit(TYPE, "set", token="amount", value=0.25)
        self.replaced('["zelk__try"]\n"houdini.skip" = true\n')
        self.assertIn("There is no shader type", self.page.get("node", expect=404, type=TYPE)["error"])
        self.replaced(GOOD)
        self.assertEqual(parm_of(self.page.node(TYPE), "amount")["values"], [0.25])

    def test_revert_all_gives_up_what_waits(self):
        self.page.edit(TYPE, "set", token="extra", value=1)
        self.replaced('["zelk__try"]\n"houdini.label" = "Less"\n')
        self.page.edit(TYPE, "reset_all")
        self.replaced(GOOD)
        self.assertIs(parm_of(self.page.node(TYPE), "extra")["value"], False)

    def test_a_half_written_file_contributes_nothing_and_says_so(self):
        self.page.edit(TYPE, "set", token="amount", value=0.25)
        self.replaced('["zelk__try"]\n"houdini.label" = "Half')
        node = self.page.node(TYPE)
        self.assertEqual((node["label"], parm_of(node, "amount")["values"]), ("Try", [0.25]))
        errors = [m["text"] for m in self.page.get("state")["messages"] if m["severity"] == "error"]
        self.assertTrue(any("try.mtd:2:" in text for text in errors), errors)
        self.replaced(GOOD)
        self.assertEqual(self.page.node(TYPE)["label"], "Tried")

    def test_waits_until_a_file_is_at_rest(self):
        known = self.page.get("state")["generation"]
        for count in range(12):
            self.metadata.write_text(GOOD + "#" * count, encoding="utf-8")
            time.sleep(0.05)
        self.page.wait_for(known)
        time.sleep(0.6)
        self.assertLessEqual(self.page.get("state")["generation"], known + 3)

    def test_files_that_come_and_go_count_too(self):
        more = self.metadata.with_name("more.mtd")
        self.replaced('["zelk__try".parameters.amount]\n"houdini.label" = "How Much"\n', more)
        self.assertEqual(parm_of(self.page.node(TYPE), "amount")["label"], "How Much")
        known = self.page.get("state")["generation"]
        more.unlink()
        self.page.wait_for(known)
        self.assertEqual(parm_of(self.page.node(TYPE), "amount")["label"], "Amount")

    def test_a_catalogue_counts_too(self):
        catalogue = self.scratch / "catalogue.json"
        nodes = json.loads(catalogue.read_text(encoding="utf-8"))
        nodes["nodes"][0]["parameters"].append({"name": "added", "type": "int", "default": 4})
        self.replaced(json.dumps(nodes), catalogue)
        self.assertEqual(parm_of(self.page.node(TYPE), "added")["values"], [4])

    def test_a_value_of_another_type_waits(self):
        catalogue = self.scratch / "catalogue.json"
        text = catalogue.read_text(encoding="utf-8")
        nodes = json.loads(text)
        self.page.edit(TYPE, "set", token="amount", value=0.25)
        nodes["nodes"][0]["parameters"][0] = {"name": "amount", "type": "string", "default": "none"}
        self.replaced(json.dumps(nodes), catalogue)
        self.assertEqual(parm_of(self.page.node(TYPE), "amount")["value"], "none")
        self.replaced(text, catalogue)
        self.assertEqual(parm_of(self.page.node(TYPE), "amount")["values"], [0.25])

    def test_the_state_lists_the_files_whose_lines_can_be_read(self):
        state = self.page.get("state")
        (file,) = [f for f in state["files"] if f["path"] == str(self.metadata)]
        self.assertEqual(file["shown"], "try.mtd")
        self.assertEqual([f["id"] for f in state["files"]], list(range(len(state["files"]))))
        source = self.page.get("source", file=file["id"])
        self.assertEqual(source, {"path": str(self.metadata), "lines": GOOD.splitlines()})
        self.metadata.write_bytes(b"# \xff\r\nlast")
        self.assertEqual(self.page.get("source", file=file["id"])["lines"], ["# \ufffd", "last"])
        self.metadata.unlink()
        self.assertEqual(self.page.get("source", file=file["id"], expect=404)["error"],
                         "The file %s cannot be read." % self.metadata)

    def test_the_state_lists_the_types_in_table_order(self):
        registered = self.json_of("list", KORVAN_CATALOGUE=self.scratch / "catalogue.json",
                                  HOUDINI_PATH="%s:&" % (self.scratch / "path"))["tables"]["Vop"]
        types = self.page.get("state")["types"]
        self.assertEqual([t["name"] for t in types], [o["name"] for o in registered])
        tried = types[[t["name"] for t in types].index(TYPE)]
        self.assertEqual(tried, {"name": TYPE, "label": "Tried", "icon": tried["icon"], "class": "VOP_KorvanOperator",
                                 "tab_menu": None, "inputs": 2, "outputs": 4})

    def test_findings_are_those_of_lint_and_follow_the_file(self):
        path = {"KORVAN_CATALOGUE": self.scratch / "catalogue.json", "HOUDINI_PATH": "%s:&" % (self.scratch / "path")}
        clean = self.page.get("lint")
        self.assertEqual(clean, self.json_of("lint", **path))
        self.replaced('["zelk__try"]\n"houdini.lable" = "Tried"\n')
        (finding,) = [f for f in self.page.get("lint")["findings"] if f["severity"] == "error" or f["line"] == 2]
        self.assertEqual((finding["file"], finding["line"]), (str(self.metadata), 2))
        self.replaced(GOOD)
        self.assertEqual(self.page.get("lint"), clean)


if __name__ == "__main__":
    unittest.main()
