"""What goes wrong around the program: full disks, files that vanish, plug-ins that throw, sockets that nobody can write,
scripts that exit. Each leaves a sentence, and everything else as it was."""

import os
import pathlib
import shutil
import subprocess
import textwrap
import unittest

from kshop_case import KSHOP, TREE, KshopCase

FAULTY = os.environ["FAULTY_PLUGIN"]
OURS = TREE / "dso" / "korvan_shop.so"


class FaultCase(KshopCase):
    def script(self, text, name="script.py"):
        return self.write(name, textwrap.dedent(text))

    def registered(self, **changes):
        """Names of the registered types, and what was said on standard error."""
        run = self.run_kshop("list", "--json", **changes)
        self.assertEqual(run.returncode, 0, run.stderr)
        return run.stdout, run.stderr

    def plugin(self, *place):
        folder = self.scratch.joinpath(*place[:-1])
        folder.mkdir(parents=True, exist_ok=True)
        return str(shutil.copy(FAULTY, folder / place[-1]))


class FullDisk(FaultCase):
    """A limit on the size of files stands for a disk that is full after some bytes."""

    SCRIPT = """
        import os, resource, signal, sys
        import hou
        net = hou.node("/shop").createNode("korvan_vopnet")
        subnet = net.createNode("subnet")
        subnet.node("suboutput1").setInput(0, subnet.createNode("korvan::image"))
        asset, scene = sys.argv[1:]
        subnet.createDigitalAsset("test::first", asset)
        hou.hipFile.save(scene)
        other = net.createNode("subnet")
        for _ in range(20):
            other.createNode("korvan::image").parm("filename").set("x" * 1000)
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        before = resource.getrlimit(resource.RLIMIT_FSIZE)
        resource.setrlimit(resource.RLIMIT_FSIZE, (700, before[1]))
        for write in (lambda: hou.hipFile.save(scene), lambda: other.createDigitalAsset("test::second", asset)):
            try:
                write()
                print("written")
            except hou.OperationFailed as error:
                print(error.instanceMessage())
        resource.setrlimit(resource.RLIMIT_FSIZE, before)
        print(other.type().name(), [d.nodeTypeName() for d in hou.hda.definitionsInFile(asset)])
        hou.hipFile.save(scene)
        print(len(hou.node("/shop").children()[0].children()))
        """

    def test_leaves_the_old_scene_and_the_old_asset_and_says_so(self):
        asset, scene = self.scratch / "out" / "a.hda", self.scratch / "out" / "a.hip"
        asset.parent.mkdir()
        said = self.output_of("python", self.script(self.SCRIPT), asset, scene).splitlines()
        self.assertIn(f'The file "{scene}" cannot be written: File too large', said[0])
        self.assertIn("The old file is as it was", said[0])
        self.assertIn(f'"{asset}" was not written: File too large', said[1])
        self.assertEqual(said[2], "subnet ['test::first']")
        self.assertEqual(sorted(os.listdir(asset.parent)), ["a.hda", "a.hip"])

    @unittest.skipUnless(os.geteuid() == 0, "only root can mount")
    def test_of_a_real_file_system_leaves_the_old_scene(self):
        disk = self.scratch / "disk"
        disk.mkdir()
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "tmpfs", str(disk)], capture_output=True, text=True)
        if mounted.returncode != 0:
            self.skipTest("mounting is not allowed here: " + mounted.stderr)
        self.addCleanup(subprocess.run, ["umount", str(disk)], check=True)
        said = self.output_of("python", self.script("""
            import sys
            import hou
            net = hou.node("/shop").createNode("korvan_vopnet")
            hou.hipFile.save(sys.argv[1])
            before = open(sys.argv[1], "rb").read()
            for _ in range(100):
                net.createNode("korvan::image").parm("filename").set("x" * 1000)
            try:
                hou.hipFile.save(sys.argv[1])
            except hou.OperationFailed as error:
                print(error.instanceMessage())
            print(open(sys.argv[1], "rb").read() == before, len(net.children()))
            """), disk / "a.hip").splitlines()
        self.assertIn("No space left on device", said[0])
        self.assertEqual(said[1], "True 101")
        self.assertEqual(os.listdir(disk), ["a.hip"])


