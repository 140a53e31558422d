"""kshop replay: records from a file, sent again."""

import json
import signal
import time
import unittest

from record_case import EVERY_TYPE, RecordCase, Running, lines_of, numbered, record

GOOD = json.dumps(record({"i": (1, 1)}))


def with_parm(code, value):
    return json.dumps(record({"p": (code, value)}))


# Line, and what the sentence must hold.
BAD_LINES = (
    ("{", "column 2"),
    ("[1]", "an object belongs here, not a list"),
    ("null", "an object belongs here, not null"),
    ("{} {}", "column 4"),
    ('{"node_path": "/a", "parms": {}}', 'the key "entry_name" is missing'),
    ('{"node_path": 1, "entry_name": "", "parms": {}}', "node_path: a text belongs here, not 1"),
    ('{"node_path": "", "entry_name": "", "parms": []}', "parms: an object belongs here, not a list"),
    ('{"node_path": "", "node_path": "", "entry_name": "", "parms": {}}', 'the key "node_path" appears twice'),
    ('{"node_path": "", "entry_name": "", "parms": {"p": 5}}', 'parms."p": an object belongs here, not 5'),
    ('{"node_path": "", "entry_name": "", "parms": {"p": {"type": 1}}}', 'parms."p": the key "value" is missing'),
    (with_parm(256, 1), 'parms."p".type: an integer from 0 to 255 belongs here, not 256'),
    (with_parm("float", 1.0), 'parms."p".type: an integer from 0 to 255'),
    (with_parm(1, 2147483648), 'parms."p".value: an integer from -2147483648 to 2147483647 belongs here'),
    (with_parm(1, 2**64 - 1), "an integer from -2147483648 to 2147483647"),
    (with_parm(1, 1.0), "an integer from -2147483648 to 2147483647 belongs here, not 1.0"),
    (with_parm(2, 4294967295), "an integer from -2147483648 to 2147483647"),
    (with_parm(3, 1), "true or false belongs here, not 1"),
    (with_parm(4, "1"), 'a number belongs here, not "1"'),
    (with_parm(4, 1e39), "a number that a 32-bit float can hold belongs here, not 1e+39"),
    (with_parm(4, 0).replace("0}", "1e999}"), "1e999"),
    (with_parm(5, [1, 2]), "a list of 3 numbers belongs here, not of 2"),
    (with_parm(5, [1, 2, "x"]), 'parms."p".value[2]: a number belongs here, not "x"'),
    (with_parm(10, None), "a text belongs here, not null"),
    (with_parm(10, 7), "a text belongs here, not 7"),
    (with_parm(14, [1] * 15), "a list of 16 numbers"),
    (with_parm(13, []), "an object belongs here, not a list"),
    (with_parm(13, {"element_type": 13, "values": []}), "there are no arrays of type 13"),
    (with_parm(13, {"element_type": 99, "values": []}), "there are no arrays of type 99"),
    (with_parm(13, {"element_type": 4, "values": {}}), ".values: a list belongs here"),
    (with_parm(13, {"element_type": 0, "values": [256]}), ".values[0]: an integer from 0 to 255"),
    (with_parm(13, {"element_type": 4, "key_count": 2, "values": [1]}), "1 value cannot be shared out among 2 motion"),
    (with_parm(13, {"element_type": 4, "key_count": 0, "values": [1]}), "1 value cannot be shared out among 0 motion"),
    (with_parm(13, {"element_type": 10, "values": ["a\0b"]}), ".values[0]: texts of an array cannot hold a zero byte"),
    (GOOD.replace("noise", "\udcff"), "UTF-8"),
    ("[" * 100000, "column 100001"),
)


