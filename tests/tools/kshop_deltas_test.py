"""kshop python --deltas: every record that a script's edits hand to the publisher."""

import json
import os
import pathlib
import unittest

from record_case import EVERY_TYPE, RecordCase, numbered, packed, record

SENDER = pathlib.Path(os.environ["RECORD_SENDER"]).resolve()


class Deltas(RecordCase):
    def sending_script(self, *texts):
        """A script that hands texts to the process's publisher."""
        return self.write("send.py", f"import ctypes\nsender = ctypes.CDLL({str(SENDER)!r})\n"
                                     f"for text in {list(texts)!r}:\n"
                                     "    sender.sendText(text, ctypes.c_size_t(len(text)))\n")

    def deltas_of(self, script):
        file = self.scratch / "deltas.json"
        self.output_of("python", "--deltas", file, script)
        return file.read_text(encoding="utf-8")

    def test_writes_every_record_although_nobody_listens(self):
        sent = [record(EVERY_TYPE), *numbered(3)]
        written = self.deltas_of(self.sending_script(*map(packed, sent)))
        self.assertEqual([json.loads(line) for line in written.splitlines()], sent)

    def test_writes_what_a_render_prints(self):
        count = 300  # which a pipe holds: nobody reads from the render before the script has ended
        listener = self.listening("--json", "--count", count)
        written = self.deltas_of(self.sending_script(*map(packed, numbered(count))))
        self.assertEqual(listener.result()[0], written)

    def test_writes_a_record_before_the_script_goes_on(self):
        script = self.sending_script(packed(record()))
        script.write_text(script.read_text() + "import sys\nprint(open(sys.argv[1]).read(), end='')\n")
        file = self.scratch / "deltas.json"
        self.assertEqual(json.loads(self.output_of("python", "--deltas", file, script, file)), record())

    def test_leaves_the_arguments_behind_the_script_to_it(self):
        script = self.write("args.py", "import sys\nprint(sys.argv[1:])\n")
        file = self.scratch / "deltas.json"
        self.assertEqual(self.output_of("python", "--deltas", file, script, "--deltas", "x", "--json"),
                         "['--deltas', 'x', '--json']\n")
        self.assertEqual(file.read_text(), "")

    def test_leaves_out_what_is_no_record_and_says_so(self):
        file = self.scratch / "deltas.json"
        run = self.run_kshop("python", "--deltas", file, self.sending_script(b"nonsense", packed(record())))
        self.assertEqual((run.returncode, json.loads(file.read_text())), (0, record()))
        self.assertRegex(run.stderr,
                         r"^kshop: --deltas: a text of 8 bytes was left out\. This is no change record: .*\n$")

    def test_names_a_file_that_cannot_be_written_and_runs_nothing(self):
        script = self.write("says.py", "print('ran')\n")
        run = self.run_kshop("python", "--deltas", "/nowhere/x.json", script)
        self.assertEqual((run.returncode, run.stdout, run.stderr),
                         (1, "", "kshop: --deltas: cannot write /nowhere/x.json: No such file or directory\n"))

    def test_tells_once_when_a_record_cannot_be_written(self):
        run = self.run_kshop("python", "--deltas", "/dev/full", self.sending_script(*map(packed, numbered(3))))
        self.assertEqual((run.returncode, run.stderr), (1, "kshop: --deltas: cannot write /dev/full: No space left on "
                                                           "device; later records are left out\n"))

    def test_keeps_a_script_s_own_status(self):
        script = self.write("exit.py", "raise SystemExit(7)\n")
        self.assertEqual(self.run_kshop("python", "--deltas", self.scratch / "d.json", script).returncode, 7)


if __name__ == "__main__":
    unittest.main()
