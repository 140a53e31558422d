"""Nodes: one class per kind, all of them `Node`s.

A node object is a handle. Using it after its node was deleted raises hou.ObjectWasDeleted, and never anything worse: it
keeps the node's number, which no other node gets.
"""

import _hou

from . import _check, _template_group, undos
from ._enums import _require, exprLanguage, nodeFlag
from ._errors import InvalidInput, InvalidNodeName, OperationFailed
from ._parms import Parm, ParmTuple
from ._templates import ParmTemplate
from ._types import NodeType, NodeTypeCategory
from ._vector import Vector2, _two_numbers


class NodeConnection:
    """One wire, from an output of `inputNode()` to an input of `outputNode()`."""

    __slots__ = ("_source", "_output", "_target", "_input")

    def __init__(self, source, output, target, input):
        self._source, self._output = source, output
        self._target, self._input = target, input

    def inputNode(self):
        """The node upstream."""
        return self._source

    def outputNode(self):
        """The node downstream."""
        return self._target

    def inputIndex(self):
        """The connector on the node downstream."""
        return self._input

    def outputIndex(self):
        """The connector on the node upstream."""
        return self._output

    def __eq__(self, other):
        return isinstance(other, NodeConnection) and self._key() == other._key()

    def __hash__(self):
        return hash(self._key())

    def _key(self):
        return (self._source, self._output, self._target, self._input)

    def __repr__(self):
        return "<hou.NodeConnection from %r output %d to %r input %d>" % (self._source, self._output,
                                                                         self._target, self._input)


