"""Random work through hou from one seed: create, edit, wire, delete, undo, save, load. Nothing may crash, hang or grow.

    kshop python random_operations.py [--seed N] [--count N]

An operation may be refused with a sentence (`hou.Error`); anything else fails, with the number of the operation. The
same seed makes the same operations. Every `REPORT` operations it says how much memory is in use. The scene is bounded, so
from a quarter of the way on that may grow by `MOST_GROWTH` megabytes at most.
"""

import argparse
import collections
import contextlib
import ctypes
import gc
import io
import itertools
import os
import random
import shutil
import sys
import tempfile
import time
import zlib

import hou

LIBC = ctypes.CDLL(None)
REPORT = 50_000
MOST_GROWTH = 4
MOST_NODES = 60
MOST_NETWORKS = 8
TEXTS = ("", " ", "plain", 'a "quoted" text', "back\\slash", "two\nlines", "`1 + 1`", "`chs(\"../nobody/x\")`",
         "$HIPNAME $F", "{ } ; : ,", "ünïcödé \u2603", "1", "-2.5", "..", "/shop", "../*")
NUMBERS = (0, -0.0, 1, 2, 0.1, -1e-30, 1e30, 5e-324, 255, 256, -7, 2**31 - 1)
EXPRESSIONS = (("$F * 0.25", hou.exprLanguage.Hscript), ("hou.frame() / 3", hou.exprLanguage.Python),
               ("1 +", hou.exprLanguage.Hscript), ('ch("gamma") + ch("../gain")', hou.exprLanguage.Hscript),
               ("1 / 0", hou.exprLanguage.Python), ('chs("name")', hou.exprLanguage.Hscript))
COMMANDS = ("opparm {0} {1} {2}", "opcf {0}", "opcf ..; opparm {1} {2}", "set A = {2}; echo $A", "echo `1 + 2` {2}",
            "opcf {0}; opparm . {1} ( {2} )", "no_such_command {0}")
FLAGS = tuple(getattr(hou.nodeFlag, name) for name in hou.nodeFlag._names)
BASES = tuple(getattr(hou.rampBasis, name) for name in hou.rampBasis._names)


class Heap(ctypes.Structure):
    """What mallinfo2() tells."""
    _fields_ = [(name, ctypes.c_size_t) for name in ("arena", "ordblks", "smblks", "hblks", "hblkhd", "usmblks", "fsmblks",
                                                     "uordblks", "fordblks", "keepcost")]


def megabytes_in_use():
    """What was asked for and not freed. The size of the process is no measure: freed memory stays with it for long, and an
    address sanitizer keeps it on purpose."""
    gc.collect()
    python = sys.getallocatedblocks() * 64  # bytes: Python's small objects have memory of their own
    if hasattr(LIBC, "__sanitizer_get_current_allocated_bytes"):
        heap = LIBC.__sanitizer_get_current_allocated_bytes
        heap.restype = ctypes.c_size_t
        return (heap() + python) / 2**20
    LIBC.mallinfo2.restype = Heap
    info = LIBC.mallinfo2()
    return (info.uordblks + info.hblkhd + python) / 2**20


