"""docs/metadata.md and the plug-in agree: every documented metadata key is read, every key that is read is documented."""

import re
import sys

import tree

DOCUMENT = "docs/metadata.md"
# Keys of the tables: | `key` | or | `key`, `key` |. Sub-keys of extra parameters are no keys of their own.
ROW = re.compile(r"^\| ((?:`[a-z_.]+`(?:, )?)+) \| (?:text|words|boolean|number) \|", re.MULTILINE)
READ = re.compile(r'"(houdini\.[a-z_]+|desc|linkable|min|max|softmin|softmax)"')
# Not keys of a metadata file: what the plug-in keeps for itself about ramps.
OWN = {"houdini.array_token", "houdini.remap"}


def documented(root):
    text = tree.text_of(root / DOCUMENT) or ""
    return {key for row in ROW.findall(text) for key in re.findall(r"`([a-z_.]+)`", row)}


def read(root):
    return {key for f in tree.cxx_files(root, "src/shop") for key in READ.findall(tree.text_of(f) or "")} - OWN


def findings(root):
    told, asked = documented(root), read(root)
    return ([f"{DOCUMENT} describes {key}, which src/shop never reads" for key in sorted(told - asked)]
            + [f"src/shop reads {key}, which {DOCUMENT} does not describe" for key in sorted(asked - told)])


if __name__ == "__main__":
    sys.exit(tree.main(findings))
