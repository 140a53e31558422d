"""The installed directory and the tarball: either works wherever it is put, with nothing of the build left."""

import os
import pathlib
import re
import subprocess
import tarfile
import unittest

from kshop_case import TREE, KshopCase

SOURCES = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["BUILD_DIR"]).resolve()

# What is mapped while the plug-in is loaded and a shader is described.
MAPPED = """
import hou
assert hou.vopNodeTypeCategory().nodeTypes()
print(*sorted({line.split(None, 5)[5].strip() for line in open("/proc/self/maps") if line.count("/")}), sep="\\n")
"""

EXPECTED = {"bin/kshop", "dso/korvan_shop.so", "korvan/metadata/surfaces.mtd", "korvan/plugins/korvan_catalogue.so",
            "korvan/plugins/korvan_shaders.so", "lib/libHoudiniOP1.so", "lib/libHoudiniOP2.so", "lib/libkr.so",
            "lib/libzelk_ipr.so", "python/hou/__init__.py"}


def run(*command, **options):
    return subprocess.run([str(c) for c in command], capture_output=True, text=True, check=True, **options)


def is_elf(file):
    with file.open("rb") as stream:
        return stream.read(4) == b"\x7fELF"


class InstalledTree:
    """The tests of one tree, which a class of this kind has put below `scratch` and then moved."""

    def put_tree(self, place):
        raise NotImplementedError

    def setUp(self):
        super().setUp()
        self.put_tree(self.scratch / "first")
        self.root = self.scratch / "another place/tree"
        self.root.parent.mkdir()
        (self.scratch / "first").rename(self.root)

    def run_there(self, *arguments, **changes):
        """Output of that tree's kshop, which succeeds without a word; nothing in its environment knows the build."""
        environment = {"PATH": "/usr/bin:/bin", "HOME": str(self.scratch), **changes}
        done = subprocess.run([str(self.root / "bin/kshop"), *map(str, arguments)], cwd=self.scratch, env=environment,
                              capture_output=True, text=True, timeout=120, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, ""), arguments)
        return done.stdout

    def elf_files(self):
        return [file for file in sorted(self.root.rglob("*")) if file.is_file() and is_elf(file)]

    def test_has_everything_that_the_host_and_the_renderer_look_for(self):
        files = {file.relative_to(self.root).as_posix() for file in self.root.rglob("*") if file.is_file()}
        self.assertLessEqual(EXPECTED, files)
        self.assertFalse([f for f in files if re.search(r"test|gtest|gmock|bench|\.a$|\.cmake$|\.h$", f)])

    def test_does_what_the_build_tree_does(self):
        self.assertEqual(self.run_there("list"), self.output_of("list"))
        there, here = self.run_there("describe", "--json"), self.output_of("describe", "--json")
        self.assertEqual(there.replace(str(self.root), "TREE"), here.replace(str(TREE), "TREE"))
        shown = self.run_there("env")
        self.assertIn(f"{self.root}/dso/korvan_shop.so", shown)
        self.assertNotIn(str(BUILD), shown)

    def test_works_on_the_search_path_of_another_host(self):
        shown = self.json_of("env", HOUDINI_PATH=self.root)
        self.assertEqual([(p["path"], p["loaded"]) for p in shown["plugins"]], [(f"{self.root}/dso/korvan_shop.so", True)])
        self.assertEqual({pathlib.Path(f).parent for f in shown["metadata_files"]}, {self.root / "korvan/metadata"})
        self.assertEqual({pathlib.Path(f).parent for f in shown["renderer_plugins"]}, {self.root / "korvan/plugins"})
        self.assertEqual(self.output_of("list", HOUDINI_PATH=self.root), self.output_of("list"))

    def test_runs_scripts_with_nothing_mapped_from_the_build(self):
        script = self.write("mapped.py", MAPPED)
        mapped = self.run_there("python", script).splitlines()
        self.assertIn(f"{self.root}/dso/korvan_shop.so", mapped)
        self.assertIn(f"{self.root}/korvan/plugins/korvan_shaders.so", self.run_there("env"))
        self.assertEqual([file for file in mapped if file.startswith((str(BUILD), str(SOURCES)))], [])

    def test_has_no_path_of_the_build_in_what_is_loaded(self):
        for file in self.elf_files():
            with self.subTest(file.name):
                stripped = self.scratch / "stripped"
                run("strip", "--strip-debug", "-o", stripped, file)
                self.assertNotIn(os.fsencode(SOURCES), stripped.read_bytes())
                dynamic = run("readelf", "-dW", file).stdout
                paths = ":".join(re.findall(r"\(R(?:UN)?PATH\).*\[(.*)\]", dynamic)).split(":")
                self.assertEqual([p for p in paths if p and not p.startswith("$ORIGIN")], [])


class Installed(InstalledTree, KshopCase):
    def put_tree(self, place):
        run("cmake", "--install", BUILD, "--prefix", place)


class Packaged(InstalledTree, KshopCase):
    def put_tree(self, place):
        made = self.scratch / "made"
        run("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", made)
        name = f"korvan_shop-{os.environ['VERSION']}-Linux"
        self.assertEqual([file.name for file in made.glob("*.tar.gz")], [f"{name}.tar.gz"])
        with tarfile.open(made / f"{name}.tar.gz") as archive:
            self.assertEqual({entry.name.split("/")[0] for entry in archive}, {name})
            archive.extractall(self.scratch)
        (self.scratch / name).rename(place)


if __name__ == "__main__":
    unittest.main()