class Node:
    """A node of any kind."""

    __slots__ = ("_id",)

    def __init__(self, _id):
        self._id = _check.index(_id, "a node's number")

    # Who and where it is

    def name(self):
        return _hou.node_name(self._id)

    def setName(self, name, unique_name=False):
        """Renames the node. A taken name raises hou.OperationFailed, or gets a number with `unique_name`."""
        _check.text(name, "name")
        parent = self.parent()
        if parent is None:
            raise OperationFailed("The root cannot be renamed.")
        if not _hou.is_valid_name(name):
            raise InvalidNodeName(_bad_name(name))
        other = _hou.child_named(parent._id, name)
        if other and other != self._id and not unique_name:
            raise OperationFailed('"%s" already has a node named "%s".' % (parent.path(), name))
        if other != self._id:
            _hou.rename_node(self._id, name)

    def path(self):
        return _hou.node_path(self._id)

    def sessionId(self):
        """A number that no other node of this session has."""
        return self._id

    def type(self):
        table, name = _hou.node_type(self._id)
        return NodeType(NodeTypeCategory(table), name)

    def parent(self):
        """The network around it; None for the root."""
        return _wrap(_hou.node_parent(self._id))

    def children(self):
        return tuple(_wrap(one) for one in _hou.node_children(self._id))

    def isNetwork(self):
        return _hou.node_is_network(self._id)

    def childTypeCategory(self):
        """The category of what can be created inside; None when nothing can."""
        table = _hou.child_table(self._id)
        return None if table is None else NodeTypeCategory(table)

    def node(self, node_path):
        """The node at a path, relative to this one unless it begins with '/'; None when there is none."""
        return _wrap(_hou.find_node(self._id, _check.text(node_path, "node_path")))

    def createNode(self, node_type_name, node_name=None, run_init_scripts=True, load_contents=True,
                   exact_type_name=False):
        """Creates a node inside this one, as the tab menu does, and gives it.

        Without a name it gets that of its type and a number. Raises hou.OperationFailed, with the reason, when there is
        no such type or it may not be created here.
        """
        _check.text(node_type_name, "node_type_name")
        if node_name is not None and not _hou.is_valid_name(_check.text(node_name, "node_name")):
            raise InvalidNodeName(_bad_name(node_name))
        return _wrap(_hou.create_node(self._id, node_type_name, node_name or "", bool(run_init_scripts),
                                      bool(exact_type_name)))

    def destroy(self):
        """Deletes the node and what is in it. The root and the managers raise hou.OperationFailed."""
        _hou.destroy_node(self._id)

    def createDigitalAsset(self, name=None, hda_file_name=None, description=None, min_num_inputs=0, max_num_inputs=0,
                           compress_contents=True, comment=None, version=None, save_as_embedded=False,
                           ignore_external_references=False, change_node_type=True, create_backup=True):
        """Makes a type of this subnet, writes it into an asset file and gives the node of the new type that takes the
        place of the subnet, with its name, wires and values; this one is gone then.

        The spare parameters of the subnet become those of the type. An input that is connected is one of the type even
        beyond `max_num_inputs`. A definition of that name in the file is replaced. The arguments behind it are taken
        for the scripts that give them: contents are always compressed, and the node always changes.
        Raises hou.OperationFailed, with the reason, when it cannot be done.
        """
        for value, argument in ((name, "name"), (hda_file_name, "hda_file_name"), (description, "description")):
            if value is not None:
                _check.text(value, argument)
        name = self.name() if name is None else name
        file = name.replace("::", "--") + ".hda" if hda_file_name is None else hda_file_name
        return _wrap(_hou.create_asset(self._id, name, file, description or "",
                                       _check.index(min_num_inputs, "min_num_inputs"),
                                       _check.index(max_num_inputs, "max_num_inputs")))

    def canCreateDigitalAsset(self):
        """True for subnets."""
        return _hou.can_create_asset(self._id)

    def isInsideLockedHDA(self):
        _hou.node_name(self._id)
        return False

    # Place

    def position(self):
        return Vector2(_hou.node_position(self._id))

    def setPosition(self, vector2):
        """Moves the node; beyond the safe area (a million each way) it stops at its border."""
        _hou.set_node_position(self._id, *_two_numbers(vector2, "vector2"))

    def move(self, vector2):
        self.setPosition(self.position() + vector2)

    def moveToGoodPosition(self, relative_to_inputs=True, move_inputs=True, move_outputs=True, move_unconnected=True):
        """Places the node beside its inputs or outputs, else below the others; gives its new position."""
        _hou.move_to_good_position(self._id, bool(relative_to_inputs), bool(move_inputs), bool(move_outputs),
                                   bool(move_unconnected))
        return self.position()

    # Wires

    def setInput(self, input_index, item_to_become_input, output_index=0):
        """Feeds an input from an output of another node; None disconnects.

        An index of no connector raises hou.InvalidInput; a wire that cannot be, for its types, for a circle, or
        because the nodes are in different networks, raises hou.OperationFailed with the reason.
        """
        _check.index(input_index, "input_index")
        _check.index(output_index, "output_index")
        if item_to_become_input is None:
            _hou.disconnect(self._id, self._input_index(input_index, _hou.input_slots(self._id)))
            return
        source = _check.instance(item_to_become_input, Node, "item_to_become_input")
        self._input_index(input_index, _hou.visible_inputs(self._id))
        outputs = _hou.visible_outputs(source._id)
        if not 0 <= output_index < outputs:
            raise InvalidInput('"%s" has no output %d; it has %d.' % (source.path(), output_index, outputs))
        _hou.connect(self._id, input_index, source._id, output_index)

    def _input_index(self, index, count):
        if not 0 <= index < count:
            raise InvalidInput('"%s" has no input %d; it has %d.' % (self.path(), index, count))
        return index

    def inputs(self):
        """The node at each input up to the last connected one; None where nothing is connected."""
        return tuple(_wrap(source) for source, output in _hou.input_wires(self._id))

    def outputs(self):
        """The nodes that this one feeds, each once."""
        return tuple(dict.fromkeys(wire.outputNode() for wire in self._output_wires()))

    def inputConnections(self):
        """One hou.NodeConnection per wire, by input."""
        return tuple(NodeConnection(_wrap(source), output, self, index)
                     for index, (source, output) in enumerate(_hou.input_wires(self._id)) if source)

    def outputConnections(self):
        """One hou.NodeConnection per wire, by output."""
        return tuple(sorted(self._output_wires(), key=NodeConnection.outputIndex))

    def _output_wires(self):
        return [NodeConnection(self, output, _wrap(target), index)
                for target, index, output in _hou.output_wires(self._id)]

    def inputConnectors(self):
        """For each visible input a tuple of its wires: one or none."""
        return _by_connector(self.inputConnections(), NodeConnection.inputIndex, _hou.visible_inputs(self._id))

    def outputConnectors(self):
        """For each visible output a tuple of its wires."""
        return _by_connector(self.outputConnections(), NodeConnection.outputIndex, _hou.visible_outputs(self._id))

    def inputLabels(self):
        return tuple(label for name, label, type in _hou.input_facts(self._id))

    def outputLabels(self):
        return tuple(label for name, label, type in _hou.output_facts(self._id))

    # Parameters

    def parm(self, parm_path):
        """The component at a path ("tx", "../null1/tx"); None when there is none."""
        return _find_parm(self, _check.text(parm_path, "parm_path"))

    def parms(self):
        """All components of all parameters, in the host's order."""
        return tuple(Parm(self, token, component) for token in _hou.parm_tokens(self._id)
                     for component in range(len(_hou.parm_channels(self._id, token))))

    def parmTuple(self, parm_path):
        """The whole parameter at a path ("t"); None when there is none."""
        return _find_parm_tuple(self, _check.text(parm_path, "parm_path"))

    def parmTuples(self):
        return tuple(ParmTuple(self, token) for token in _hou.parm_tokens(self._id))

    def evalParm(self, parm_path):
        """The value of a component, or a tuple of them for a whole parameter of several."""
        parm = self.parm(parm_path)
        if parm is not None:
            return parm.eval()
        parm_tuple = self.parmTuple(parm_path)
        if parm_tuple is None:
            raise OperationFailed('"%s" has no parameter "%s".' % (self.path(), parm_path))
        return parm_tuple.eval()

    def setParms(self, parm_dict):
        """Sets several at once: names of components with a value, names of parameters with a sequence of them.

        A name of no parameter raises hou.OperationFailed before anything is set.
        """
        targets = []
        for name, value in dict(parm_dict).items():
            several = isinstance(value, (tuple, list))
            target = self.parmTuple(name) if several else self.parm(name)
            if target is None:
                raise OperationFailed('"%s" has no parameter "%s".' % (self.path(), name))
            targets.append((target, value))
        with undos.group("Parameter Change"):
            for target, value in targets:
                target.set(value)

    def parmTemplateGroup(self):
        """The parameters as a tree of folders, spare ones included."""
        return _template_group.group(_hou.node_templates(self._id))

    def addSpareParmTuple(self, parm_template, in_folder=(), create_missing_folders=False):
        """Adds a parameter to this node alone and gives its hou.ParmTuple.

        Float, int, string and toggle templates can be added, at the end of the interface. The components of several
        ints or strings are numbered from 1 whatever the naming scheme.
        """
        _check.instance(parm_template, ParmTemplate, "parm_template")
        if in_folder:
            raise OperationFailed("Spare parameters cannot be put into folders yet; leave in_folder empty.")
        facts = getattr(parm_template, "_spare_facts", None)
        if facts is None:
            raise OperationFailed("A %s cannot be a spare parameter; float, int, string and toggle templates can."
                                  % type(parm_template).__name__)
        _hou.add_spare(self._id, facts())
        return ParmTuple(self, parm_template.name())

    def removeSpareParmTuple(self, parm_tuple):
        """Removes a parameter that addSpareParmTuple() added."""
        _check.instance(parm_tuple, ParmTuple, "parm_tuple")
        if parm_tuple.node() != self:
            raise OperationFailed('"%s" is no parameter of "%s".' % (parm_tuple.path(), self.path()))
        _hou.remove_spare(self._id, parm_tuple.name())

    def spareParms(self):
        return tuple(parm for parm in self.parms() if parm.isSpare())

    def expressionLanguage(self):
        """What Parm.setExpression takes an expression for when it is not told."""
        _hou.node_name(self._id)
        return exprLanguage.Hscript

    def _folders_around(self, token):
        """Labels of the folders around a parameter; those of a multi-parameter count for what is in it."""
        outermost = token
        while (parent := _hou.multi_parent(self._id, outermost)) is not None:
            outermost = parent
        facts = _hou.node_templates(self._id)
        return _template_group.folders_around(facts, outermost)

    # Texts and flags

    def setUserData(self, name, value):
        _hou.set_user_data(self._id, _check.text(name, "name"), _check.text(value, "value"))

    def userData(self, name):
        """The text stored under a name; None when there is none."""
        return _hou.user_data(self._id, _check.text(name, "name"))

    def userDataDict(self):
        return _hou.user_data_dict(self._id)

    def destroyUserData(self, name):
        if not _hou.destroy_user_data(self._id, _check.text(name, "name")):
            raise OperationFailed('"%s" has no user data named "%s".' % (self.path(), name))

    def isGenericFlagSet(self, flag):
        return _hou.flag(self._id, _require(nodeFlag, flag, "flag").name())

    def setGenericFlag(self, flag, value):
        _hou.set_flag(self._id, _require(nodeFlag, flag, "flag").name(), bool(value))

    def errors(self):
        """What went wrong when its parameters were evaluated, as sentences."""
        return _hou.node_errors(self._id)

    def __eq__(self, other):
        return isinstance(other, Node) and self._id == other._id

    def __hash__(self):
        return hash(self._id)

    def __repr__(self):
        try:
            return "<hou.%s of type %s at %s>" % (type(self).__name__, self.type().name(), self.path())
        except Exception:
            return "<hou.%s, deleted>" % type(self).__name__


