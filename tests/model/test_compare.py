"""The comparison finds what differs, and random catalogues are nasty enough."""

import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

import compare  # noqa: E402
from catalogue_view import Entry  # noqa: E402
from interface_model import DEFAULT_HELP  # noqa: E402
from random_catalogue import random_catalogue  # noqa: E402
from template_model import HOST_KINDS  # noqa: E402
from test_interface_model import node, outcome, parm  # noqa: E402


class Comparison(unittest.TestCase):
    """The comparison must be able to fail."""

    @staticmethod
    def described(records):
        made = outcome(*records)
        operators = [dict(one, help_url=one["help_url"].replace(DEFAULT_HELP, "https://korvan.example/Shaders"))
                     for one in made["operators"]]
        return {"tables": {"Vop": operators, "Shop": []}, "messages": made["messages"]}

    def differences(self, observed, records, baseline=None):
        baseline = compare.Baseline(self.described((baseline or []) + [compare.PROBE]))
        return compare.compare_descriptions(baseline, observed, [Entry(record) for record in records])[0]

    def test_equal_descriptions_have_no_differences(self):
        records = random_catalogue(5, 40)["nodes"]
        self.assertEqual(self.differences(self.described(records), records), [])

    def test_a_changed_field_is_named(self):
        records = [node(parm("a"))]
        observed = self.described(records)
        observed["tables"]["Vop"][0]["templates"][0]["invisible"] = True
        self.assertEqual(self.differences(observed, records),
                         ["korvan::foo/templates/0 (a)/invisible: expected false, got true"])

    def test_a_number_is_no_boolean(self):
        records = [node(parm("a"))]
        observed = self.described(records)
        observed["tables"]["Vop"][0]["templates"][0]["join_next"] = 0
        self.assertEqual(len(self.differences(observed, records)), 1)

    def test_missing_operators_templates_and_messages_are_found(self):
        records = [node(parm("u", "undefined")), node(name="g")]
        observed = self.described(records)
        observed["tables"]["Vop"].pop()
        observed["tables"]["Vop"][0]["templates"].pop()
        observed["messages"].pop()
        places = [line.split(" (length)")[0] for line in self.differences(observed, records)]
        self.assertEqual(places, ["operator names", "korvan::foo/templates", "messages"])

    def test_the_slots_stand_as_the_operators_before_leave_them(self):
        shipped = [node(parm("s"), name="shipped", parm_meta=[("s", "houdini.callback", "x")])]
        records = [node(parm("a"), meta=[("houdini.parm.toggle.t", "")])]
        self.assertEqual(self.differences(self.described(shipped + records), records, shipped), [])
        self.assertEqual(self.differences(self.described(records), records, shipped),
                         ["korvan::foo/templates/0 (a)/callback: expected true, got false"])

    def test_a_slot_that_nobody_set_is_found(self):
        described = self.described([compare.PROBE])
        described["tables"]["Vop"][0]["templates"][0]["callback"] = True
        self.assertRaises(SystemExit, compare.Baseline, described)

    def test_messages_that_stand_there_anyway_are_left_aside(self):
        record = node(parm("u", "undefined"), name="shipped")
        self.assertEqual(self.differences(self.described([record, node()]), [node()], [record]), [])


class RandomCatalogues(unittest.TestCase):
    def test_the_same_seed_gives_the_same_catalogue(self):
        self.assertEqual(random_catalogue(3, 30), random_catalogue(3, 30))
        self.assertNotEqual(random_catalogue(3, 30), random_catalogue(4, 30))

    def test_every_host_kind_and_every_message_occurs(self):
        kinds, texts = set(), ""
        for seed in range(6):
            made = outcome(*random_catalogue(seed, 150)["nodes"])
            kinds |= {one["type"] for op in made["operators"] for one in op["templates"]}
            texts += "\n".join(message["text"] for message in made["messages"])
        self.assertEqual(kinds, set(HOST_KINDS.values()) | {
            None, "PRM_JOINED_TOGGLE", "PRM_BUTTONSTRIP", "PRM_FILE", "PRM_PICFILE", "PRM_LABEL", "PRM_SWITCHER",
            "PRM_HEADING", "PRM_SEPARATOR", "PRM_CALLBACK", "PRM_MULTITYPE_LIST", "PRM_MULTITYPE_RAMP_FLT",
            "PRM_MULTITYPE_RAMP_RGB"})
        for words in ("Skipping badly", "Exactly 3", "Folder \"", "for folder", "for menu", "Odd number of items",
                      "menu type", "menu script language", "Undefined", "Unknown"):
            self.assertIn(words, texts)


if __name__ == "__main__":
    unittest.main()
