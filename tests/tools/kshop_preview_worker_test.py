"""kshop preview: whatever scripts do to the process that has the node, the page is answered and the edits stay."""

import json
import os
import threading
import time
import unittest

from preview_case import PreviewCase, parm_of

TYPE = "korvan::try"


def button(name, script):
    return ("houdini.parm.button." + name, "python:" + script)


class Worker(PreviewCase):
    def start(self, *buttons):
        return self.preview_of([{"name": "amount", "type": "float", "default": 0}],
                               [button(name, script) for name, script in buttons])

    def broken(self, page, name):
        """The sentence of an edit that breaks the worker; what was edited before must have stayed."""
        page.edit(TYPE, "set", token="amount", value=0.25)
        before = page.get("state")["generation"]
        answer = page.edit(TYPE, "press", expect=500, token=name)
        self.last_words = answer.get("console", "")
        state = page.get("state")
        self.assertEqual(state["generation"], before + 1)
        self.assertIn("It was started again; the edits made before are kept.", state["notice"])
        self.assertEqual(page.get("wait", generation=before), {"generation": before + 1, "reason": "restart"})
        self.assertEqual(parm_of(page.node(TYPE), "amount")["values"], [0.25])
        self.assertEqual(page.edit(TYPE, "set", token="amount", value=0.5)["errors"], [])
        self.assertEqual(len(page.workers()), 1)
        return answer["error"]

    def test_a_callback_that_ends_the_process(self):
        page = self.start(("end", "import os; os.write(1, b'farewell'); os._exit(7)"))
        self.assertEqual(self.broken(page, "end"), "The node's process ended with status 7 at this; it was undone.")
        self.assertEqual(self.last_words, "farewell")

    def test_a_callback_that_crashes_the_process(self):
        # The signal that nobody can catch: a sanitizer has handlers of its own for the others.
        page = self.start(("crash", "import os; os.kill(os.getpid(), 9)"))
        self.assertEqual(self.broken(page, "crash"), "The node's process was killed by signal 9 at this; it was undone.")

    def test_a_callback_without_an_end(self):
        page = self.start(("loop", "while True: pass"))
        begin = time.monotonic()
        self.assertEqual(self.broken(page, "loop"),
                         "The node's process did not answer within 10 seconds at this; it was undone.")
        self.assertLess(time.monotonic() - begin, 40)

    def test_a_callback_that_prints_without_an_end(self):
        page = self.start(("chatter", "while True: print('again ' * 1000)"))
        self.assertIn("did not answer within 10 seconds", self.broken(page, "chatter"))
        self.assertTrue(self.last_words.startswith("again again "))
        self.assertLess(len(self.last_words), 300000)

    def test_a_signal_in_the_middle_of_a_callback_without_an_end(self):
        page = self.start(("loop", "while True: pass"))
        page.node(TYPE)
        workers = page.workers()
        answers = []
        asked = threading.Thread(target=lambda: answers.append(page.request(
            "POST", "/api/edit", json.dumps({"type": TYPE, "action": "press", "token": "loop"}),
            {"Content-Type": "application/json"})[::2]))
        asked.start()
        time.sleep(0.5)
        begin = time.monotonic()
        self.assertEqual(page.close(), 0)
        self.assertLess(time.monotonic() - begin, 8)
        asked.join()
        self.assertEqual(answers, [(503, b'{"error":"The preview ends."}')])
        for pid in workers:
            self.assertFalse(os.path.exists("/proc/%d" % pid))

    def test_a_worker_that_somebody_kills(self):
        page = self.start()
        page.edit(TYPE, "set", token="amount", value=0.25)
        os.kill(page.workers()[0], 9)
        self.assertEqual(page.get("node", expect=500, type=TYPE)["error"],
                         "The node's process was killed by signal 9 at this; it was undone.")
        self.assertEqual(parm_of(page.node(TYPE), "amount")["values"], [0.25])

    def test_sys_exit_and_exceptions_end_the_callback_only(self):
        page = self.start(("leave", "import sys; sys.exit(3)"), ("raise", "raise ValueError('on purpose')"))
        for name, word in ("leave", "SystemExit"), ("raise", "ValueError: on purpose"):
            with self.subTest(name):
                answer = page.edit(TYPE, "press", token=name)
                self.assertIn(word, answer["console"])
        self.assertEqual(page.get("state")["generation"], 1)

    def test_a_callback_that_deletes_its_node_gets_a_new_one(self):
        page = self.start(("delete", "kwargs['node'].destroy()"))
        page.edit(TYPE, "set", token="amount", value=0.25)
        answer = page.edit(TYPE, "press", token="delete")
        self.assertEqual(answer["errors"], ["The edit deleted the node; a new one takes its place."])
        self.assertEqual(parm_of(answer, "amount")["values"], [0])

    def test_what_scripts_and_their_programs_write_is_shown(self):
        page = self.start(("speak", "import os, sys; print('printed'); sys.stderr.write('error\\n'); sys.stdout.flush();"
                                    "os.write(1, b'raw \\xff\\n'); os.system('echo program')"))
        console = page.edit(TYPE, "press", token="speak")["console"]
        for word in "printed", "error", "raw \ufffd", "program":
            self.assertIn(word + "\n", console)
        self.assertEqual(page.edit(TYPE, "set", token="amount", value=1)["console"], "")

    def test_hscript_callbacks_speak_too(self):
        page = self.preview_of([{"name": "amount", "type": "float", "default": 0}],
                               [("houdini.parm.button.say", "hscript:echo $script_parm says hello")])
        self.assertEqual(page.edit(TYPE, "press", token="say")["console"], "say says hello\n")

    def test_of_very_much_text_only_the_beginning_is_shown(self):
        page = self.start(("talk", "print('x' * 3000000)"))
        console = page.edit(TYPE, "press", token="talk")["console"]
        self.assertTrue(console.endswith("x\n... and more, which was left out\n"))
        self.assertLess(len(console), 300000)

    def test_programs_that_scripts_start_keep_nothing_open(self):
        page = self.start(("start", "import subprocess; subprocess.Popen(['sleep', '60'])"))
        page.edit(TYPE, "press", token="start")
        begin = time.monotonic()
        self.assertEqual(page.close(), 0)
        self.assertLess(time.monotonic() - begin, 8)

    def test_an_edit_of_another_node_is_kept_as_well(self):
        script = "hou.node(kwargs['node'].parent().path() + '/ramp_float1').parm('input').set(0.75)"
        page = self.start(("other", script), ("end", "import os; os._exit(1)"))
        page.node("korvan::ramp_float")
        page.edit(TYPE, "press", token="other")
        page.edit(TYPE, "press", expect=500, token="end")
        self.assertEqual(parm_of(page.node("korvan::ramp_float"), "input")["values"], [0.75])

    def test_everything_that_was_edited_comes_back(self):
        page = self.preview_of([{"name": "tint", "type": "rgb", "default": [1, 1, 1]},
                                {"name": "title", "type": "string", "default": "a"},
                                {"name": "knots", "type": "array", "element": "float", "default": []}],
                               [button("end", "import os; os._exit(1)")])
        page.edit(TYPE, "set", token="tint", value=[0.1, 0.2, 0.3])
        page.edit(TYPE, "expression", channel="tintb", text="$F", language="hscript")
        page.edit(TYPE, "set", token="title", value="$HIP \u00e4")
        page.edit(TYPE, "count", token="knots", count=3)
        page.edit(TYPE, "set", token="knots_3", value=9)
        page.edit("korvan::ramp_rgb", "ramp", token="ramp", keys=[{"position": 0.5, "value": [1, 2, 3], "interpolation": 5}])
        page.edit(TYPE, "wire", **{"input": 0, "from": {"type": "korvan::ramp_rgb", "output": 0}})
        before = [page.node(TYPE), page.node("korvan::ramp_rgb")]
        self.assertTrue(before[0]["inputs"][0]["connected"])
        page.edit(TYPE, "press", expect=500, token="end")
        self.assertEqual([page.node(TYPE), page.node("korvan::ramp_rgb")], before)
        self.assertEqual([n["type"] for n in page.get("nodes")], [TYPE, "korvan::ramp_rgb"])

    def test_bytes_that_are_no_utf_8_become_replacement_characters(self):
        page = self.preview_of([{"name": "title", "type": "string", "default": ""}],
                               [button("spoil", "kwargs['node'].parm('title').set('bad \\udcff here')")])
        answer = page.edit(TYPE, "press", token="spoil")
        self.assertEqual(parm_of(answer, "title")["value"], "bad \ufffd here")
        self.assertEqual(answer["records"][0]["parms"]["title"]["value"], "bad \ufffd here")


if __name__ == "__main__":
    unittest.main()
