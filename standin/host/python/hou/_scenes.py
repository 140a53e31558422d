"""Copies of nodes."""

import _hou

from . import _check
from ._nodes import Node, _wrap


def copyNodesTo(nodes, destination_node):
    """Copies nodes, with all that is in them, into a network and gives the new ones as a tuple.

    Taken names get another number. Wires among the copied nodes are copied too, and wires from others are when the copies
    stand beside them. Raises hou.OperationFailed, with nothing copied, when the network does not take one of them.
    """
    _check.instance(destination_node, Node, "destination_node")
    ids = [_check.instance(node, Node, "each of nodes")._id for node in nodes]
    return tuple(_wrap(id) for id in _hou.copy_nodes(ids, destination_node._id))