class Vanishing(FaultCase):
    """Files that are listed and no more there when they are read."""

    def test_a_metadata_file_is_reported_and_the_others_are_read(self):
        folder = self.scratch / "korvan" / "metadata"
        folder.mkdir(parents=True)
        (folder / "a_gone.mtd").symlink_to("nowhere")
        self.write("korvan/metadata/b.mtd", '["zelk__image"]\n"houdini.label" = "Picture"\n')
        said, errors = self.registered(HOUDINI_PATH=f"&;{self.scratch}")
        self.assertIn("Picture", said)
        self.assertIn(f"Cannot read the metadata file {folder}/a_gone.mtd: No such file or directory", errors)

    def test_a_renderer_plug_in_is_reported_and_the_others_are_read(self):
        self.plugin("plugins", "a.so")
        gone = self.plugin("plugins", "b.so")
        whole = self.output_of("list", "--json")
        said, errors = self.registered(KORVAN_PLUGIN_PATH=self.scratch / "plugins", KORVAN_TEST_FAULT=f"declare:{gone}")
        self.assertFalse(os.path.exists(gone), "the fault did not happen")
        self.assertIn(f"Cannot open the plug-in {gone}: ", errors)
        self.assertIn("No such file or directory", errors)
        self.assertEqual(said, whole)

    def test_a_host_plug_in_is_reported_and_the_others_are_used(self):
        self.plugin("dso", "a.so")
        gone = self.plugin("dso", "b.so")
        shutil.copy(OURS, self.scratch / "dso" / "korvan_shop.so")
        said, errors = self.registered(HOUDINI_DSO_PATH=self.scratch / "dso", KORVAN_TEST_FAULT=f"version:{gone}")
        self.assertFalse(os.path.exists(gone), "the fault did not happen")
        self.assertIn(f"The plug-in {gone} is not used: ", errors)
        self.assertIn("No such file or directory", errors)
        self.assertIn("korvan::image", said)

    def test_a_catalogue_is_reported_and_everything_else_is_registered(self):
        whole = self.output_of("list", "--json")
        catalogue = self.catalogue({"name": "zelk__late", "kind": "shader", "output": "rgb", "parameters": []})
        self.plugin("plugins", "a.so")
        said, errors = self.registered(KORVAN_CATALOGUE=f"{catalogue}:{self.scratch}/none.json",
                                       KORVAN_PLUGIN_PATH=self.scratch / "plugins")
        self.assertIn("korvan::late", said)
        catalogue.unlink()
        said, errors = self.registered(KORVAN_CATALOGUE=catalogue)
        self.assertIn(f"Cannot read the catalogue {catalogue}: No such file or directory", errors)
        self.assertEqual(said, whole)

    def test_an_asset_s_file_leaves_its_nodes_and_says_where_it_was(self):
        asset, scene = self.scratch / "a.hda", self.scratch / "a.hip"
        run = self.run_kshop("python", self.script("""
            import os, sys
            import hou
            asset, scene = sys.argv[1:]
            net = hou.node("/shop").createNode("korvan_vopnet")
            subnet = net.createNode("subnet")
            subnet.node("suboutput1").setInput(0, subnet.createNode("korvan::image"))
            made = subnet.createDigitalAsset("test::gone", asset)
            os.remove(asset)
            for act in (lambda: net.createNode("test::gone"), lambda: print(len(made.type().definition().sections()), end=" "),
                        lambda: hou.hda.reloadFile(asset)):
                try:
                    act()
                    print("done")
                except hou.Error as error:
                    print(error.instanceMessage())
            hou.hipFile.save(scene)
            print(made.type().name(), len(made.children()))
            """), asset, scene)
        self.assertEqual((run.returncode, run.stderr),
                         (0, f"korvan error: [zelk::shop::shop] Cannot open OTL file {asset}\n"))
        said = run.stdout.splitlines()
        self.assertIn("cannot be created in /shop/korvan_vopnet1", said[0])
        self.assertEqual(said[1], "0 done")
        self.assertIn(f'"{asset}" cannot be read: No such file or directory', said[2])
        self.assertEqual(said[3], "test::gone 3")


