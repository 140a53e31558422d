"""kshop list --timings, and the line that shows that long work goes on."""

import json
import os
import pty
import re
import subprocess
import threading
import unittest

from kshop_case import KSHOP, KshopCase

PHASES = {"host", "host plug-in", "entry point", "renderer start", "renderer plug-in", "metadata file", "type", "renderer end"}


def node(name, parameters=0, **metadata):
    return {"name": name, "kind": "shader", "output": "float",
            "parameters": [{"name": f"p{i}", "type": "float", "default": 1} for i in range(parameters)],
            "metadata": [{"key": k, "value": v} for k, v in metadata.items()]}


class Timings(KshopCase):
    def timings(self, **changes):
        return self.json_of("list", "--timings", **changes)["timings"]

    def subjects(self, timings, phase):
        return [p["subject"] for p in timings["phases"] if p["phase"] == phase]

    def test_add_up_to_the_whole_slowest_first(self):
        timings = self.timings()
        seconds = [p["seconds"] for p in timings["phases"]]
        self.assertEqual(seconds, sorted(seconds, reverse=True))
        self.assertGreaterEqual(min(seconds), 0)
        self.assertAlmostEqual(sum(seconds), timings["total_seconds"], delta=1e-6)
        self.assertEqual({p["phase"] for p in timings["phases"]}, PHASES)

    def test_have_each_plugin_each_metadata_file_and_each_type_once(self):
        timings = self.timings()
        environment = self.json_of("env")
        listed = self.json_of("list")["tables"]
        self.assertCountEqual(self.subjects(timings, "host plug-in"), [p["path"] for p in environment["plugins"]])
        self.assertCountEqual(self.subjects(timings, "renderer plug-in"), environment["renderer_plugins"])
        self.assertCountEqual(self.subjects(timings, "metadata file"), environment["metadata_files"])
        self.assertCountEqual(self.subjects(timings, "type"), [o["name"] for o in listed["Vop"] + listed["Shop"]])
        self.assertCountEqual(self.subjects(timings, "entry point"), ["newVopOperator", "newShopOperator"])

    def test_find_the_shader_that_takes_long_to_describe(self):
        nodes = [node(f"zelk__n{i}", 2) for i in range(20)] + [node("zelk__slow", 5000)]
        types = self.subjects(self.timings(KORVAN_CATALOGUE=self.catalogue(*nodes)), "type")
        self.assertEqual(types[0], "korvan::slow")

    def test_find_the_metadata_file_that_takes_long_to_read(self):
        slow = self.write("try/korvan/metadata/slow.mtd", "".join(f'["nobody"."k{i}"]\na = 1\n' for i in range(20000)))
        timings = json.loads(self.run_kshop("list", "--timings", "--json", HOUDINI_PATH=f"{self.scratch}/try;&").stdout)["timings"]
        self.assertEqual(timings["phases"][0]["subject"], str(slow))

    def test_count_what_is_not_registered_with_the_next_type(self):
        nodes = [node("zelk__skipped", 5, **{"houdini.skip": True}), node("zelk__kept")]
        types = self.subjects(self.timings(KORVAN_CATALOGUE=self.catalogue(*nodes)), "type")
        self.assertIn("korvan::kept", types)
        self.assertNotIn("korvan::skipped", types)

    def test_show_a_person_phases_and_the_sum_only_when_asked(self):
        text = self.output_of("list", "--timings")
        self.assertRegex(text, r"\nStart-up: \d+\.\d{3} ms\n")
        total, sum_shown = re.search(r"Start-up: (\S+) ms", text).group(1), re.search(r"  (\S+) ms in all, of (\S+) ms\n$", text)
        self.assertEqual(sum_shown.groups(), (total, total))
        self.assertRegex(text, r"\n +\S+ ms +\S+ % +renderer start\n")
        self.assertNotIn("Start-up", self.output_of("list"))
        self.assertNotIn("timings", self.json_of("list"))


class Progress(KshopCase):
    """Standard error is a terminal, or is not."""

    def on_terminal(self, *arguments, **changes):
        """Standard output, and what the terminal got."""
        master, slave = pty.openpty()
        with subprocess.Popen([str(KSHOP), *map(str, arguments)], stdout=subprocess.PIPE, stderr=slave, text=True,
                              env=self.environment(**changes)) as run:
            os.close(slave)
            shown = b""
            output = []
            reader = threading.Thread(target=lambda: output.append(run.stdout.read()))
            reader.start()
            while True:
                try:
                    part = os.read(master, 4096)
                except OSError: # a terminal that nobody writes to any more
                    break
                if not part:
                    break
                shown += part
            reader.join()
        os.close(master)
        self.assertEqual(run.returncode, 0, shown)
        return output[0], shown.decode()

    def many(self):
        """More than any machine registers in half a second."""
        return self.catalogue(*(node(f"zelk__n{i}", 12, **{"houdini.label": f"N {i}"}) for i in range(40000)))

    def test_is_shown_while_many_types_register_and_are_described_and_is_erased(self):
        catalogue = self.many()
        output, shown = self.on_terminal("list", "--json", KORVAN_CATALOGUE=catalogue)
        self.assertGreaterEqual(len(json.loads(output)["tables"]["Vop"]), 40000)
        erase = "\r\x1b[K"
        self.assertRegex(shown, r"\r\x1b\[Kregistering \d+,\d{3} types\r")
        self.assertTrue(shown.endswith("types\r" + erase), shown[-100:])
        self.assertEqual(re.sub(r"\r\x1b\[K((registering|looking at) [\d,]+ types\r)?", "", shown), "")
        quiet = self.run_kshop("list", "--json", KORVAN_CATALOGUE=catalogue)
        self.assertEqual((quiet.stderr, quiet.stdout), ("", output))

    def test_is_not_shown_for_quick_work(self):
        self.assertEqual(self.on_terminal("list", "--json", KORVAN_CATALOGUE=self.catalogue(node("zelk__one")))[1], "")


if __name__ == "__main__":
    unittest.main()
