"""What the renderer would answer about the node entries of catalogue files.

A second reading of the interface rules begins here: catalogue JSON comes in, and entries come out that answer the
questions that the plug-in asks a running renderer: names, types, defaults, enumerations and typed metadata.

The catalogue's own checks are not repeated: entries are expected to be ones that its loader accepts.
"""

import json
import struct

TYPE_WORDS = ("byte", "int", "uint", "boolean", "float", "rgb", "rgba", "vector", "point", "point2", "string",
              "pointer", "node", "array", "matrix", "enum")
CODE = {word: code for code, word in enumerate(TYPE_WORDS)}
CODE["undefined"] = 255

LAST_CONTINUATION = 99


def type_name(code):
    """The renderer's word for a type code, or None for a code that nobody knows."""
    if code == 255:
        return "undefined"
    return TYPE_WORDS[code] if 0 <= code < len(TYPE_WORDS) else None


def binary32(value):
    """`value` as the renderer keeps it: rounded to 32 bits; beyond their range it becomes an infinity."""
    try:
        return struct.unpack("<f", struct.pack("<f", value))[0]
    except OverflowError:
        return float("inf") if value > 0 else float("-inf")


def signed32(value):
    """The bits of an unsigned 32-bit number read as a signed one."""
    value &= 0xFFFFFFFF
    return value - 0x100000000 if value >= 0x80000000 else value


class MetaData:
    """The metadata of one node entry or of one of its parameters, in listed order.

    A query for another type than the stored one finds nothing.
    """

    def __init__(self):
        self.items = {}

    def put(self, key, value):
        """Stores a value; a key that exists already keeps its place in the order."""
        self.items[key] = value

    def text(self, key, default=""):
        """The text of `key` joined with its continuation keys up to the first gap; `default` if that is empty."""
        joined = ""
        for number in range(1, LAST_CONTINUATION + 1):
            piece = self.items.get(f"{key}{number}" if number > 1 else key)
            if not isinstance(piece, str):
                break
            joined += piece
        return joined or default

    def flag(self, key, default=False):
        value = self.items.get(key)
        return value if isinstance(value, bool) else default

    def number(self, key, default):
        """A number as the renderer keeps it, so rounded to 32 bits; `default` as it is."""
        value = self.items.get(key)
        if isinstance(value, bool) or not isinstance(value, (int, float)):
            return default
        return binary32(value)


class Parameter:
    """One parameter of an entry. `default` is None for a null default record; an array's is always a list."""

    def __init__(self, record):
        self.name = record["name"]
        self.code = _code(record, "type", "type_code")
        self.element_code = _code(record, "element", "element_code") if self.code == CODE["array"] else None
        self.enumeration = record.get("enum") or []
        self.default = record.get("default")
        if self.code == CODE["array"] and self.default is None:
            self.default = []
        self.meta = MetaData()


class Entry:
    """One node entry."""

    def __init__(self, record):
        self.name = record["name"]
        self.is_camera = record["kind"] == "camera"
        self.is_builtin = record.get("builtin", False)
        self.output_code = _code(record, "output", "output_code")
        self.parameters = [Parameter(p) for p in record.get("parameters", [])]
        self.meta = MetaData()
        by_name = {p.name: p for p in self.parameters}
        for item in record.get("metadata", []):
            owner = by_name[item["parameter"]] if item.get("parameter") is not None else self
            owner.meta.put(item["key"], item["value"])


def _code(record, word_key, code_key):
    return record[code_key] if code_key in record else CODE[record[word_key]]


def read_entries(paths):
    """The entries of all files, in the order in which a catalogue variable naming these files declares them."""
    entries = []
    for path in paths:
        with open(path, encoding="utf-8") as file:
            entries += [Entry(record) for record in json.load(file)["nodes"]]
    return entries
