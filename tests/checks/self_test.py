"""Proves of each check that it passes a good tree and fails a bad one."""

import pathlib
import shutil
import subprocess
import tempfile
import unittest

import documented_keys
import exported_symbols
import include_arrows
import plain_words
import porting_listed
import source_format
import strict_cxx11
import tests_named
import units_tested


class Tree:
    """A source tree made for one test."""

    def __init__(self, case):
        directory = tempfile.TemporaryDirectory()
        case.addCleanup(directory.cleanup)
        self.root = pathlib.Path(directory.name).resolve()

    def write(self, name, text):
        file = self.root / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
        return file


class IncludeArrows(unittest.TestCase):
    def found(self, name, text, *more):
        tree = Tree(self)
        for other in more:
            tree.write(other, "")
        tree.write(name, text)
        return include_arrows.findings(tree.root)

    def test_let_the_plug_in_include_host_renderer_and_library(self):
        text = '#include "utils.h"\n#include <PRM/PRM_Template.h>\n#include <kr.h>\n#include <zelk/ipr/delta.h>\n#include <map>\n'
        self.assertEqual(self.found("src/shop/utils.cpp", text, "src/shop/utils.h"), [])

    def test_refuse_the_plug_in_a_header_that_only_the_stand_ins_have(self):
        for name in ("standin/host.h", "kr_observe.h", "kr_plugin.h", "fmt/core.h", "optional", "regexes"):
            with self.subTest(name):
                self.assertEqual(self.found("src/shop/a.cpp", f"\n#include <{name}>\n"),
                                 [f"src/shop/a.cpp:2: src/shop may not include {name}"])

    def test_refuse_a_stand_in_the_plug_in_and_the_other_stand_in(self):
        self.assertEqual(len(self.found("standin/host/src/a.cpp", "#include <kr.h>\n")), 1)
        self.assertEqual(len(self.found("standin/renderer/src/a.cpp", "#include <OP/OP_Node.h>\n")), 1)
        self.assertEqual(len(self.found("standin/common/a.cpp", "#include <kr.h>\n")), 1)
        self.assertEqual(len(self.found("standin/host/src/a.cpp", '#include "../../../src/shop/utils.h"\n',
                                        "src/shop/utils.h")), 1)

    def test_refuse_a_tool_that_includes_or_links_the_plug_in(self):
        self.assertEqual(len(self.found("tools/kshop/a.cpp", '#include "shader_desc.h"\n', "src/shop/shader_desc.h")), 1)
        self.assertEqual(self.found("tools/kshop/CMakeLists.txt", "target_link_libraries(kshop PRIVATE korvan_shop_objects)\n"),
                         ["tools/kshop/CMakeLists.txt:1: nothing here may link or include the plug-in"])


class ExportedSymbols(unittest.TestCase):
    def found(self, code):
        compiler = shutil.which("cc") or shutil.which("gcc") or shutil.which("g++")
        tree = Tree(self)
        source = tree.write("a.c", code)
        library = tree.root / "a.so"
        subprocess.run([compiler, "-shared", "-fPIC", "-x", "c", str(source), "-o", str(library)], check=True)
        return exported_symbols.findings(str(library))

    def test_pass_the_agreed_names_alone(self):
        self.assertEqual(self.found("".join(f"void {n}(void) {{}}\n" for n in exported_symbols.AGREED)), [])

    def test_name_what_is_missing_and_what_is_too_much(self):
        found = self.found("void newVopOperator(void) {}\nvoid extra(void) {}\n")
        self.assertEqual(len(found), 5)
        self.assertIn("exports extra, which nobody agreed to", found[0])


class SourceFormat(unittest.TestCase):
    def found(self, text):
        tree = Tree(self)
        tree.write(".clang-format", "BasedOnStyle: LLVM\n")
        tree.write("src/a.cpp", text)
        return source_format.findings(tree.root)

    def test_pass_formatted_code(self):
        self.assertEqual(self.found("int a = 1;\n"), [])

    def test_name_the_first_line_that_is_not(self):
        self.assertEqual(self.found("int a = 1;\nint   b=2;\nint   c=2;\n"),
                         ["src/a.cpp:2: not formatted; run script/format"])