class RandomOperations:
    def __init__(self, seed, folder):
        self.chance = random.Random(seed)
        self.folder = folder
        self.nodes = []
        self.dead = collections.deque(maxlen=20)  # asking these must give a sentence
        self.refused = collections.Counter()
        self.digest = 0    # of all that was done, in order
        self.make_asset()
        self.kinds = sorted(hou.vopNodeTypeCategory().nodeTypes())
        self.renew()

    # How often each is done. Files, which take long, are rare.
    WEIGHTS = {"create": 60, "destroy": 45, "rename": 20, "copy": 6, "set_value": 160, "set_tuple": 30,
               "set_expression": 40, "delete_keyframes": 20, "revert": 20, "instances": 40, "ramp": 15, "press": 30,
               "wire": 120, "unwire": 40, "aim_fetch": 30, "user_data": 30, "flag": 20, "move": 10, "spare": 8,
               "remove_spare": 6, "undo": 60, "redo": 30, "group": 20, "without_undo": 8, "hscript": 25, "frame": 8,
               "read_parms": 30, "read_wires": 30, "read_templates": 2, "save": 1.5, "load": 1,
               "merge": 0.3, "clear": 0.5, "damaged_load": 0.5,
               "dead_node": 4}
    CUMULATIVE = tuple(itertools.accumulate(WEIGHTS.values()))

    def step(self):
        name = self.chance.choices(tuple(self.WEIGHTS), cum_weights=self.CUMULATIVE)[0]
        refused = ""
        try:
            with contextlib.redirect_stdout(io.StringIO()):  # callbacks of buttons print
                getattr(self, name)()
        except hou.Error as error:
            refused = type(error).__name__
            if not str(error).strip():
                raise AssertionError(f"{name} was refused without a sentence") from error
        self.refused[name, refused] += 1
        self.digest = zlib.crc32(f"{name} {refused}".encode(), self.digest)

    def renew(self):
        """Two containers and an object, which are never missed for long."""
        for name in ("first", "second"):
            if hou.node("/shop/" + name) is None:
                hou.node("/shop").createNode("korvan_vopnet", name)
        if hou.node("/obj/cam") is None:
            hou.node("/obj").createNode("cam", "cam")
        self.refresh()

    def refresh(self):
        self.nodes = [node for manager in ("/shop", "/obj") for node in self.below(hou.node(manager))]

    def below(self, node):
        for child in node.children():
            yield child
            yield from self.below(child)

    def make_asset(self):
        """A digital asset of Korvan nodes, one of the types to create; its contents are locked."""
        net = hou.node("/shop").createNode("korvan_vopnet")
        subnet = net.createNode("subnet")
        noise = subnet.createNode("korvan::fractal_noise")
        noise.parm("gain").setExpression('ch("../gain")')
        subnet.node("suboutput1").setInput(0, noise)
        subnet.createDigitalAsset("test::random", os.path.join(self.folder, "random.hda"))
        net.destroy()

    # What an operation works on

    def node(self):
        """One of the nodes; now and then one that is gone."""
        if self.dead and self.chance.random() < 0.01:
            return self.chance.choice(self.dead)
        while self.nodes:
            node = self.chance.choice(self.nodes)
            if self.alive(node):
                return node
            self.nodes.remove(node)
            self.dead.append(node)
        self.renew()
        return self.chance.choice(self.nodes)

    def living(self):
        return [node for node in self.nodes if self.alive(node)]

    def network(self):
        return self.chance.choice([n for n in self.living() if n.isNetwork()] or [hou.node("/shop")])

    @staticmethod
    def alive(node):
        try:
            node.name()
            return True
        except hou.ObjectWasDeleted:
            return False

    def parm(self, wanted=lambda parm: True):
        """A parameter of that kind, of whichever of some nodes has one."""
        for _ in range(12):
            parms = [parm for parm in self.node().parms() if wanted(parm)]
            if parms:
                return self.chance.choice(parms)
        raise hou.OperationFailed("no node has such a parameter")

    # Nodes

    def create(self):
        if len(self.nodes) >= MOST_NODES:
            self.make_room()
        kind = self.chance.choice(self.kinds)
        if kind == "subnet" and sum(n.isNetwork() for n in self.living()) >= MOST_NETWORKS:
            kind = "null"
        if self.chance.random() < 0.02:
            kind = self.chance.choice(("nothing", "", "korvan_vopnet", "korvan::"))
        node = self.network().createNode(kind, self.chance.choice((None, None, "a", "b", "c1")))
        self.nodes.append(node)
        self.nodes += self.below(node)

    def make_room(self):
        """Forgets the dead, and deletes until half of them are left."""
        self.refresh()
        while len(self.nodes) > MOST_NODES // 2:
            self.chance.choice(self.nodes).destroy()
            self.refresh()
        self.renew()

    def destroy(self):
        node = self.node()
        if not node.isNetwork() or self.chance.random() < 0.05:  # a network takes all in it along
            node.destroy()

    def rename(self):
        self.node().setName(self.chance.choice(("a", "b", "c1", "first", "ü", "", "a b", "x" * 300)),
                            self.chance.random() < 0.8)

    def copy(self):
        if len(self.nodes) >= MOST_NODES:
            self.make_room()
        chosen = self.node()
        siblings = [n for n in chosen.parent().children() if self.chance.random() < 0.3]
        self.nodes += hou.copyNodesTo(siblings[:6] or [chosen], self.network())

    # Parameters

    def value(self, parm):
        template = parm.parmTemplate()
        items = template.menuItems() if hasattr(template, "menuItems") else ()
        return self.chance.choice((*TEXTS, *items) if template.dataType() == hou.parmData.String else NUMBERS)

    def set_value(self):
        parm = self.parm(lambda p: not p.isMultiParmParent())
        value = self.value(parm)
        if self.chance.random() < 0.03:
            value = self.chance.choice(("text", 3, "`"))
        try:
            parm.set(value)
        except (TypeError, OverflowError):  # a text for a number, a number that no int holds
            pass

    def set_tuple(self):
        one = self.parm(lambda p: not p.isMultiParmParent()).tuple()
        size = len(one) if self.chance.random() < 0.95 else 5
        try:
            one.set([self.value(one[0]) for _ in range(size)])
        except (TypeError, OverflowError):
            pass

    def set_expression(self):
        self.parm(lambda p: not p.isMultiParmParent()).setExpression(*self.chance.choice(EXPRESSIONS))

    def delete_keyframes(self):
        self.parm().deleteAllKeyframes()

    def revert(self):
        self.parm().revertToDefaults()

    def instances(self):
        parm = self.parm(lambda p: p.isMultiParmParent())
        count = parm.evalAsInt()
        way = self.chance.randrange(3)
        if way == 0 or count > 12:
            parm.set(self.chance.randrange(-1, 7))
        elif way == 1:
            parm.insertMultiParmInstance(self.chance.randrange(-1, count + 2))
        else:
            parm.removeMultiParmInstance(self.chance.randrange(-1, count + 1))

    def ramp(self):
        parm = self.parm(lambda p: p.parmTemplate().type() == hou.parmTemplateType.Ramp)
        keys = self.chance.randrange(1, 6)
        color = parm.evalAsRamp().isColor()
        values = [tuple(self.chance.random() for _ in range(3)) if color else self.chance.random() for _ in range(keys)]
        parm.set(hou.Ramp(self.chance.choices(BASES, k=keys), [self.chance.random() for _ in range(keys)], values))

    def press(self):
        """What a person does in the pane: this one runs the callback."""
        self.parm(lambda p: not p.isMultiParmParent()).pressButton()

    def spare(self):
        name = self.chance.choice(("gain", "my_text", "my_on", "my_size"))
        template = {"gain": hou.FloatParmTemplate("gain", "Gain", 1, default_value=(0.5,), disable_when="{ my_on == 0 }"),
                    "my_text": hou.StringParmTemplate("my_text", "Text", 1, default_value=("$F",)),
                    "my_on": hou.ToggleParmTemplate("my_on", "On"),
                    "my_size": hou.FloatParmTemplate("my_size", "Size", 3, naming_scheme=hou.parmNamingScheme.XYZW)}[name]
        self.node().addSpareParmTuple(template)

    def remove_spare(self):
        node = self.node()
        spares = node.spareParms()
        if spares:
            node.removeSpareParmTuple(self.chance.choice(spares).tuple())

    # Wires

    def wire(self):
        sink = self.node()
        source = self.chance.choice(sink.parent().children())
        inputs, outputs = len(sink.inputConnectors()), len(source.outputConnectors())
        sink.setInput(self.chance.randrange(inputs + 1), source, self.chance.randrange(outputs + 1))

    def unwire(self):
        sink = self.node()
        sink.setInput(self.chance.randrange(len(sink.inputConnectors()) + 1), None)

    def aim_fetch(self):
        fetches = [n for n in self.living() if n.type().name() == "korvan::fetch"]
        if fetches:
            target = self.node()
            one = self.chance.choice((target.path(), target.path(), "../" + target.name(), "/nowhere", "", ".", ".."))
            self.chance.choice(fetches).parm("target").set(one)

    # The rest of a node

    def user_data(self):
        name = self.chance.choice(("note", "a b", "outputs", "ünder"))
        if self.chance.random() < 0.3:
            self.node().destroyUserData(name)
        else:
            self.node().setUserData(name, self.chance.choice((*TEXTS, "2 rgb color 9 r", "999999999 a b c")))

    def flag(self):
        self.node().setGenericFlag(self.chance.choice(FLAGS), self.chance.random() < 0.5)

    def move(self):
        self.node().setPosition((self.chance.uniform(-50, 50), self.chance.choice(NUMBERS)))

    def dead_node(self):
        if self.dead:
            node = self.chance.choice(self.dead)
            self.chance.choice((node.path, node.parms, node.destroy, node.inputs, node.children, node.errors,
                                lambda: node.setName("x"), lambda: node.setUserData("a", "b")))()
            raise AssertionError("a deleted node answered")

    # Session

    def undo(self):
        for _ in range(self.chance.randrange(1, 5)):
            hou.undos.performUndo()

    def redo(self):
        for _ in range(self.chance.randrange(1, 5)):
            hou.undos.performRedo()

    def group(self):
        with hou.undos.group("Group"):
            for _ in range(self.chance.randrange(1, 5)):
                self.chance.choice((self.set_value, self.instances, self.wire, self.create, self.destroy, self.undo))()

    def without_undo(self):
        with hou.undos.disabler():
            self.chance.choice((self.set_value, self.instances, self.wire, self.destroy))()

    def hscript(self):
        node = self.node()
        names = [p.name() for p in node.parms()] or ["none"]
        command = self.chance.choice(COMMANDS).format(node.path(), self.chance.choice(names),
                                                      self.chance.choice(("1", "-2.5", "'a b'", "`1 +`", '"', "$F")))
        out, error = hou.hscript(command)
        self.digest = zlib.crc32(f"{len(out)} {len(error)}".encode(), self.digest)

    def frame(self):
        hou.setFrame(self.chance.choice((1, 1.5, 24, -3, 100000)))

    # Questions

    def read_parms(self):
        node = self.node()
        for parm in node.parms():
            try:
                parm.eval(), parm.isDisabled(), parm.isHidden(), parm.isTimeDependent(), parm.isAtDefault()
                parm.unexpandedString() if parm.parmTemplate().dataType() == hou.parmData.String else parm.evalAsFloat()
            except hou.OperationFailed:  # an expression without a value, a number with an expression
                continue
        node.errors()

    def read_wires(self):
        node = self.node()
        node.inputs(), node.outputs(), node.inputLabels(), node.outputLabels(), node.position()
        for wire in (*node.inputConnections(), *node.outputConnections()):
            assert self.alive(wire.inputNode()) and self.alive(wire.outputNode()), "a wire leads nowhere"
        if hasattr(node, "inputNames"):
            node.inputNames(), node.outputNames(), node.inputDataTypes(), node.outputDataTypes()

    def read_templates(self):
        self.node().parmTemplateGroup().entries()
        for parm in self.node().parms():
            if parm.parmTemplate().type() in (hou.parmTemplateType.Menu, hou.parmTemplateType.String):
                try:
                    parm.menuItems()
                except hou.OperationFailed:
                    continue

    # Files

    def file(self):
        return os.path.join(self.folder, "scene%d.hip" % self.chance.randrange(3))

    def save(self):
        hou.hipFile.save(self.file())

    def load(self):
        try:
            hou.hipFile.load(self.file())
        finally:
            self.after_file()

    def merge(self):
        self.make_room()
        try:
            hou.hipFile.merge(self.file())
        finally:
            self.after_file()

    def damaged_load(self):
        """Some bytes of a scene are others. What it cannot load, it refuses; what it loads, it can save."""
        file = self.file()
        hou.hipFile.save(file)
        with open(file, "rb") as stream:
            content = bytearray(stream.read())
        for _ in range(self.chance.randrange(1, 9)):
            content[self.chance.randrange(len(content))] = self.chance.randrange(256)
        damaged = os.path.join(self.folder, "damaged.hip")
        with open(damaged, "wb") as stream:
            stream.write(content[:self.chance.choice((len(content), len(content), len(content) // 2))])
        try:
            hou.hipFile.load(damaged)
        finally:
            self.after_file()
            hou.hipFile.save(damaged)

    def clear(self):
        hou.hipFile.clear()
        self.renew()

    def after_file(self):
        self.refresh()
        if len(self.nodes) > MOST_NODES:
            self.make_room()
        self.renew()


def run(seed, count):
    print(f"{count} random operations, seed {seed}", flush=True)
    folder = tempfile.mkdtemp(prefix="random_operations_")
    began, early = time.monotonic(), None
    work = RandomOperations(seed, folder)
    try:
        for number in range(1, count + 1):
            try:
                work.step()
            except BaseException:
                print(f"operation {number} of seed {seed} failed", file=sys.stderr, flush=True)
                raise
            if number == count // 4:
                early = megabytes_in_use()
            if number % REPORT == 0:
                print(f"{number} operations, {megabytes_in_use():.1f} MB, {time.monotonic() - began:.0f} s", flush=True)
    finally:
        shutil.rmtree(folder, ignore_errors=True)
    refusals = sum(times for (_, refused), times in work.refused.items() if refused)
    print(f"{count} operations, {refusals} of them refused, digest {work.digest:08x}", flush=True)
    grown = megabytes_in_use() - early if early is not None else 0
    if grown > MOST_GROWTH:
        sys.exit(f"memory grew by {grown:.1f} MB in the last three quarters; {MOST_GROWTH} MB are allowed")
    idle = [name for name, weight in work.WEIGHTS.items() if weight >= 5 and not work.refused[name, ""]]
    if idle and count >= 1000:
        sys.exit(f"these were refused every time, so they prove nothing: {', '.join(idle)}")


if __name__ == "__main__":
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--seed", type=int, default=20261121)
    arguments.add_argument("--count", type=int, default=5000)
    options = arguments.parse_args()
    run(options.seed, options.count)