class NoFiles(FaultCase):
    """Pipes and devices in the place of files. A pipe that nobody writes to would make its reader wait for ever."""

    def pipe(self, name):
        path = self.scratch / name
        path.parent.mkdir(parents=True, exist_ok=True)
        os.mkfifo(path)
        return path

    def test_that_are_pipes_are_reported_and_the_start_goes_on(self):
        whole = self.output_of("list", "--json")
        plugin, shaders, catalogue = self.pipe("dso/a.so"), self.pipe("korvan/plugins/a.so"), self.pipe("a.json")
        metadata = self.pipe("korvan/metadata/a.mtd")
        said, errors = self.registered(HOUDINI_PATH=f"{self.scratch};&", KORVAN_CATALOGUE=catalogue)
        self.assertEqual(said, whole)
        self.assertEqual(sorted(errors.splitlines()), sorted([
            f"Error: The plug-in {plugin} is not used: it is a pipe, a directory or a device and no file. "
            "Take it out of the plug-in path.",
            f"kshop: error: [kr] Cannot open the plug-in {shaders}: It is a pipe or a device and no file. "
            "Skipping it; take it away.",
            f"kshop: error: [korvan_catalogue] Cannot read the catalogue {catalogue}: It is a pipe or a device and no file. "
            "Skipping it; correct KORVAN_CATALOGUE.",
            f"kshop: error: [kr] Cannot read the metadata file {metadata}: It is a pipe or a device and no file. "
            "Skipping it; make it readable or take it away."]))

    def test_that_never_end_are_reported_too(self):
        whole = self.output_of("list", "--json")
        endless = self.scratch / "korvan" / "metadata" / "a.mtd"
        endless.parent.mkdir(parents=True)
        endless.symlink_to("/dev/zero")
        said, errors = self.registered(HOUDINI_PATH=f"{self.scratch};&", KORVAN_CATALOGUE="/dev/zero")
        self.assertEqual(said, whole)
        self.assertEqual(errors.count("It is a pipe or a device and no file"), 2, errors)

    def test_are_refused_by_lint(self):
        self.assertEqual(self.failure_of("lint", self.pipe("a.mtd")),
                         f"kshop: {self.scratch}/a.mtd is a pipe or a device and no file; name a metadata file\n")


class Limits(FaultCase):
    """What the system lets the program have is too little."""

    def limited(self, limits, *arguments, stdout=subprocess.PIPE, **changes):
        command = f"ulimit {limits}; exec \"$0\" \"$@\""
        return subprocess.run(["bash", "-c", command, str(KSHOP), *map(str, arguments)], stdout=stdout,
                              stderr=subprocess.PIPE, text=True, env=self.environment(**changes), timeout=120)

    def test_on_the_size_of_files_leave_a_sentence_and_what_was_there(self):
        with open(self.scratch / "output", "w") as output:
            run = self.limited("-f 8", "describe", "--json", stdout=output)
        self.assertEqual((run.returncode, run.stderr), (1, "kshop: cannot write the output: File too large\n"))
        pages = self.scratch / "pages"
        self.output_of("help-pages", pages)
        before = {page: page.read_bytes() for page in pages.rglob("*.html")}
        catalogue = self.catalogue({"name": "zelk__new", "kind": "shader", "output": "rgb", "parameters": []})
        run = self.limited("-f 1", "help-pages", pages, KORVAN_CATALOGUE=catalogue)
        self.assertEqual(run.returncode, 1)
        self.assertRegex(run.stderr, r"^kshop: .*\.html cannot be written: File too large\. Choose another directory, or make room")
        self.assertEqual({page: page.read_bytes() for page in pages.rglob("*.html") if page in before}, before)

    def memory(self, *arguments, **changes):
        """A run with 600 MB; skips where a sanitizer needs more for itself."""
        if self.limited("-v 600000", "--version").returncode != 0:
            self.skipTest("the program does not start in 600 MB")
        return self.limited("-v 600000", *arguments, **changes)

    def huge(self, name):
        file = self.write(name, "")
        os.truncate(file, 2 << 30)
        return file

    def test_on_memory_leave_the_other_files(self):
        whole = self.output_of("list", "--json")
        metadata, catalogue = self.huge("korvan/metadata/a.mtd"), self.huge("a.json")
        run = self.memory("list", "--json", HOUDINI_PATH=f"{self.scratch};&", KORVAN_CATALOGUE=catalogue)
        self.assertEqual((run.returncode, run.stdout), (0, whole))
        self.assertIn(f"Cannot load the metadata file {metadata}: there is not enough memory for it. ", run.stderr)
        self.assertIn(f"{catalogue}: There is not enough memory for it. Skipping the rest of the file; make it smaller.",
                      run.stderr)

    def test_on_memory_refuse_an_asset_and_throw_nothing(self):
        """A small file, of which the contents are one line of 300 MB."""
        run = self.memory("python", self.script("""
            import resource, sys, zlib
            sys.path.insert(0, sys.argv[1])
            import assets
            import hou
            packer = zlib.compressobj(9, zlib.DEFLATED, 31)
            contents = b"".join(packer.compress(b"a" * 1000000) for _ in range(300)) + packer.flush()
            with open(sys.argv[2], "wb") as file:
                file.write(assets.library({"test::large": {"Contents.gz": contents}}))
            hou.hda.installFile(sys.argv[2])
            net = hou.node("/shop").createNode("korvan_vopnet")
            resource.setrlimit(resource.RLIMIT_AS, (200000000, 200000000))
            try:
                net.createNode("test::large")
            except hou.OperationFailed as error:
                print(error.instanceMessage())
            print(len(net.children()), net.createNode("korvan::image").path())
            """), pathlib.Path(__file__).parents[1] / "python", self.scratch / "large.hda")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertEqual(run.stdout.splitlines(), [
            'The node type "test::large" cannot be created in /shop/korvan_vopnet1: /shop/korvan_vopnet1 does not allow it.',
            "1 /shop/korvan_vopnet1/image1"])

    def test_on_memory_are_findings_of_lint(self):
        file = self.huge("a.mtd")
        run = self.memory("lint", file)
        self.assertEqual(run.returncode, 1, run.stdout)
        self.assertIn(f"{file}: error: the file cannot be read: there is not enough memory for it [unreadable-file]", run.stdout)

    def test_on_memory_are_no_difference(self):
        file = self.huge("a.json")
        run = self.memory("diff", file, file)
        self.assertEqual((run.returncode, run.stderr), (2, "kshop: there is not enough memory to compare these files\n"))


