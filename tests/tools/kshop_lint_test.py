"""kshop lint as a command: what it prints, its exit status, which files it looks at."""

import json
import pathlib
import sys
import time
import unittest

from kshop_case import TREE
from lint_case import ARRAYS, LintCase, USUAL, parameter, shader, table

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "model"))
import random_catalogue  # noqa: E402

SCHEMA = pathlib.Path(__file__).parents[2] / "docs" / "schemas" / "lint.schema.json"
ERROR = parameter("f", "min = 2", "max = 1")
WARNING = table('"houdini.lod" = "x"')


class Library(LintCase):
    def test_of_the_tree_lints_clean(self):
        files = len(list((TREE / "korvan" / "metadata").glob("*.mtd")))
        self.assertEqual(self.output_of("lint"), "nothing found in %d files\n" % files)


class Text(LintCase):
    def test_has_place_severity_owner_rule_effect_and_remedy(self):
        file = self.metadata(ERROR)
        run = self.run_lint()
        self.assertEqual(run.returncode, 1)
        self.assertIn(f'{file}:2:1: error: zelk__x.f: "min" is 2 and "max" is 1 [min-above-max]\n'
                      "    No value is between them: the field cannot hold what is typed, and the slider is inverted.\n"
                      "    Exchange or correct the two.\n", run.stdout)

    def test_ends_with_how_many_there_are(self):
        self.metadata(ERROR + WARNING)
        self.assertEqual(self.run_lint().stdout.splitlines()[-1], "1 error, 1 warning, 3 pieces of advice in 1 file")

    def test_shows_no_control_characters_of_a_file(self):
        self.metadata(table(r'"houdini.lod" = "x\u001b[31m"'))
        self.assertNotIn("\x1b", self.run_lint().stdout)

    def test_is_sorted_by_place(self):
        self.metadata(table('"houdini.order" = "q"', '"houdini.lod" = "x"'), "b.mtd")
        self.metadata(ERROR, "a.mtd")
        places = [line.split(": ")[0].rsplit("/")[-1] for line in self.run_lint().stdout.splitlines()
                  if line.startswith("/") and ": advice" not in line]
        self.assertEqual(places, ["a.mtd:2:1", "b.mtd:2:1", "b.mtd:3:1"])

    def test_is_the_same_from_run_to_run(self):
        self.metadata(ERROR + WARNING)
        self.assertEqual(self.run_lint().stdout, self.run_lint().stdout)


class Status(LintCase):
    def test_is_0_without_errors(self):
        self.metadata(WARNING)
        self.assertEqual(self.run_lint().returncode, 0)

    def test_is_1_with_errors(self):
        self.metadata(ERROR)
        self.assertEqual(self.run_lint("--json").returncode, 1)

    def test_is_1_with_warnings_when_strict(self):
        self.metadata(WARNING)
        self.assertEqual(self.run_lint("--strict").returncode, 1)

    def test_is_0_with_advice_however_strict(self):
        self.metadata(table())
        run = self.run_lint("--strict")
        self.assertIn("0 errors, 0 warnings, 3 pieces", run.stdout)
        self.assertEqual(run.returncode, 0)


class Files(LintCase):
    def test_that_are_on_no_path_are_loaded_too(self):
        file = self.write("elsewhere/mine.mtd", ERROR)
        run = self.run_lint(file)
        self.assertIn(f"{file}:2:1: error", run.stdout)
        self.assertIn("1 error,", run.stdout)

    def test_are_what_the_plugin_sees_too(self):
        file = self.write("elsewhere/mine.mtd", table('"houdini.parm.folder.tabs" = "Main;20"'))
        run = self.run_lint(file)
        self.assertIn("[folder-short]", run.stdout)

    def test_are_named_as_the_person_named_them(self):
        self.write("elsewhere/mine.mtd", ERROR)
        surroundings = self.surroundings(USUAL)
        run = self.run_kshop(*self.plugin(), "lint", "elsewhere/mine.mtd", cwd=self.scratch, **surroundings)
        self.assertTrue(run.stdout.startswith("elsewhere/mine.mtd:1"), run.stdout)

    def test_are_alone_looked_at(self):
        other = shader({"name": "f", "type": "float"}, name="zelk__y")
        self.metadata('["zelk__y"]\n"houdini.lod" = "x"\n', "other.mtd")
        file = self.write("elsewhere/mine.mtd", ERROR)
        run = self.run_lint(file, nodes=(USUAL, other))
        self.assertNotIn("zelk__y", run.stdout)
        self.assertIn("zelk__y", self.run_lint(nodes=(USUAL, other)).stdout)

    def test_bring_in_what_others_say_about_their_shaders(self):
        self.metadata(WARNING, "other.mtd")
        run = self.run_lint(self.write("elsewhere/mine.mtd", table()))
        self.assertIn("[level-of-detail]", run.stdout)

    def test_on_the_path_are_not_loaded_twice(self):
        early = self.metadata(parameter("f", "min = 2", "max = 1"), "a.mtd")
        self.metadata(parameter("f", "min = 0"), "b.mtd")
        self.assertNotIn("[min-above-max]", self.run_lint(early).stdout)

    def test_that_are_named_twice_are_wrong_once(self):
        file = self.write("elsewhere/mine.mtd", "oops\n")
        self.assertIn("1 error,", self.run_lint(file, file).stdout)

    def test_leave_nothing_behind(self):
        temporary = self.scratch / "tmp"
        temporary.mkdir()
        self.run_lint(self.write("elsewhere/mine.mtd", ERROR), TMPDIR=temporary)
        self.assertEqual(list(temporary.iterdir()), [])

    def test_that_cannot_be_looked_at_get_a_sentence(self):
        for name, sentence in ((self.scratch / "no.mtd", "there is no file"), (self.scratch, "is a directory"),
                               (self.write("x.txt", ""), "does not end with .mtd")):
            with self.subTest(sentence):
                run = self.run_lint(name)
                self.assertEqual((run.returncode, run.stdout), (1, ""))
                self.assertIn(sentence, run.stderr)
                self.assertIn(str(name), run.stderr)

    def test_a_directory_for_the_links_that_cannot_be_made_gets_a_sentence(self):
        run = self.run_lint(self.write("elsewhere/mine.mtd", ERROR), TMPDIR="/nowhere")
        self.assertEqual(run.returncode, 1)
        self.assertIn("TMPDIR", run.stderr)