class Replay(RecordCase):
    def write_records(self, records, name="records.json"):
        return self.write(name, lines_of(records))

    def test_sends_what_listen_prints_so_that_it_is_printed_again(self):
        records = [record(EVERY_TYPE), record(path="", entry=""), record({"ü \"\n": (4, 0.1)}, path="/käse")]
        listener = self.listening("--json", "--count", 3)
        self.assertEqual(self.output_of("replay", self.write_records(records)), "3 records sent, 0 heard by nobody\n")
        first = listener.result()[0]
        listener = self.listening("--json", "--count", 3)
        self.output_of("replay", self.write("again.json", first))
        self.assertEqual(listener.result()[0], first)
        shown = [json.loads(line) for line in first.splitlines()]
        self.assertEqual(shown[:2], records[:2])
        self.assertEqual(shown[2]["parms"]["ü \"\n"], {"type": 4, "value": 0.10000000149011612})

    def test_sends_thousands_in_order(self):
        records = numbered(20000)
        listener = self.listening("--json", "--count", len(records))
        run = Running(self, "replay", self.write_records(records))
        self.assertEqual(self.heard_by(listener), records)
        self.assertEqual(run.result(), ("20000 records sent, 0 heard by nobody\n", "", 0))

    def test_sends_no_more_than_the_rate_in_a_second(self):
        listener = self.listening("--json", "--count", 11)
        file = self.write_records(numbered(11))
        begin = time.monotonic()
        self.output_of("replay", "--rate", 20, file)
        self.assertGreaterEqual(time.monotonic() - begin, 0.5)
        self.assertEqual(self.heard_by(listener), numbered(11))

    def test_understands_a_rate_below_one_under_every_locale(self):
        for locale in ("C", "de_DE.UTF-8"):
            with self.subTest(locale):
                listener = self.listening("--json", "--count", 1)
                self.output_of("replay", "--rate", "0.5", self.write_records(numbered(1)), LC_ALL=locale)
                self.assertEqual(self.heard_by(listener), numbered(1))

    def test_reads_standard_input_and_passes_over_blank_lines(self):
        listener = self.listening("--json", "--count", 2)
        text = "\n" + lines_of(numbered(2)).replace("\n", "\r\n\t \n")
        self.assertEqual(self.output_of("replay", "-", stdin=text), "2 records sent, 0 heard by nobody\n")
        self.assertEqual(self.heard_by(listener), numbered(2))

    def test_sends_nan_for_null_where_a_float_belongs(self):
        listener = self.listening("--count", 1)
        sent = record({"f": (4, None), "v": (7, [None, 1, 2])})
        self.output_of("replay", self.write_records([sent]))
        self.assertEqual(listener.result()[0], "/shop/net/a (noise)  f = nan  (float)\n"
                                               "/shop/net/a (noise)  v = [nan, 1, 2]  (vector)\n")

    def test_takes_whole_numbers_for_floats_and_passes_over_other_keys(self):
        listener = self.listening("--json", "--count", 1)
        line = '{"time": 5, "node_path": "/a", "entry_name": "b", "parms": {"f": {"type": 4, "value": 1, "note": []}}}'
        self.output_of("replay", "-", stdin=line)
        self.assertEqual(self.heard_by(listener), [record({"f": (4, 1.0)}, "/a", "b")])

    def test_names_file_line_and_place_of_a_mistake(self):
        for line, words in BAD_LINES:
            with self.subTest(line[:80]):
                file = self.scratch / "bad.json"
                file.write_bytes(f"{GOOD}\n\n{line}\n{GOOD}\n".encode("utf-8", "surrogateescape"))
                shown = self.failure_of("replay", file)
                self.assertTrue(shown.startswith(f"kshop: {file}:3: "), shown)
                self.assertIn(words, shown)
                self.assertTrue(shown.endswith("Nothing was sent; correct this line, which must be as 'kshop listen "
                                               "--json' prints it\n"), shown)

    def test_sends_nothing_when_a_later_line_is_wrong(self):
        listener = self.listening("--json", "--count", 1)
        self.failure_of("replay", self.write("bad.json", lines_of(numbered(3)) + "oops\n"))
        only = record(path="/after")
        self.output_of("replay", self.write_records([only]))
        self.assertEqual(self.heard_by(listener), [only])

    def test_names_a_file_that_cannot_be_read(self):
        self.assertEqual(self.failure_of("replay", "nowhere.json"),
                         "kshop: cannot read the file nowhere.json: No such file or directory\n")
        self.assertEqual(self.failure_of("replay", self.scratch),
                         f"kshop: {self.scratch} is a directory; give the path of a file of records\n")

    def test_tells_when_nobody_listens(self):
        run = self.run_kshop("replay", self.write_records(numbered(3)))
        self.assertEqual((run.returncode, run.stdout), (1, "0 records sent, 3 heard by nobody\n"))
        self.assertEqual(run.stderr, f"kshop: not every record was heard at {self.endpoint}; start a render, or "
                                     "'kshop listen', there first\n")

    def test_tells_when_no_endpoint_is_named(self):
        for endpoint in (",", " , "):
            self.assertEqual(self.failure_of("replay", "--endpoint", endpoint, self.write_records(numbered(1))),
                             "kshop: no endpoint is named, and nothing was sent; write it as ipc://PATH or tcp://HOST:PORT\n")

    def test_waits_for_its_next_record_however_low_the_rate(self):
        """A pause beyond what a clock can count is still a pause."""
        for rate in ("1e-10", "1e-300"):
            with self.subTest(rate):
                listener = self.listening("--json", "--count", 1)
                replay = Running(self, "replay", "--rate", rate, self.write_records(numbered(2)))
                self.assertEqual(self.heard_by(listener), numbered(1))
                time.sleep(0.5)
                self.assertIsNone(replay.process.poll(), "it did not wait")
                replay.signal(signal.SIGTERM)
                self.assertEqual(replay.result()[1:], ("kshop: interrupted; not all records were sent\n", 1))

    def test_counts_a_record_for_each_endpoint(self):
        listener = self.listening("--json", "--count", 2)
        both = f"{self.endpoint},ipc://{self.scratch}/nobody"
        run = self.run_kshop("replay", "--endpoint", both, self.write_records(numbered(2)))
        self.assertEqual((run.returncode, run.stdout), (1, "2 records sent, 2 heard by nobody\n"))
        self.assertEqual(self.heard_by(listener), numbered(2))

    def test_names_an_endpoint_that_cannot_be_used(self):
        shown = self.failure_of("replay", "--endpoint", "http://x", self.write_records(numbered(1)))
        self.assertIn("The endpoint http://x cannot be used", shown)

    def test_sends_nothing_of_an_empty_file(self):
        self.assertEqual(self.output_of("replay", self.write("empty.json", "")), "0 records sent, 0 heard by nobody\n")

    def test_stops_on_ctrl_c_and_says_how_far_it_came(self):
        listener = self.listening("--json", "--count", 1)
        run = Running(self, "replay", "--rate", "0.001", self.write_records(numbered(2)))
        self.assertEqual(self.heard_by(listener), numbered(1))
        run.signal(signal.SIGINT)
        self.assertEqual(run.result(), ("1 record sent, 0 heard by nobody\n",
                                        "kshop: interrupted; not all records were sent\n", 1))

    def test_refuses_a_rate_that_is_none(self):
        file = self.write_records(numbered(1))
        for rate in ("0", "-1", "x", "1,5", "nan", "inf", ""):
            with self.subTest(rate):
                self.assertIn("--rate", self.failure_of("replay", "--rate", rate, file, status=2))


if __name__ == "__main__":
    unittest.main()
