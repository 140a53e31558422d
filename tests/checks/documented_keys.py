"""docs/metadata.md, the plug-in and kshop lint agree about the metadata keys that there are, and lint about their kinds."""

import re
import sys

import tree

DOCUMENT = "docs/metadata.md"
# Keys of the tables: | `key` | or | `key`, `key` |. Sub-keys of extra parameters are no keys of their own.
ROW = re.compile(r"^\| ((?:`[a-z_.]+`(?:, )?)+) \| (?:text|words|boolean|number) \|", re.MULTILINE)
KINDS = re.compile(r"^\| ((?:`[a-z_.]+`(?:, )?)+) \| (text|words|boolean|number) \|", re.MULTILINE)
# Rows of the table of lint: {KeyOwner::Shader, "houdini.skip", KR_TYPE_BOOLEAN, ...
LINT = "tools/kshop/lint/known_keys.cpp"
LINTED = re.compile(r'\{KeyOwner::(?:Shader|Parameter), "([a-z_.]+)", KR_TYPE_([A-Z]+)')
KIND = {"text": "STRING", "words": "STRING", "boolean": "BOOLEAN", "number": "FLOAT"}
READ = re.compile(r'"(houdini\.[a-z_]+|desc|linkable|min|max|softmin|softmax)"')
# Not keys of a metadata file: what the plug-in keeps for itself about ramps.
OWN = {"houdini.array_token", "houdini.remap"}


def documented(root):
    text = tree.text_of(root / DOCUMENT) or ""
    return {key for row in ROW.findall(text) for key in re.findall(r"`([a-z_.]+)`", row)}


def read(root):
    return {key for f in tree.cxx_files(root, "src/shop") for key in READ.findall(tree.text_of(f) or "")} - OWN


def documented_kinds(root):
    """Each documented key with the kinds that its rows tell: of a shader and of a parameter they are the same."""
    text = tree.text_of(root / DOCUMENT) or ""
    return {(key, KIND[kind]) for keys, kind in KINDS.findall(text) for key in re.findall(r"`([a-z_.]+)`", keys)}


def linted_kinds(root):
    return set(LINTED.findall(tree.text_of(root / LINT) or ""))


def disagreements(root):
    told, known = documented_kinds(root), linted_kinds(root)
    return ([f"{DOCUMENT} describes {key} as {kind}, which {LINT} does not know" for key, kind in sorted(told - known)]
            + [f"{LINT} knows {key} as {kind}, which {DOCUMENT} does not describe" for key, kind in sorted(known - told)])


def findings(root):
    told, asked = documented(root), read(root)
    return disagreements(root) + ([f"{DOCUMENT} describes {key}, which src/shop never reads" for key in sorted(told - asked)]
            + [f"src/shop reads {key}, which {DOCUMENT} does not describe" for key in sorted(asked - told)])


if __name__ == "__main__":
    sys.exit(tree.main(findings))
