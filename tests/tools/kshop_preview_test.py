"""kshop preview: the command itself: address, port, signals, and the processes behind it."""

import os
import signal
import socket
import subprocess
import time
import unittest

from kshop_case import KSHOP
from preview_case import PreviewCase


def is_alive(pid):
    try:
        with open("/proc/%d/stat" % pid, encoding="utf-8") as file:
            return file.read().rsplit(")", 1)[1].split()[0] != "Z"
    except OSError:
        return False


class Command(PreviewCase):
    def assert_gone(self, pids):
        end = time.monotonic() + 10
        while time.monotonic() < end and any(map(is_alive, pids)):
            time.sleep(0.05)
        self.assertEqual([pid for pid in pids if is_alive(pid)], [])

    def test_prints_an_address_whose_token_is_new_each_time(self):
        first, second = self.preview(), self.preview()
        self.assertNotEqual(first.token, second.token)
        self.assertIsNone(first.fragment)
        self.assertEqual(first.get("state")["generation"], 1)

    def test_opens_at_a_shader_that_is_named_in_any_of_its_three_ways(self):
        for name in "korvan::image", "zelk__image", "image":
            with self.subTest(name):
                self.assertEqual(self.preview("--open", name).fragment, "korvan::image")

    def test_names_a_shader_that_there_is_not(self):
        self.assertEqual(self.failure_of("preview", "--port", "0", "--open", "korvan::imge"),
                         'kshop: --open: there is no shader "korvan::imge"; did you mean korvan::image? '
                         "'kshop list' shows all\n")

    def test_a_second_preview_says_that_the_port_is_in_use(self):
        first = self.preview()
        self.assertEqual(self.failure_of("preview", "--port", first.port),
                         "kshop: port %d on 127.0.0.1 is in use, perhaps by another preview; name another with --port, "
                         "or any free one with --port 0\n" % first.port)
        self.assertEqual(first.get("nodes"), [])

    def test_says_what_is_no_port(self):
        for port in "-1", "65536", "http", "80x", "8 ":
            with self.subTest(port):
                self.assertIn("is no port; they go from 0 (any free one) to 65535",
                              self.failure_of("preview", "--port=" + port, status=2))

    def test_listens_on_the_loopback_address_only(self):
        port = self.preview().port
        with open("/proc/net/tcp", encoding="ascii") as file:
            listening = [line.split()[1] for line in file.readlines()[1:] if line.split()[3] == "0A"]
        self.assertEqual([a for a in listening if a.endswith(":%04X" % port)], ["0100007F:%04X" % port])

    def test_ends_in_good_order_at_a_signal_and_frees_its_port(self):
        for sent in signal.SIGINT, signal.SIGTERM, signal.SIGHUP:
            with self.subTest(sent):
                preview = self.preview()
                preview.node("korvan::image")
                workers = preview.workers()
                self.assertEqual(len(workers), 1)
                self.assertEqual(preview.close(sent), 0)
                self.assertEqual(preview.complaints, "kshop: the preview runs; Ctrl-C ends it\n")
                self.assert_gone(workers)
                with socket.socket() as again:
                    again.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
                    again.bind(("127.0.0.1", preview.port))

    def test_ends_soon_while_requests_are_under_way(self):
        preview = self.preview()
        waiting = [socket.create_connection(("127.0.0.1", preview.port)) for _ in range(8)]
        for connection in waiting:
            self.addCleanup(connection.close)
            connection.sendall(("GET /api/wait?generation=1 HTTP/1.1\r\nHost: 127.0.0.1:%d\r\nX-Preview-Token: %s\r\n\r\n"
                                % (preview.port, preview.token)).encode())
        time.sleep(0.3)
        begin = time.monotonic()
        self.assertEqual(preview.close(), 0)
        self.assertLess(time.monotonic() - begin, 10)

    def test_leaves_no_worker_behind_when_it_is_killed(self):
        preview = self.preview_of([], [("houdini.parm.button.loop", "Loop"), ("loop", "houdini.callback", "python:pass")])
        preview.node("korvan::try")
        workers = preview.workers()
        preview.close(signal.SIGKILL)
        self.assert_gone(workers)

    def test_goes_on_when_the_reader_of_its_address_goes_away(self):
        preview = self.preview()
        preview.process.stdout.close()
        preview.process.stderr.close()
        self.assertEqual(preview.get("nodes"), [])
        preview.process.terminate()
        self.assertEqual(preview.process.wait(30), 0)
        preview.process.stdout = preview.process.stderr = None

    def test_says_its_address_on_standard_error_when_standard_output_is_closed(self):
        run = subprocess.Popen(["sh", "-c", 'exec "$0" preview --port 0 >&-', str(KSHOP)], stderr=subprocess.PIPE,
                               stdin=subprocess.DEVNULL, text=True, env=self.environment())
        lines = [run.stderr.readline() for _ in range(2)]
        run.terminate()
        run.communicate(timeout=30)
        self.assertIn("cannot write the output", lines[0])
        self.assertIn("http://127.0.0.1:", lines[1])

    def test_says_why_a_shader_to_open_may_not_be_there(self):
        complaint = self.failure_of("preview", "--port", "0", "--open", "rust", KORVAN_CATALOGUE=self.scratch / "gone.json")
        self.assertIn('kshop: --open: there is no shader "rust"', complaint)
        self.assertIn("kshop: error: [korvan_catalogue] Cannot read the catalogue %s/gone.json" % self.scratch, complaint)

    def test_says_when_no_plug_in_can_be_loaded(self):
        empty = self.scratch / "empty"
        empty.mkdir()
        complaint = self.failure_of("--dso", empty, "preview", "--port", "0")
        self.assertIn("kshop: no plug-in could be loaded; looked in: %s" % empty, complaint)
        self.assertIn("kshop: the preview could not start: its worker ended with status 1\n", complaint)

    def test_the_worker_is_nothing_to_be_called_by_hand(self):
        self.assertEqual(self.failure_of("preview-worker", status=2),
                         "kshop: this command is the preview's own; try 'kshop preview'\n")
        self.assertNotIn("preview-worker", self.output_of("--help"))

    def test_its_processes_use_no_signal_that_the_shell_sends_to_the_group(self):
        preview = self.preview()
        for pid in preview.workers():
            self.assertNotEqual(os.getpgid(pid), os.getpgid(preview.process.pid))


if __name__ == "__main__":
    unittest.main()
