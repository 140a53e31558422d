"""Undo: what was changed, in named steps.

Values, expressions and numbers of multi-parameter instances are undone; making, deleting, renaming and wiring nodes is
not. Each call that sets something is a step of its own unless a group is open.
"""

import contextlib

import _hou

from . import _check


@contextlib.contextmanager
def group(label):
    """All changes made inside are one step with that label, also when the block is left by an exception.

    Inside another group the outermost one counts. A group without changes leaves no step.
    """
    level = _hou.begin_undo_block(_check.text(label, "label"))
    try:
        yield
    finally:
        _hou.end_undo_block(level)


@contextlib.contextmanager
def disabler():
    """Changes made inside are not recorded and stay when the steps around them are undone."""
    _hou.disable_undos(True)
    try:
        yield
    finally:
        _hou.disable_undos(False)


def areEnabled():
    """False inside a disabler, and while a step is undone or redone."""
    return _hou.are_undos_enabled()


def performUndo():
    """Takes back the last step, with the events of the nodes it changes. False when there is none.

    Raises hou.OperationFailed inside a group, and when listeners of an undo ask for it.
    """
    return _hou.perform_undo()


def performRedo():
    """Brings back the step that was undone last; otherwise as performUndo()."""
    return _hou.perform_redo()


def undoLabels():
    """The labels of what can be undone, the next one first."""
    return _hou.undo_labels()


def redoLabels():
    return _hou.redo_labels()


def clear():
    """Forgets all steps; what they changed stays."""
    _hou.clear_undos()
