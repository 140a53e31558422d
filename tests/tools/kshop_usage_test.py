"""kshop as a program: help, wrong usage, missing plug-ins, output that cannot be written."""

import subprocess
import unittest

from kshop_case import KSHOP, KshopCase

COMMANDS = ("list", "describe", "python", "env", "tab", "listen", "replay", "keys")


class Usage(KshopCase):
    def test_helps_with_every_command_and_gives_examples(self):
        for arguments in ((), *((command,) for command in COMMANDS)):
            with self.subTest(arguments):
                text = self.output_of(*arguments, "--help")
                self.assertIn("Examples:", text)
                self.assertIn("kshop " + " ".join(arguments), text)

    def test_lists_its_commands_in_its_help(self):
        text = self.output_of("--help")
        for command in COMMANDS:
            self.assertRegex(text, rf"(?m)^  {command} ")

    def test_ends_with_status_2_on_wrong_usage(self):
        for arguments in ((), ("nonsense",), ("list", "--nonsense"), ("--nonsense", "list"), ("tab",),
                          ("python", "--nonsense"), ("--dso",), ("list", "surplus"),
                          ("listen", "surplus"), ("replay",), ("keys",), ("python", "--deltas")):
            with self.subTest(arguments):
                run = self.run_kshop(*arguments)
                self.assertEqual((run.returncode, run.stdout), (2, ""), run.stderr)
                self.assertIn("--help", run.stderr)

    def test_names_a_plug_in_path_that_does_not_exist(self):
        self.assertEqual(self.failure_of("--dso", "/nowhere/x.so", "list"),
                         "kshop: --dso: there is no file or directory /nowhere/x.so\n")

    def test_loads_just_the_plug_in_that_is_named(self):
        plugin = KSHOP.parents[1] / "dso" / "korvan_shop.so"
        environment = self.json_of("--dso", plugin, "env")
        self.assertEqual([p["path"] for p in environment["plugins"]], [str(plugin)])
        self.assertIn("korvan::image", self.output_of("--dso", plugin, "list"))

    def test_tells_when_no_plug_in_could_be_loaded(self):
        for command in ("list", "describe"):
            with self.subTest(command):
                run = self.run_kshop(command, HOUDINI_DSO_PATH=self.scratch)
                self.assertEqual((run.returncode, run.stdout), (1, ""))
                self.assertEqual(run.stderr, f"kshop: no plug-in could be loaded; looked in: {self.scratch}. "
                                             "'kshop env' tells more, and --dso names one\n")

    def test_tells_of_a_search_path_that_leaves_out_its_own_plug_in(self):
        shown = self.failure_of("list", HOUDINI_PATH=self.scratch)
        self.assertEqual(shown, f"kshop: no plug-in could be loaded; looked in: {self.scratch}/dso. HOUDINI_PATH has no '&', "
                                f"which stands for what is searched without it: write \"{self.scratch};&\". "
                                "'kshop env' tells more, and --dso names one\n")

    def test_names_a_file_that_is_no_plug_in_and_tells_why(self):
        plugin = self.write("dso/text.so", "this is no shared object\n")
        shown = self.failure_of("--dso", plugin.parent, "list")
        self.assertIn(str(plugin), shown)
        self.assertIn("no plug-in could be loaded", shown)
        [report] = [p for p in self.json_of_failing_env(plugin.parent)["plugins"]]
        self.assertEqual((report["path"], report["loaded"]), (str(plugin), False))
        self.assertTrue(report["reason"])

    def json_of_failing_env(self, directory):
        import json
        return json.loads(self.run_kshop("--dso", directory, "env", "--json").stdout)

    def test_is_quiet_when_the_reader_goes_away(self):
        for how in (f"'{KSHOP}' describe --json | head -c 1 >/dev/null",
                    f"trap '' PIPE; '{KSHOP}' describe --json | head -c 1 >/dev/null"):
            with self.subTest(how):
                run = subprocess.run(["bash", "-c", how], capture_output=True, text=True, env=self.environment())
                self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_tells_when_the_output_cannot_be_written(self):
        with open("/dev/full", "w") as full:
            run = subprocess.run([str(KSHOP), "describe", "--json"], stdout=full, stderr=subprocess.PIPE, text=True,
                                 env=self.environment())
        self.assertEqual((run.returncode, run.stderr), (1, "kshop: cannot write the output: No space left on device\n"))

    def test_shows_its_version(self):
        self.assertRegex(self.output_of("--version"), r"^kshop \d+\.\d+\.\d+\n$")


if __name__ == "__main__":
    unittest.main()