class Throwing(FaultCase):
    """Plug-ins that throw, at each place where code of theirs runs, a standard exception or something else."""

    KINDS = (("exception", "no licence"), ("number", "no standard exception"))

    def test_renderer_plug_ins_are_reported_and_all_others_are_used(self):
        folder = self.scratch / "plugins"
        faulty = self.plugin("plugins", "faulty.so")
        whole = self.output_of("list", "--json")
        for place in ("constructor", "declare"):
            for kind, said in self.KINDS:
                with self.subTest(place=place, kind=kind):
                    shown, errors = self.registered(KORVAN_PLUGIN_PATH=folder, KORVAN_TEST_FAULT=f"{place}:{kind}")
                    self.assertIn(faulty, errors)
                    if place == "constructor":
                        self.assertIn("its constructors threw", errors)
                    if kind == "exception" or place == "constructor":
                        self.assertIn(said, errors)
                    self.assertEqual(shown, whole)

    def test_host_plug_ins_are_reported_and_all_others_are_used(self):
        faulty = self.plugin("dso", "faulty.so")
        shutil.copy(OURS, self.scratch / "dso" / "korvan_shop.so")
        for place, sentence in (("constructor", "its constructors threw"), ("version", "its version functions threw"),
                                ("entry", "failed in newVopOperator")):
            for kind, said in self.KINDS:
                with self.subTest(place=place, kind=kind):
                    shown, errors = self.registered(HOUDINI_DSO_PATH=self.scratch / "dso",
                                                    KORVAN_TEST_FAULT=f"{place}:{kind}")
                    for text in (faulty, sentence, said):
                        self.assertIn(text, errors)
                    self.assertIn("korvan::image", shown)

    def test_what_can_be_loaded_later_still_can(self):
        self.plugin("plugins", "faulty.so")
        run = self.run_kshop("python", self.script("""
            import hou
            import _decimal, _sqlite3
            print("loaded")
            print("korvan::image" in hou.vopNodeTypeCategory().nodeTypes())
            """), KORVAN_PLUGIN_PATH=self.scratch / "plugins", KORVAN_TEST_FAULT="constructor:exception")
        self.assertEqual((run.returncode, run.stdout), (0, "loaded\nTrue\n"), run.stderr)


