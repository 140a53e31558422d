"""A scene that is built at random, of every node type that a Korvan container takes, from one seed."""

import contextlib
import os
import random

import hou

TEXTS = ("", " ", "plain", 'a "quoted" text', "back\\slash", "two\nlines", "`1 + 1`", "$HIPNAME $F", "{ } ; : ,",
         "ünïcödé \u2603", "tab\there", "# no comment", "'", "trailing \\", "end\n")
FLOATS = (0.0, -0.0, 0.1, -1e-30, 1e30, 5e-324, 1 / 3, 123456789.123456789)
EXPRESSIONS = (("$F * 0.25", hou.exprLanguage.Hscript), ("hou.frame() / 3", hou.exprLanguage.Python),
               ("1 +", hou.exprLanguage.Hscript), ("ch(\"../nobody/tx\")", hou.exprLanguage.Hscript),
               ("(1,\n 2)[1]", hou.exprLanguage.Python))
FLAGS = tuple(getattr(hou.nodeFlag, name) for name in hou.nodeFlag._names)
BASES = tuple(getattr(hou.rampBasis, name) for name in hou.rampBasis._names)


class RandomScene:
    def __init__(self, seed, count, folder):
        self.chance = random.Random(seed)
        self.count = count
        self.folder = folder
        self.nodes = []
        self.first = 0  # place in `nodes` behind those of which there is one of each kind

    def build(self):
        """Makes about `count` nodes in two containers and in /obj; the file of the asset that some are of."""
        self.session()
        asset = self.asset()
        self.create()
        for node in self.nodes:
            self.dress(node)
        for _ in range(self.chance.randrange(4)):
            hou.undos.performUndo()
        for node in self.nodes:
            self.wire(node)
        self.fetch()
        self.change_afterwards()
        return asset

    def session(self):
        """Before anything else: conditions look at animated values when these are set."""
        hou.setFps(self.chance.choice((24, 30)))
        hou.setFrame(self.chance.randrange(1, 100))
        hou.hscript("set ROUND_TRIP = '%d'" % self.chance.randrange(1000))

    def one(self, *choices):
        return self.chance.choice(choices)

    # Nodes

    def asset(self):
        """A digital asset of Korvan nodes with a parameter that its contents read."""
        net = hou.node("/shop").createNode("korvan_vopnet")
        subnet = net.createNode("subnet")
        subnet.addSpareParmTuple(hou.FloatParmTemplate("gain", "Gain", 1, default_value=(0.5,)))
        noise = subnet.createNode("korvan::fractal_noise")
        noise.parm("gain").setExpression('ch("../gain")')
        subnet.node("suboutput1").setInput(0, noise)
        file = os.path.join(self.folder, "round_trip.hda")
        subnet.createDigitalAsset("test::round_trip", file)
        net.destroy()
        return file

    def create(self):
        networks = [hou.node("/shop").createNode("korvan_vopnet", name) for name in ("first", "second")]
        kinds = self.admitted(networks[0])
        # Each kind once, then by chance, with more of those that have much to remember.
        remaining = list(kinds)
        kinds += ["korvan::fetch", "korvan::ramp_rgb", "korvan::ramp_float", "subnet"] * 2
        while len(self.nodes) < self.count:
            if not remaining:
                self.first = self.first or len(self.nodes)
            kind = remaining.pop(0) if remaining else self.chance.choice(kinds)
            node = self.chance.choice(networks).createNode(kind)
            self.nodes.append(node)
            if kind == "subnet" and len(networks) < 12:
                networks.append(node)
                self.nodes += node.children()
        objects = [hou.node("/obj").createNode(kind) for kind in ("cam", "null", "cam")]
        self.nodes += [*networks[:2], *objects]

    @staticmethod
    def admitted(network):
        """Every type that the container lets in; asked by creating one of each."""
        kinds = []
        for kind in hou.vopNodeTypeCategory().nodeTypes():
            try:
                network.createNode(kind).destroy()
                kinds.append(kind)
            except hou.OperationFailed:
                continue
        return kinds

    def dress(self, node):
        """Parameters, user data, place and flags."""
        self.spare(node)
        for parm in [p for p in node.parms() if p.isMultiParmParent()]:
            self.instances(parm)
        for parm in node.parms():
            if self.chance.random() < 0.8:
                self.randomize(parm)
        for _ in range(self.chance.randrange(3)):
            node.setUserData(self.one("note", "a b", "ünder", "x.y"), self.chance.choice(TEXTS))
        node.setPosition((self.chance.uniform(-50, 50), self.chance.choice(FLOATS[:4])))
        for flag in self.chance.sample(FLAGS, self.chance.randrange(3)):
            with contextlib.suppress(hou.Error):  # not every node has every flag
                node.setGenericFlag(flag, self.one(True, False))

    # Parameters

    def spare(self, node):
        if self.chance.random() > 0.3:
            return
        text = self.chance.choice(TEXTS)
        templates = (
            hou.FloatParmTemplate("my_size", "Size " + text, 3, default_value=(1, 2, 1 / 3), min=-1, max=9,
                                  naming_scheme=hou.parmNamingScheme.XYZW, help=text, disable_when="{ my_on == 0 }"),
            hou.IntParmTemplate("my_count", "Count", 1, default_value=(7,), max_is_strict=True, max=70),
            hou.StringParmTemplate("my_text", "Text", 1, default_value=(text,), tags={"why": text, "a b": "c"}),
            hou.StringParmTemplate("my_kind", "Kind", 1, default_value=("b",), menu_items=("a", "b"),
                                   menu_labels=("An A", text or "B")),
            hou.ToggleParmTemplate("my_on", "On", default_value=True, is_hidden=self.one(True, False)))
        for template in self.chance.sample(templates, self.chance.randrange(1, len(templates) + 1)):
            node.addSpareParmTuple(template)

    def instances(self, parm):
        """Number of instances by count, by whole ramp, or by inserting and removing."""
        way = self.chance.random()
        if way < 0.3 and parm.parmTemplate().type() == hou.parmTemplateType.Ramp:
            keys = self.chance.randrange(1, 9)
            color = parm.evalAsRamp().isColor()
            values = [tuple(self.chance.random() for _ in range(3)) if color else self.chance.random()
                      for _ in range(keys)]
            parm.set(hou.Ramp(self.chance.choices(BASES, k=keys), [self.chance.random() for _ in range(keys)], values))
            return
        parm.set(self.chance.randrange(7))
        count = parm.evalAsInt()
        if way > 0.7 and count > 1:
            parm.removeMultiParmInstance(self.chance.randrange(count))
            parm.insertMultiParmInstance(0)

    def randomize(self, parm):
        if parm.isMultiParmParent():
            return
        kind, kinds = parm.parmTemplate().type(), hou.parmTemplateType
        if kind in (kinds.Float, kinds.Int, kinds.Toggle) and self.chance.random() < 0.15:
            parm.setExpression(*self.chance.choice(EXPRESSIONS))
        elif kind == kinds.Float:
            parm.set(self.chance.choice((*FLOATS, self.chance.uniform(-9, 9))))
        elif kind in (kinds.Int, kinds.Menu, kinds.Toggle):
            parm.set(self.chance.randrange(3) if kind == kinds.Int else self.chance.randrange(2))
        elif kind == kinds.String and parm.name() != "target":
            items = parm.menuItems() if parm.parmTemplate().menuItems() else ()
            parm.set(self.chance.choice((*TEXTS, *items)))

    # Wires

    def wire(self, node):
        """Tries a random source for some inputs; those that do not fit are refused."""
        siblings = node.parent().children()
        for index in range(min(len(node.inputConnectors()), 40)):
            source = self.chance.choice(siblings)
            outputs = len(source.outputConnectors())
            if outputs and self.chance.random() < 0.6:
                self.try_wire(node, index, source, self.chance.randrange(outputs))

    @staticmethod
    def try_wire(node, index, source, output):
        with contextlib.suppress(hou.Error):
            node.setInput(index, source, output)

    def fetch(self):
        """Targets of every kind; then wires from what is mirrored, and other targets that move or drop the wires."""
        fetches = [n for n in self.nodes if n.type().name() == "korvan::fetch"]
        for node in fetches:
            self.aim(node)
            for sink in self.chance.sample(self.nodes, min(len(self.nodes), 20)):
                outputs = len(node.outputNames())
                if outputs and sink.parent() == node.parent() and sink.inputConnectors():
                    self.try_wire(sink, self.chance.randrange(len(sink.inputConnectors())), node,
                                  self.chance.randrange(outputs))
            if self.chance.random() < 0.4:
                self.aim(node)
        # Whatever chance says: one that mirrors.
        fetches[0].parm("target").set(self.of_kind("korvan::image").path())

    def of_kind(self, kind):
        return next(node for node in self.nodes if node.type().name() == kind)

    def aim(self, node):
        target = self.chance.choice(self.nodes)
        node.parm("target").set(self.one(target.path(), target.path(), "../" + target.name(), "/nowhere", "", "."))

    # What remains when an artist has worked for a while

    def change_afterwards(self):
        """Deletes, renames and copies some, but keeps one of each kind."""
        spent = [n for n in self.nodes[self.first:] if n.path().count("/") > 2 and not n.isInsideLockedHDA()]
        for node in self.chance.sample(spent, len(spent) // 6):
            try:
                path = node.path()
            except hou.ObjectWasDeleted:
                continue
            {"delete": node.destroy, "copy": lambda: hou.copyNodesTo((node,), node.parent()),
             "rename": lambda: node.setName("renamed", True)}[self.one("delete", "copy", "rename")]()