class PlainWords(unittest.TestCase):
    def found(self, text):
        tree = Tree(self)
        tree.write("docs/a.md", text)
        return plain_words.findings(tree.root)

    def test_pass_ordinary_text(self):
        self.assertEqual(self.found("Ignoring invalid LOD specification: x\nWorks with parts of version 1.2.\n"), [])

    def test_find_each_kind_of_word(self):
        for text in ("see Part " + "2.3", "as the " + "specification says", "in the " + "spec", "spec" + ".md",
                     "/work" + "/main", "/root" + "/x", "issue " + "2", "the " + "brief", "sub" + "agent"):
            with self.subTest(text):
                self.assertTrue(self.found("fine\n" + text + "\n"))


class UnitsTested(unittest.TestCase):
    def test_want_a_test_file_for_each_unit_but_not_for_its_companions(self):
        tree = Tree(self)
        for name in ("src/shop/desc.cpp", "src/shop/desc_templates.cpp", "src/shop/utils.cpp", "tests/unit/utils_test.cpp"):
            tree.write(name, "")
        self.assertEqual(units_tested.findings(tree.root), ["src/shop/desc.cpp has no test; write tests/unit/desc_test.cpp"])


class DocumentedKeys(unittest.TestCase):
    MIN_AND_MAX = "| `min`, `max` | number | none | bounds |\n"

    def found(self, document, source, *linted):
        tree = Tree(self)
        tree.write("docs/metadata.md", document)
        tree.write("src/shop/a.cpp", source)
        tree.write("tools/kshop/lint/known_keys.cpp",
                   "".join('{KeyOwner::Parameter, "%s", KR_TYPE_%s, ""},\n' % row for row in linted))
        return documented_keys.findings(tree.root)

    def test_pass_when_all_sides_agree(self):
        self.assertEqual(self.found(self.MIN_AND_MAX, 'f("min"); f("max");\n', ("min", "FLOAT"), ("max", "FLOAT")), [])

    def test_name_a_key_that_only_one_side_has(self):
        self.assertEqual(len(self.found("| `houdini.lod` | text | none | detail |\n", 'f("houdini.icon");\n',
                                        ("houdini.lod", "STRING"))), 2)

    def test_name_a_key_that_lint_does_not_know_or_alone_knows(self):
        self.assertEqual(len(self.found(self.MIN_AND_MAX, 'f("min"); f("max");\n', ("min", "FLOAT"),
                                        ("maximum", "FLOAT"))), 2)

    def test_name_a_key_whose_kind_lint_takes_for_another(self):
        self.assertEqual(len(self.found(self.MIN_AND_MAX, 'f("min"); f("max");\n', ("min", "FLOAT"),
                                        ("max", "STRING"))), 2)


