"""kshop keys: for endpoints that other machines can reach."""

import stat
import unittest

from record_case import RecordCase, lines_of, numbered


class Keys(RecordCase):
    def make(self, name="keys"):
        file = self.scratch / name
        self.assertIn(f"{file} holds new keys", self.output_of("keys", file))
        return file

    def test_makes_a_file_that_only_its_owner_can_read(self):
        self.assertEqual(stat.S_IMODE(self.make().stat().st_mode), 0o600)

    def test_makes_new_keys_each_time(self):
        self.assertNotEqual(self.make("a").read_bytes(), self.make("b").read_bytes())

    def test_refuses_to_overwrite(self):
        file = self.write("precious", "keep me")
        self.assertIn(str(file), self.failure_of("keys", file))
        self.assertEqual(file.read_text(), "keep me")

    def test_names_a_file_that_cannot_be_made(self):
        self.assertIn("/nowhere/keys", self.failure_of("keys", "/nowhere/keys"))

    def test_lets_those_who_have_them_meet_and_nobody_else(self):
        ours, others = self.make("ours"), self.make("others")
        listener = self.listening("--json", "--count", 2, "--endpoint", "tcp://127.0.0.1:*", ZELK_IPR_KEYS=ours)
        file = self.write("records.json", lines_of(numbered(2)))
        run = self.run_kshop("replay", "--endpoint", listener.where, file, ZELK_IPR_KEYS=others)
        self.assertEqual((run.returncode, run.stdout), (1, "0 records sent, 2 heard by nobody\n"))
        self.output_of("replay", "--endpoint", listener.where, file, ZELK_IPR_KEYS=ours)
        self.assertEqual(self.heard_by(listener), numbered(2))


if __name__ == "__main__":
    unittest.main()
