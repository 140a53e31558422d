"""The tree speaks about the product alone: no path of one machine, no pointer to a paper that readers do not have."""

import re
import sys

import tree

# Written with [brackets] so that this file does not match itself.
PATTERNS = (
    (r"(?:^|[^a-z])parts? [1-5][.][1-5]", "points to a paper that readers do not have"),
    (r"\b(?:the|our|written) spec(?:ification)?\b", "points to a paper that readers do not have"),
    (r"\b(?:spec|design|style)[.]md\b", "names a file that is not in the tree"),
    (r"\b(?:the|this) brie[f]\b", "points to a paper that readers do not have"),
    (r"\bissue #?[0-9]+\b", "points to a list that readers do not have"),
    (r"/wor[k]/|/roo[t]/|/hom[e]/[a-z]", "is a path of one machine"),
    (r"\bsub-?agen[t]s?\b", "speaks of how the tree was written"),
)
COMPILED = [(re.compile(pattern, re.IGNORECASE), why) for pattern, why in PATTERNS]

# Data of others, kept as they wrote it.
LEFT_ALONE = {"LICENSE"}


def findings(root):
    found = []
    for file in tree.files(root):
        text = tree.text_of(file)
        if text is None or file.name in LEFT_ALONE:
            continue
        for number, line in enumerate(text.splitlines(), 1):
            for pattern, why in COMPILED:
                match = pattern.search(line)
                if match:
                    found.append(f"{tree.place(root, file, number)}: '{match.group().strip()}' {why}")
    return found


if __name__ == "__main__":
    sys.exit(tree.main(findings))
