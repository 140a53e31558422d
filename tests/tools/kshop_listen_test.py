"""kshop listen: what a render in progress would receive."""

import json
import os
import signal
import socket
import struct
import subprocess
import unittest

from kshop_case import KSHOP
from record_case import EVERY_TYPE, RecordCase, Running, numbered, packed, record, send_texts

def single(value):
    """The number as 32 bits hold it."""
    return struct.unpack("f", struct.pack("f", value))[0]


class Listen(RecordCase):
    def line_for(self, sent, *arguments, **changes):
        render = self.listening("--count", 1, *arguments, **changes)
        send_texts(self.endpoint, packed(sent))
        output, messages, status = render.result()
        self.assertEqual((messages, status), ("", 0))
        return output

    def test_prints_every_type_as_one_json_object_a_line(self):
        sent = record(EVERY_TYPE)
        line = self.line_for(sent, "--json")
        self.assertEqual(line, json.dumps(sent, separators=(",", ":"), ensure_ascii=False) + "\n")

    def test_narrows_no_float_but_by_the_type_itself(self):
        shown = json.loads(self.line_for(record({"a": (4, 0.1), "b": (4, 1e30)}), "--json"))["parms"]
        self.assertEqual((shown["a"]["value"], shown["b"]["value"]), (single(0.1), single(1e30)))

    def test_prints_null_for_what_json_has_no_number_for(self):
        nan, inf = float("nan"), float("inf")
        line = self.line_for(record({"f": (4, nan), "v": (7, [inf, -inf, 1.0])}), "--json")
        self.assertEqual({k: v["value"] for k, v in json.loads(line)["parms"].items()},
                         {"f": None, "v": [None, None, 1.0]})

    def test_replaces_bytes_that_are_no_utf_8(self):
        sent = record({b"p\xff": (10, b"a\xfeb")}, path=b"/\xc3", entry=b"\x80")
        for arguments in ((), ("--json",)):
            with self.subTest(arguments):
                line = self.line_for(sent, *arguments)
                for text in ("/\ufffd", "p\ufffd", "a\ufffdb"):
                    self.assertIn(text, line)

    def test_prints_the_same_under_every_locale(self):
        sent = record({"f": (4, 1234567.25), "i": (1, 1234567), "I": (10, "I")})
        for arguments in ((), ("--json",)):
            plain = self.line_for(sent, *arguments, LC_ALL="C")
            for locale in ("de_DE.UTF-8", "tr_TR.UTF-8"):
                with self.subTest(locale=locale, arguments=arguments):
                    self.assertEqual(self.line_for(sent, *arguments, LC_ALL=locale), plain)

    def test_shows_a_person_one_line_for_each_parameter(self):
        sent = record({"colour": (5, [0.5, 0.25, 1.0]), "amp": (4, 0.1), "steps": (1, 3), "file": (10, "a\nb"),
                       "on": (3, False), "knots": (13, {"element_type": 4, "values": [float(i) for i in range(20)]}),
                       "other": (77, "<unhandled>")})
        self.assertEqual(self.line_for(sent).splitlines(), [
            '/shop/net/a (noise)  amp = 0.1  (float)',
            '/shop/net/a (noise)  colour = [0.5, 0.25, 1]  (rgb)',
            '/shop/net/a (noise)  file = "a\\nb"  (string)',
            '/shop/net/a (noise)  knots = [0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, ... 4 more]'
            '  (array of float, 20 elements)',
            '/shop/net/a (noise)  on = false  (boolean)',
            '/shop/net/a (noise)  other = "<unhandled>"  (unknown type 77)',
            '/shop/net/a (noise)  steps = 3  (int)'])

    def test_shows_a_record_without_parameters(self):
        self.assertEqual(self.line_for(record()), "/shop/net/a (noise)  no parameters\n")
        self.assertEqual(json.loads(self.line_for(record(), "--json")), record())

    def test_prints_each_record_when_it_arrives_and_ends_after_count_of_them(self):
        render = self.listening("--json", "--count", 3)
        for sent in numbered(3):
            send_texts(self.endpoint, packed(sent))
            self.assertEqual(json.loads(render.line()), sent)
        self.assertEqual(render.result(), ("", "", 0))

    def test_skips_what_is_no_record_and_says_so(self):
        render = self.listening("--json", "--count", 1)
        good = record({"i": (1, 5)})
        send_texts(self.endpoint, b"\xc1", b"no record", packed(record({"i": (1, "text")})), packed(good))
        output, messages, status = render.result()
        self.assertEqual((json.loads(output), status), (good, 0))
        self.assertEqual(len(messages.splitlines()), 3, messages)
        self.assertRegex(messages.splitlines()[0],
                         r"^kshop: a text of 1 byte was skipped\. This is no change record: .")
        self.assertIn('parameter "i"', messages.splitlines()[2])

    def test_ends_well_on_ctrl_c_and_on_sigterm(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            with self.subTest(number):
                render = self.listening()
                render.signal(number)
                self.assertEqual(render.result(), ("", "", 0))

    def test_says_where_it_listens(self):
        for arguments, variable in (((), self.endpoint), (("--endpoint", self.endpoint), "ipc:///nowhere/x")):
            with self.subTest(arguments):
                render = Running(self, "listen", *arguments, ZELK_IPR_ENDPOINT=variable)
                self.assertEqual(render.message(), f"kshop: listening at {self.endpoint}\n")
                render.end()

    def test_says_the_port_that_it_got(self):
        render = Running(self, "listen", "--endpoint", f"{self.endpoint},tcp://127.0.0.1:*")
        self.assertRegex(render.message(), rf"^kshop: listening at {self.endpoint}, tcp://127\.0\.0\.1:\d+\n$")

    def test_names_an_endpoint_that_cannot_be_bound(self):
        blocked = self.write("file", "")
        with socket.create_server(("127.0.0.1", 0)) as server:
            for endpoint in ("http://x", "ipc://", "ipc:///nowhere/at/all", f"ipc://{blocked}", "tcp://*:9000",
                             f"tcp://127.0.0.1:{server.getsockname()[1]}"):
                with self.subTest(endpoint):
                    shown = self.failure_of("listen", "--endpoint", endpoint)
                    self.assertRegex(shown, r"^kshop: .*\.\n$")
                    self.assertIn(endpoint, shown)

    def test_leaves_a_render_alone_that_listens_there_already(self):
        first = self.listening("--json", "--count", 1)
        self.assertIn("a render listens there already", self.failure_of("listen"))
        send_texts(self.endpoint, packed(record()))
        self.assertEqual(self.heard_by(first), [record()])

    def test_needs_neither_plug_ins_nor_shaders(self):
        line = self.line_for(record(), HOUDINI_DSO_PATH=self.scratch, KORVAN_PLUGIN_PATH=self.scratch)
        self.assertEqual(line, "/shop/net/a (noise)  no parameters\n")

    def test_is_quiet_when_the_reader_goes_away(self):
        read, write = os.pipe()
        os.close(read)
        render = subprocess.Popen(["bash", "-c", f"trap '' PIPE; exec '{KSHOP}' listen"], stdout=write,
                                  stderr=subprocess.PIPE, text=True, env=self.environment())
        os.close(write)
        self.assertIn("listening", render.stderr.readline())
        send_texts(self.endpoint, packed(record()))
        self.assertEqual((render.communicate()[1], render.returncode), ("", 1))

    def test_refuses_a_count_that_is_none(self):
        for count in ("0", "-1", "x", "1.5", ""):
            with self.subTest(count):
                self.assertIn("--count", self.failure_of("listen", "--count", count, status=2))


if __name__ == "__main__":
    unittest.main()
