"""The preset real-host: the plug-in alone, against a platform that was not built with it.

The platform's directories are made from the stand-ins' headers and libraries, laid out as the licensed ones are. One of the host's
libraries is empty there: the licensed host has more than the two that the plug-in links, and its process supplies what they lack.
They and the build stay beside the test from run to run, so that only the first run compiles.
"""

import os
import pathlib
import shutil
import subprocess
import unittest

from kshop_case import TREE, KshopCase

SOURCES = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["REAL_HOST_DIR"])
HOST_LIBRARIES = ("SYS", "UT", "CH", "CMD", "PY", "FS", "PRM", "OP", "VOP", "SHOP")


def link(place, target):
    """Makes `place` a link to an existing file or directory."""
    assert target.exists(), target
    place.parent.mkdir(parents=True, exist_ok=True)
    if place.is_symlink():
        place.unlink()
    place.symlink_to(target)


def make_empty_library(place):
    place.parent.mkdir(parents=True, exist_ok=True)
    place.unlink(missing_ok=True)
    subprocess.run(["c++", "-shared", "-o", place, "-x", "c++", os.devnull], check=True)


def make_platform(root):
    """Lays out the three installations below `root`; the definitions that name them."""
    for name in HOST_LIBRARIES:
        link(root / "hfs/toolkit/include" / name, SOURCES / "standin/host/include" / name)
    make_empty_library(root / "hfs/dsolib/libHoudiniOP1.so")
    link(root / "hfs/dsolib/libHoudiniOP2.so", TREE / "lib/libHoudiniOP2.so")
    link(root / "korvan/include/kr.h", SOURCES / "standin/renderer/include/kr.h")
    link(root / "korvan/lib/libkr.so", TREE / "lib/libkr.so")
    link(root / "ipr/include/zelk", SOURCES / "standin/ipr/include/zelk")
    link(root / "ipr/lib/libzelk_ipr.so", TREE / "lib/libzelk_ipr.so")
    return {"HFS": root / "hfs", "KORVAN_ROOT": root / "korvan", "ZELK_IPR_ROOT": root / "ipr"}


def cmake(*arguments):
    return subprocess.run(["cmake", *map(str, arguments)], cwd=SOURCES, capture_output=True, text=True, check=False)


def configure(build, places, **definitions):
    definitions = {**places, **definitions}
    return cmake("--preset", "real-host", "-B", build, *(f"-D{name}={value}" for name, value in definitions.items()))


class RealHost(KshopCase):
    def succeed(self, run):
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)

    def test_builds_the_plug_in_alone_and_the_host_takes_it(self):
        places = make_platform(BUILD / "platform")
        build, installed = BUILD / "build", self.scratch / "installed"
        # These libraries were built as this tree is; the licensed ones have the old string ABI, which is the default.
        self.succeed(configure(build, places, KORVAN_HOST_STRING_ABI=os.environ["STRING_ABI"]))
        self.succeed(cmake("--build", build))
        self.succeed(cmake("--install", build, "--prefix", installed))

        files = sorted(file.relative_to(installed).as_posix() for file in installed.rglob("*") if file.is_file())
        self.assertEqual(files, ["dso/korvan_shop.so"])
        plug_in = installed / "dso/korvan_shop.so"
        self.assertEqual(self.json_of("--dso", plug_in, "describe"), self.json_of("describe"))
        self.assertEqual([(p["path"], p["loaded"]) for p in self.json_of("--dso", plug_in, "env")["plugins"]],
                         [(str(plug_in), True)])

    def test_names_each_place_that_is_not_given_or_not_right(self):
        places = make_platform(self.scratch / "platform")
        for name in places:
            with self.subTest(name):
                given = {n: p for n, p in places.items() if n != name}
                self.assert_refused(f"{name} is not set: give the directory of", given)
                self.assert_refused(f"{name}={self.scratch} does not hold", {**given, name: self.scratch})

    def test_names_a_library_that_is_missing(self):
        places = make_platform(self.scratch / "platform")
        (places["HFS"] / "dsolib/libHoudiniOP2.so").unlink()
        self.assert_refused(f"HFS={places['HFS']} does not hold dsolib/libHoudiniOP2.so", places)

    def assert_refused(self, sentence, places):
        run = configure(self.scratch / "build", places)
        self.assertNotEqual(run.returncode, 0)
        self.assertIn(sentence, " ".join(run.stderr.split()))
        # What was given stays in the cache of the configuration, which is not wanted here.
        shutil.rmtree(self.scratch / "build")


if __name__ == "__main__":
    unittest.main()