class TestsNamed(unittest.TestCase):
    def found(self, row, comment="", bad_input="| nothing | nothing | `Ramp.Stays` |\n",
              live_updates="| a key | the ramp | `Ramp.Stays` |\n"):
        tree = Tree(self)
        tree.write("tests/README.md", f"Text.\n\n| what must hold | the tests |\n|---|---|\n{row}")
        tree.write("docs/bad-input.md", f"| what is wrong | what is seen | the tests |\n|---|---|---|\n{bad_input}")
        tree.write("docs/live-updates.md", f"| what is edited | what is sent | held by |\n|---|---|---|\n{live_updates}")
        tree.write("tests/unit/a_test.cpp", "TEST(Ramp, Stays)\n{\n}\nTEST_P(Ramp,\n       Grows)\n{\n}\n")
        tree.write("tests/python/a_test.py", "class Wires(Case):\n    def test_hold(self):\n        pass\n")
        tree.write("tests/preview/a_test.mjs", 'pageTest("a page, seen", TYPE, run);\n')
        tree.write("src/shop/a.cpp", comment)
        return tests_named.findings(tree.root)

    def test_pass_names_of_both_languages(self):
        self.assertEqual(self.found("| it holds | `Ramp.Stays`, `Ramp.Grows`, `python/a_test.py::Wires.test_hold` |\n",
                                    "// Deliberate; see\n// Ramp.Stays, and see\n// utils.h.\n"), [])

    def test_pass_names_of_the_page(self):
        self.assertEqual(self.found("| it holds | `preview/a_test.mjs::a page, seen` |\n"), [])

    def test_find_names_that_nothing_has(self):
        for name in ("Ramp.Falls", "Other.Stays", "python/a_test.py::Wires.test_break", "a_test.py::Wires.test_hold",
                     "Wires.test_hold", "preview/a_test.mjs::a page", "preview/b_test.mjs::a page, seen"):
            with self.subTest(name):
                self.assertEqual(self.found(f"| it holds | `Ramp.Stays`, `{name}` |\n"),
                                 [f"tests/README.md:5: there is no test {name}"])

    def test_find_rows_without_a_test_and_a_table_without_rows(self):
        self.assertEqual(self.found("| `Ramp.Stays` holds | later |\n"), ["tests/README.md:5: names no test"])
        self.assertEqual(len(self.found("")), 1)

    def test_find_rows_of_bad_input_without_a_test(self):
        holds = "| it holds | `Ramp.Stays` |\n"
        self.assertEqual(self.found(holds, bad_input="| no `a.b` | `Ramp.Stays` | later |\n"),
                         ["docs/bad-input.md:3: names no test"])
        self.assertEqual(self.found(holds, bad_input="| it | seen | `Ramp.Falls` |\n"),
                         ["docs/bad-input.md:3: there is no test Ramp.Falls"])

    def test_find_rows_of_live_updates_whose_test_is_gone(self):
        self.assertEqual(self.found("| it holds | `Ramp.Stays` |\n", live_updates="| a key | the ramp | `Ramp.Falls` |\n"),
                         ["docs/live-updates.md:3: there is no test Ramp.Falls"])

    def test_find_comments_that_point_to_no_test(self):
        self.assertEqual(self.found("| it holds | `Ramp.Stays` |\n", "int a;\n// Deliberate. See\n// Ramp.Falls.\n"),
                         ["src/shop/a.cpp:2: there is no test Ramp.Falls"])