class VopNode(Node):
    """A node of a shader network: its connectors have names and types."""

    __slots__ = ()

    def inputNames(self):
        return tuple(name for name, label, type in _hou.input_facts(self._id))

    def outputNames(self):
        return tuple(name for name, label, type in _hou.output_facts(self._id))

    def inputDataTypes(self):
        """The type of each visible input as a word: "float", "vector", "string"."""
        return tuple(type for name, label, type in _hou.input_facts(self._id))

    def outputDataTypes(self):
        return tuple(type for name, label, type in _hou.output_facts(self._id))

    def inputIndex(self, input_name):
        """The number of the input of that name; -1 when there is none."""
        names = self.inputNames()
        return names.index(input_name) if input_name in names else -1

    def outputIndex(self, output_name):
        names = self.outputNames()
        return names.index(output_name) if output_name in names else -1


class ShopNode(Node):
    """A material, or a network that makes one."""

    __slots__ = ()


class ObjNode(Node):
    """An object of the scene."""

    __slots__ = ()


class RopNode(Node):
    """An output driver."""

    __slots__ = ()


_classes = {"Vop": VopNode, "Shop": ShopNode, "Object": ObjNode, "Driver": RopNode}


def _wrap(id):
    """The node with that number, as its kind; None for 0."""
    if not id:
        return None
    table, name = _hou.node_type(id)
    return _classes.get(table, Node)(id)


