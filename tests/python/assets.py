"""Asset files, byte by byte, for tests of who may be created where."""

import gzip
import struct


def archive(entries):
    """The archive form of (name, text) pairs, behind the number of its bytes."""
    data = b""
    for name, text in [*entries, ("TRAILER!!!", "")]:
        path, body = name.encode() + b"\0", text.encode()
        data += b"070707000001000000000666000000000000000001000000%011o%06o%011o" % (0, len(path), len(body)) + path + body
    return struct.pack("<I", len(data)) + data


def contents(*children, own="own"):
    """Contents of an asset whose children have those types; a pair is a child with another suffix than ".init"."""
    entries = [("node_type", "Vop\n"), ("hdaroot.init", f"type = {own}\nmatchesdef = 0\n")]
    for i, child in enumerate(children):
        kind, suffix = child if isinstance(child, tuple) else (child, ".init")
        entries.append((f"hdaroot/n{i}{suffix}", f"type = {kind}\nmatchesdef = 0\n"))
    return archive(entries)


def index(sections):
    """An index file of (name, bytes) pairs."""
    table, offset = b"", 0
    for name, data in sections:
        table += struct.pack(">I", len(name)) + name.encode() + struct.pack(">III", offset, len(data), 0)
        offset += len(data)
    return b"INDX" + bytes(8) + struct.pack(">I", len(sections)) + table + b"".join(data for _, data in sections)


def text(value):
    return struct.pack(">I", len(value)) + value.encode()


def definition(name, table="Vop"):
    """The record of a type in INDEX_SECTION."""
    scope, _, bare = name.rpartition("::")
    place = f"{scope}::{table}/{bare}" if scope else f"{table}/{bare}"
    fields = [name, name.title(), f"oplib:/{place}?{place}", "", "", "", table, "", "", "", "*"]
    return place, struct.pack(">I", 4) + b"".join(map(text, fields)) + struct.pack(">III", 0, 0, 0) + bytes([1, 0, 0])


def library(types):
    """An asset file of {type name: {section: bytes}}."""
    records, sections = [], []
    for name, parts in types.items():
        place, record = definition(name)
        records.append(record)
        sections.append((place, index(list(parts.items()))))
    return index([("INDEX_SECTION", struct.pack(">I", len(records)) + b"".join(records)), *sections])


def packed(data):
    return {"Contents.gz": gzip.compress(data, mtime=0)}


def plain(data):
    return {"Contents": data}