class PortingListed(unittest.TestCase):
    HEADER = """class OP_EXPORT OP_Node
{
public:
    explicit OP_Node(const char* text) : m_text(text) {}
    unsigned nOutputs(int output) const { return counted(output); }
    enum Kind { KIND_ONE = 1, KIND_TWO };
private:
    int hidden() const;
};
typedef int OP_Count;
#define OP_ALL 9
"""
    ROWS = "### OP/OP_Node.h\n\n| names | use | place |\n|---|---|---|\n"

    def found(self, code, rows, uncertain=""):
        tree = Tree(self)
        tree.write("standin/host/include/OP/OP_Node.h", self.HEADER)
        tree.write("standin/host/include/standin/host.h", "void look();\n")
        tree.write("src/shop/a.cpp", code)
        tree.write("docs/porting.md", f"## Uncertain uses\n\n| names | why |\n|---|---|\n{uncertain}\n{self.ROWS}{rows}")
        return porting_listed.findings(tree.root)

    def test_pass_a_page_that_lists_what_is_used(self):
        self.assertEqual(self.found("int look = OP_Node(0).hidden(); // nOutputs\n", "| `OP_Node` | a class | `a.cpp` |\n"), [])

    def test_find_each_kind_of_name(self):
        for name in ("nOutputs", "KIND_TWO", "OP_Count", "OP_ALL"):
            with self.subTest(name):
                self.assertEqual(self.found(f"OP_Node {name};\n", "| `OP_Node` | a class | |\n"),
                                 [f"src/shop/a.cpp: uses {name} of OP/OP_Node.h, which docs/porting.md does not list"])

    def test_find_a_name_that_nothing_uses_and_a_place_that_is_gone(self):
        self.assertEqual(self.found("OP_Node n;\n", "| `OP_Node` `nOutputs` | x | `b.cpp` |\n"),
                         ["docs/porting.md:10: nOutputs is no name of the platform that src/shop uses",
                          "docs/porting.md:10: there is no src/shop/b.cpp"])

    def test_find_a_function_and_a_table_that_are_gone(self):
        row = "| `OP_Node` | a class | {} |\n"
        for place in ("`a.cpp`: shown()", "`a.cpp`: Shown::kept()", "`a.cpp`: shown", "`a.cpp`; the table shown_rows",
                      "each shown()"):
            with self.subTest(place):
                code = "OP_Node shown_rows[] = {Shown::kept()};\nvoid shown();\n"
                self.assertEqual(self.found(code, row.format(place)), [])
                self.assertRegex("".join(self.found("OP_Node n;\n", row.format(place))),
                                 "^docs/porting.md:10: there is no (shown|shown_rows|kept) in src/shop/(a.cpp)?$")

    def test_say_where_a_name_is_used_when_the_page_says_otherwise(self):
        row = "| `OP_Node` | a class | sure | {} | |\n"
        self.assertEqual(self.found("OP_Node n;\n", row.format("a")), [])
        self.assertEqual(self.found("OP_Node n;\n", row.format("b")), ["docs/porting.md:10: OP_Node: used in: a"])

    def test_find_a_header_without_a_heading(self):
        tree = Tree(self)
        tree.write("standin/renderer/include/kr.h", "")
        tree.write("src/shop/a.cpp", "#include <kr.h>\n#include <map>\n")
        tree.write("docs/porting.md", self.ROWS)
        self.assertEqual(porting_listed.findings(tree.root),
                         ["src/shop/a.cpp: includes kr.h, which has no heading in docs/porting.md"])

    def test_find_an_uncertain_name_that_only_one_table_calls_so(self):
        marked = "| `nOutputs` | **U** | |\n"
        self.assertEqual(self.found("int n = nOutputs;\n", marked, "| `nOutputs` | why |\n"), [])
        self.assertEqual(len(self.found("int n = nOutputs;\n", marked)), 1)
        self.assertEqual(len(self.found("int n = nOutputs;\n", marked.replace("**", ""), "| `nOutputs` | why |\n")), 1)

    def test_find_an_uncertain_name_in_two_files_and_more_than_a_dozen(self):
        tree = Tree(self)
        tree.write("standin/host/include/OP/OP_Node.h", self.HEADER)
        tree.write("src/shop/a.cpp", "int n = nOutputs;\n")
        tree.write("src/shop/b.cpp", "int n = nOutputs;\n")
        rows = "| `nOutputs` | why |\n" + 12 * "| something | why |\n"
        tree.write("docs/porting.md", "## Uncertain uses\n\n| names | why |\n|---|---|\n" + rows + self.ROWS + "| `nOutputs` | **U** | |\n")
        self.assertEqual(porting_listed.findings(tree.root),
                         ["docs/porting.md:5: nOutputs is uncertain and used in src/shop/a.cpp, src/shop/b.cpp",
                          "docs/porting.md: 13 uncertain uses; there may be 12"])


class StrictCxx11(unittest.TestCase):
    def found(self, code, compilers=None):
        tree = Tree(self)
        tree.write("standin/renderer/include/kr.h", "inline int unused(int a) { return a; }\n")
        tree.write("src/shop/a.cpp", code)
        return strict_cxx11.findings(tree.root, compilers or [shutil.which("g++") or shutil.which("c++")])

    def test_pass_plain_code(self):
        self.assertEqual(self.found("#include <kr.h>\nint f() { return unused(1); }\n"), [])

    def test_name_the_line_that_is_no_cxx11_or_has_a_warning(self):
        for code in ("auto f() { return 1; }\n", "int f(int a) { return 1; }\n", "int f(int n) { int a[n]; return a[0]; }\n"):
            with self.subTest(code):
                self.assertRegex(self.found(code)[0], r"^src/shop/a.cpp:1:.* error: .*\(\S+\)$")

    def test_do_not_pass_without_a_compiler(self):
        tree = Tree(self)
        tree.write("src/shop/a.cpp", "int a;\n")
        self.assertEqual(len(strict_cxx11.findings(tree.root, [])), 1)


if __name__ == "__main__":
    unittest.main()
