"""The scene's file.

A scene holds all nodes with their parameters, wires and user data, the time, and the variables that scripts set.
"""

import os.path

import _hou

from . import _check
from ._errors import LoadWarning


def save(file_name=None, save_to_recent_files=True):
    """Writes the scene, to its own file unless another one is named, which then becomes its own.

    The old file stays until the new one is complete. Raises hou.OperationFailed when it cannot be written.
    """
    if file_name is not None and not _check.text(file_name, "file_name"):
        raise ValueError("file_name must not be empty")
    _hou.save_scene(file_name or "")


def load(file_name, suppress_save_prompt=False, ignore_load_warnings=False):
    """Replaces the scene by that of a file.

    Nodes of missing types become placeholders, which keep what the file has of them. For these, and for what could not be
    understood, a hou.LoadWarning is raised when everything is loaded, unless it is to be ignored. A file that cannot be
    read, or is not complete, raises hou.OperationFailed, and the scene stays as it is.
    """
    _warn(_hou.load_scene(_check.text(file_name, "file_name")), ignore_load_warnings)


def merge(file_name, node_pattern="*", overwrite_on_conflict=False, ignore_load_warnings=False):
    """Adds the nodes of a file to the scene. Taken names get another number."""
    from ._errors import NotAvailable
    if node_pattern != "*" or overwrite_on_conflict:
        raise NotAvailable("Whole scenes are merged, and nothing is overwritten.")
    _warn(_hou.merge_scene(_check.text(file_name, "file_name")), ignore_load_warnings)


def clear(suppress_save_prompt=True):
    """Deletes all nodes, and what could be undone."""
    _hou.clear_scene()


def path():
    """The absolute path of the scene's file, which may not be there yet."""
    return _hou.scene_path()


def name():
    """The path again; basename() is what is short."""
    return _hou.scene_path()


def basename():
    """The file's name without its directory."""
    return os.path.basename(path())


def _warn(warnings, ignore):
    if warnings and not ignore:
        raise LoadWarning("\n".join(warnings))
