"""Asset files: installing them, and what they define."""

import _hou

from . import _check
from ._types import NodeTypeCategory


def installFile(file_path, oplibraries_file=None, change_oplibraries_file=True, force_use_assets=False):
    """Makes the types of an asset file, or of an expanded one; a file that is installed is read anew.

    A type whose name is taken is left out, with a message. The other arguments are taken for the scripts that give
    them; every session here begins without installed files. Raises hou.OperationFailed when it is no asset file.
    """
    _hou.install_library(_check.text(file_path, "file_path"))


def uninstallFile(file_path, oplibraries_file=None, change_oplibraries_file=True):
    """Removes the types of an asset file; nodes of them stay as placeholders, as in a scene whose types are missing."""
    _hou.uninstall_library(_check.text(file_path, "file_path"))


def reloadFile(file_path):
    """Reads an installed file anew."""
    installFile(file_path)


def loadedFiles():
    """Paths of the installed files, in the order of their installing."""
    return _hou.loaded_libraries()


def definitionsInFile(file_path):
    """A tuple of hou.HDADefinition, one for each type in an asset file, which need not be installed."""
    path = _hou.library_path(_check.text(file_path, "file_path"))
    return tuple(HDADefinition(path, table, name) for table, name in _hou.definitions(path))


class HDASection:
    """A named piece of a definition: a text or bytes. They are read when they are asked for."""

    __slots__ = ("_definition", "_name")

    def __init__(self, definition, name):
        self._definition = definition
        self._name = name

    def name(self):
        return self._name

    def size(self):
        """Number of bytes."""
        return self._definition._sizes()[self._name]

    def binaryContents(self):
        return _hou.section_bytes(*self._definition._key(), self._name)

    def contents(self):
        """The text; bytes that are none stand as escapes."""
        return self.binaryContents().decode("utf-8", "surrogateescape")

    def __repr__(self):
        return "<hou.HDASection %s>" % self._name


class HDADefinition:
    """What an asset file says about one type."""

    __slots__ = ("_path", "_table", "_name")

    def __init__(self, path, table, name):
        self._path, self._table, self._name = path, table, name

    def _key(self):
        return (self._path, self._table, self._name)

    def _fact(self, key):
        return _hou.definition_facts(*self._key())[key]

    def _sizes(self):
        return _hou.definition_sections(*self._key())

    def nodeTypeName(self):
        return self._name

    def nodeTypeCategory(self):
        return NodeTypeCategory(self._table)

    def nodeType(self):
        """The type, or None when no such type is installed."""
        return NodeTypeCategory(self._table).nodeType(self._name)

    def libraryFilePath(self):
        """Absolute."""
        return self._path

    def description(self):
        """The label of the type."""
        return self._fact("label")

    def icon(self):
        return self._fact("icon")

    def extraInfo(self):
        """For VOP types the network mask."""
        return self._fact("extra")

    def minNumInputs(self):
        return self._fact("min_inputs")

    def maxNumInputs(self):
        return self._fact("max_inputs")

    def modificationTime(self):
        """Unix seconds."""
        return self._fact("mod_time")

    def isInstalled(self):
        type = self.nodeType()
        return type is not None and type.definition() == self

    def isCurrent(self):
        """The same: of several definitions of one name only the first becomes a type."""
        return self.isInstalled()

    def sections(self):
        """A dictionary from name to hou.HDASection, in the order of the file."""
        return {name: HDASection(self, name) for name in self._sizes()}

    def hasSection(self, name):
        return _check.text(name, "name") in self._sizes()

    def __eq__(self, other):
        return isinstance(other, HDADefinition) and self._key() == other._key()

    def __hash__(self):
        return hash(self._key())

    def __repr__(self):
        return "<hou.HDADefinition %s in %s>" % (self._name, self._path)
