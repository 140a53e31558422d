"""kshop python: scripts inside the host."""

import unittest

from kshop_case import KshopCase


class Python(KshopCase):
    def test_runs_a_script_with_its_own_arguments(self):
        script = self.write("args.py", "import sys\nprint(sys.argv[1:])\n")
        self.assertEqual(self.output_of("python", script, "--help", "-x", "--json", "a b"),
                         "['--help', '-x', '--json', 'a b']\n")

    def test_gives_the_script_hou_and_the_registered_types(self):
        script = self.write("types.py", "import hou\nnet = hou.node('/shop').createNode('korvan_vopnet')\n"
                                        "print(net.type().name(), 'korvan::image' in hou.vopNodeTypeCategory().nodeTypes())\n")
        self.assertEqual(self.output_of("python", script), "korvan_vopnet True\n")

    def test_ends_with_the_status_of_the_script(self):
        script = self.write("exit.py", "import sys\nsys.exit(7)\n")
        self.assertEqual(self.run_kshop("python", script).returncode, 7)

    def test_shows_the_traceback_of_a_script_that_fails(self):
        script = self.write("fails.py", "import hou\nhou.node('/shop').createNode('no_such_type')\n")
        shown = self.failure_of("python", script)
        self.assertIn("Traceback", shown)
        self.assertIn("no_such_type", shown)
        self.assertIn("OperationFailed", shown)

    def test_runs_standard_input(self):
        self.assertEqual(self.output_of("python", "-", stdin="print(hou.node('/shop').path())\n"), "/shop\n")
        self.assertEqual(self.output_of("python", stdin="print(6 * 7)\n"), "42\n")

    def test_runs_in_the_directory_of_the_caller(self):
        script = self.write("where.py", "import os\nprint(os.getcwd())\n")
        self.assertEqual(self.output_of("python", script, cwd=self.scratch), f"{self.scratch}\n")

    def test_does_not_hand_its_own_settings_to_the_script(self):
        script = self.write("env.py", "import os\nprint(os.environ.get('ZELK_STARTUP_LOG'))\n")
        self.assertEqual(self.output_of("python", script), "None\n")

    def test_names_a_script_that_cannot_be_read(self):
        self.assertEqual(self.failure_of("python", "nowhere.py"),
                         "kshop: cannot read the script nowhere.py: No such file or directory\n")
        self.assertEqual(self.failure_of("python", self.scratch),
                         f"kshop: {self.scratch} is a directory; give the path of a Python script\n")

    def test_names_a_script_that_is_no_text(self):
        script = self.scratch / "wide.py"
        script.write_bytes("print(1)\n".encode("utf-16"))
        sentence = "holds a null byte, so it is no Python script. Save it as UTF-8 text.\n"
        self.assertEqual(self.failure_of("python", script), f"ValueError: {script} {sentence}")
        self.assertEqual(self.failure_of("python", "-", stdin="\0"), f"ValueError: standard input {sentence}")


if __name__ == "__main__":
    unittest.main()
