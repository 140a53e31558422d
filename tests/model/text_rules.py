"""Rules about text: labels made from names, splitting, numbers at the front of a text.

Bytes count, in the C locale: only the letters A to Z have another case. No rule here cuts inside a character, so that
working on characters gives the same as working on bytes.
"""

import re

LOWER = frozenset("abcdefghijklmnopqrstuvwxyz")
UPPER = frozenset("ABCDEFGHIJKLMNOPQRSTUVWXYZ")


def upper(character):
    return chr(ord(character) - 32) if character in LOWER else character


def pretty_underscores(text, capitalize):
    out = []
    raise_next = capitalize
    for character in text:
        if character == "_":
            out.append(" ")
            raise_next = capitalize
        elif raise_next:
            out.append(upper(character))
            raise_next = False
        else:
            out.append(character)
    return "".join(out)


def pretty_camel_case(text, capitalize):
    out = []
    for i, character in enumerate(text):
        if i == 0:
            out.append(upper(character) if capitalize else character)
        else:
            # The neighbour is that of the given text, not of the result: "xScale" becomes "X Scale".
            if text[i - 1] in LOWER and character in UPPER:
                out.append(" ")
            out.append(character)
    return "".join(out)


def pretty_label(text, capitalize):
    return (pretty_underscores if "_" in text else pretty_camel_case)(text, capitalize)


def split(text, separator, keep_empty=False):
    if not text:
        return []
    return [word for word in text.split(separator) if word or keep_empty]


def leading_integer(text):
    """What base-10 strtol reads: 0 when there is no number at the front, the nearest 64-bit number to a longer one."""
    found = re.match(r"[ \t\n\v\f\r]*([+-]?[0-9]+)", text)
    return max(-2**63, min(2**63 - 1, int(found.group(1)))) if found else 0