class Json(LintCase):
    def validator(self):
        import jsonschema
        schema = json.loads(SCHEMA.read_text(encoding="utf-8"))
        jsonschema.Draft202012Validator.check_schema(schema)
        return jsonschema.Draft202012Validator(schema)

    def findings(self, *arguments):
        return json.loads(self.run_lint("--json", *arguments).stdout)

    def test_fits_its_schema(self):
        self.metadata(ERROR + WARNING)
        found = self.findings()
        self.assertEqual(list(self.validator().iter_errors(found)), [])
        self.assertGreater(len(found["findings"]), 3)

    def test_with_another_field_or_severity_does_not_fit(self):
        self.metadata(ERROR)
        for change in ({"severity": "fatal"}, {"line": 0}, {"more": 1}):
            with self.subTest(change):
                found = self.findings()
                found["findings"][0].update(change)
                self.assertNotEqual(list(self.validator().iter_errors(found)), [])

    def test_has_all_fields_in_order(self):
        self.metadata(ERROR)
        self.assertEqual(list(self.findings()["findings"][0]),
                         ["rule", "severity", "file", "line", "column", "shader", "parameter", "message", "effect",
                          "remedy"])

    def test_is_utf8_whatever_the_file_holds(self):
        surroundings = self.surroundings(USUAL)
        self.metadata("").write_bytes(table('"houdini.lod" = "@"').encode().replace(b"@", b"\xff"))
        run = self.run_kshop(*self.plugin(), "lint", "--json", **surroundings)
        self.assertIn("findings", json.loads(run.stdout))


class EveryMessage(LintCase):
    """What the plug-in complains about is found, and found in the right place."""

    CASES = [table('"houdini.parm.toggle" = "on"'), table('"houdini.parm.ramp_rgb.r" = "a b"'),
             table('"houdini.parm.folder.t" = ";"'), table('"houdini.parm.folder.t" = "A;1;B"'),
             table('"houdini.parm.menu.m" = "a;A;b"'), parameter("e", '"houdini.menu" = "a;A;b"'),
             parameter("s", '"houdini.type" = "menu:x:menu"'), parameter("s", '"houdini.type" = "menu:single:x"')]

    def test_of_the_plugin_has_its_finding(self):
        surroundings = self.surroundings(USUAL)
        for text in self.CASES:
            with self.subTest(text):
                self.metadata(text)
                run = self.run_kshop(*self.plugin(), "describe", "--json", **surroundings)
                said = [m for m in json.loads(run.stdout)["messages"] if m["severity"] != "info"]
                found = [f for f in self.lint(text) if f["severity"] != "advice" and f["line"] == 2]
                self.assertTrue(said and found, (said, found))


class Many(LintCase):
    def test_random_shaders_lint_without_a_crash(self):
        for seed in range(5):
            with self.subTest(seed):
                file = self.scratch / "random.json"
                random_catalogue.write_catalogue(file, seed, 100)
                run = self.run_kshop(*self.plugin(), "lint", "--json", **dict(self.surroundings(),
                                                                            KORVAN_CATALOGUE=file))
                self.assertIn(run.returncode, (0, 1), run.stderr)
                self.assertGreater(len(json.loads(run.stdout)["findings"]), 10)

    def test_are_quick(self):
        nodes = [shader(*ARRAYS, *USUAL["parameters"], name=f"zelk__n{i}") for i in range(700)]
        surroundings = self.surroundings(*nodes)
        begin = time.monotonic()
        run = self.run_kshop(*self.plugin(), "lint", "--json", **surroundings)
        self.assertEqual(run.returncode, 0)
        self.assertEqual(len(json.loads(run.stdout)["findings"]), 2100)
        # Ten times what it takes on an idle machine.
        self.assertLess(time.monotonic() - begin, 10)


if __name__ == "__main__":
    unittest.main()