class SocketsThatNobodyCanWrite(FaultCase):
    SCRIPT = """
        import hou
        gain = hou.node("/shop").createNode("korvan_vopnet").createNode("korvan::fractal_noise").parm("gain")
        for i in range(1000):
            gain.set(i)
        print("edited", gain.eval())
        """

    def edit(self, endpoint):
        run = self.run_kshop("python", self.script(self.SCRIPT), ZELK_IPR_ENDPOINT=endpoint)
        self.assertEqual((run.returncode, run.stdout), (0, "edited 999.0\n"), run.stderr)
        return run.stderr

    def test_never_stop_an_edit(self):
        closed = self.scratch / "closed"
        closed.mkdir(mode=0o500)
        plain = self.write("plain", "a file")
        for endpoint in ("ipc:///dev/null", f"ipc://{self.scratch}/no/such/socket", f"ipc://{closed}/socket",
                         f"ipc://{plain}", f"ipc://{self.scratch}", "ipc:///dev/full", "tcp://127.0.0.1:1",
                         "ipc://" + "x" * 300, "nonsense"):
            with self.subTest(endpoint):
                self.edit(endpoint)
        self.assertEqual(plain.read_text(), "a file")

    def test_stop_a_listener_with_a_sentence(self):
        plain = self.write("plain", "a file")
        for endpoint in ("ipc:///dev/null", f"ipc://{plain}", f"ipc://{self.scratch}/no/such/socket", f"ipc://{self.scratch}"):
            with self.subTest(endpoint):
                said = self.failure_of("listen", "--count", 1, ZELK_IPR_ENDPOINT=endpoint)
                self.assertIn(f"kshop: The endpoint {endpoint} cannot be used: ", said)
        self.assertEqual(plain.read_text(), "a file")

    @unittest.skipUnless(os.geteuid() == 0, "root can try what another user is refused")
    def test_of_another_user_do_not_stop_an_edit_either(self):
        """A listener of root's; the edits are nobody's."""
        os.chmod(self.scratch, 0o755)
        endpoint = f"ipc://{self.scratch}/socket"
        script = self.script(self.SCRIPT)
        listener = subprocess.Popen([str(KSHOP), "listen"], env=self.environment(ZELK_IPR_ENDPOINT=endpoint),
                                    stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        try:
            self.assertIn("listening", listener.stderr.readline())
            os.chmod(self.scratch / "socket", 0o600)
            run = subprocess.run([str(KSHOP), "python", str(script)], env=self.environment(ZELK_IPR_ENDPOINT=endpoint),
                                 capture_output=True, text=True, user=65534, timeout=120)
        finally:
            listener.terminate()
            heard, _ = listener.communicate()
        self.assertEqual((run.returncode, run.stdout), (0, "edited 999.0\n"), run.stderr)
        self.assertEqual(heard, "", "the socket was open to another user")


class Exiting(FaultCase):
    """sys.exit() in scripts of a shader: what calls them goes on."""

    def test_in_callbacks_expressions_and_menus_leaves_the_program_running(self):
        catalogue = self.catalogue({
            "name": "zelk__leaver", "kind": "shader", "output": "rgb",
            "parameters": [{"name": "quit", "type": "float", "default": 0}, {"name": "pick", "type": "string", "default": "a"}],
            "metadata": [{"parameter": "quit", "key": "houdini.callback", "value": "python:import sys; sys.exit(3)"},
                         {"parameter": "pick", "key": "houdini.type", "value": "menu:replace:python"},
                         {"parameter": "pick", "key": "houdini.menu_script", "value": "import sys; sys.exit(4)"}]})
        run = self.run_kshop("python", self.script("""
            import hou
            node = hou.node("/shop").createNode("korvan_vopnet").createNode("korvan::leaver")
            node.parm("quit").pressButton()
            print("callback")
            print("menu", node.parm("pick").menuItems(), node.errors())
            node.parm("quit").setExpression("__import__('sys').exit(5)", hou.exprLanguage.Python)
            print("expression", node.parm("quit").eval(), node.errors())
            print("end")
            """), KORVAN_CATALOGUE=catalogue)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertIn("Error running callback:", run.stderr)
        self.assertIn("SystemExit: 3", run.stderr)
        path = "/shop/korvan_vopnet1/leaver1"
        self.assertEqual(run.stdout.splitlines(), [
            "callback", f"menu () ('{path}/pick: its menu script failed: SystemExit: 4',)",
            f"expression 0.0 ('{path}/pick: its menu script failed: SystemExit: 4', '{path}/quit: SystemExit: 5')", "end"])


if __name__ == "__main__":
    unittest.main()