def _bad_name(name):
    return ('"%s" is no name for a node: a name is made of letters, digits, "_", "." and "-".' % name)


def _by_connector(wires, index, count):
    connectors = [[] for _ in range(count)]
    for wire in wires:
        if index(wire) < count:
            connectors[index(wire)].append(wire)
    return tuple(tuple(one) for one in connectors)


def _split_parm_path(node, path):
    """The node and the name that a parameter's path leads to; None for the node when there is none."""
    if "/" not in path:
        return node, path
    node_path, name = path.rsplit("/", 1)
    base = node._id if node is not None else 0
    return _wrap(_hou.find_node(base, node_path or "/")), name


def _find_parm(node, path):
    node, name = _split_parm_path(node, path)
    found = _hou.find_parm(node._id, name) if node is not None else None
    return Parm(node, *found) if found is not None else None


def _find_parm_tuple(node, path):
    node, name = _split_parm_path(node, path)
    return ParmTuple(node, name) if node is not None and _hou.has_parm(node._id, name) else None


def node(path):
    """The node at a path, relative to hou.pwd() unless it begins with '/'; None when there is none."""
    return _wrap(_hou.find_node(_hou.cwd(), _check.text(path, "path")))


def parm(path):
    """The component at a node's path, '/' and its name; None when there is none."""
    return _find_parm(pwd(), _check.text(path, "path"))


def parmTuple(path):
    """The whole parameter at a node's path, '/' and its name; None when there is none."""
    return _find_parm_tuple(pwd(), _check.text(path, "path"))


def pwd():
    """The working node: in an expression or a callback the node that it belongs to."""
    return _wrap(_hou.cwd())


def cd(path):
    """Changes the working node. A path that leads to no node raises hou.OperationFailed."""
    target = node(path)
    if target is None:
        raise OperationFailed('There is no node at "%s".' % path)
    _hou.set_cwd(target._id)


def root():
    return _wrap(_hou.root())
