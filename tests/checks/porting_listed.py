"""docs/porting.md lists every name of the platform that the plug-in uses, and no other.

A name is an identifier of src/shop that a public header of the platform declares: a type, function, constant, macro,
object or member. It is listed when it stands in backticks in the first cell of a row below a heading that is a header of
the platform; every header that src/shop includes has such a heading. Names marked as uncertain stand in the table of
uncertain uses too, which has a dozen rows at most, and each is used in one source file only. The column "used in" names the
units that have one of a row's names, or says how many there are. The last column names places to change, which must be there:
files, functions of a file ("`FILE`: NAME()") and tables ("NAME_rows").
"""

import re
import sys

import tree

DOCUMENT = "docs/porting.md"
UNCERTAIN = "Uncertain uses"
MARK = "**U**"
MOST_UNCERTAIN = 12
USED_IN = 3       # the column of the units
MOST_UNITS = 4    # that are named one by one

FILE = re.compile(r"`(\w+\.(?:h|cpp))`")
NAMED = re.compile(r"(\w+)\(\)|(\w+_rows)\b|^: (\w+)$")  # a function, a table; behind a file a class or an object too

# Public headers by room; the stand-in host's own observation interface is no part of the platform.
HEADERS = ("standin/host/include", "standin/renderer/include", "standin/ipr/include")
NOT_PLATFORM = ("standin/host/include/standin/", "standin/renderer/include/kr_plugin.h",
                "standin/renderer/include/kr_observe.h")

# Names that the platform declares too, but by which the plug-in means the standard library's or its own.
LOOKALIKES = frozenset("""a b begin c_str clear end entry find flags get getConditional getDefault group insert isPython number op
quoted set size startsWith text thread time undo y""".split())

KEYWORDS = frozenset("""alignas auto bool break case catch char class const constexpr continue decltype default delete do
double else enum explicit extern false final float for friend if inline int long mutable namespace new noexcept nullptr
operator override private protected public return short signed sizeof static static_assert static_cast struct switch
template this throw true try typedef typename union unsigned using virtual void volatile while""".split())

COMMENT = re.compile(r"/\*.*?\*/|//[^\n]*", re.DOTALL)
TEXT = re.compile(r'"(?:\\.|[^"\\\n])*"' + r"|'(?:\\.|[^'\\\n])'")
INCLUDE = re.compile(r"^\s*#\s*include[^\n]*", re.MULTILINE)
PRIVATE = re.compile(r"\bprivate:.*?(?=\b(?:public|protected):|\}\s*;)", re.DOTALL)
BODY = re.compile(r"\)\s*(?:const|noexcept|override|\s)*(?::[^;{}]*)?\{[^{}]*\}")

DECLARATIONS = (
    re.compile(r"\b(?:class|struct|union|enum)\s+(?:[A-Z][A-Z_]*(?:EXPORT|API)\s+)?(\w+)"),
    re.compile(r"\btypedef\b[^;{]*?\b(\w+)\s*;"),
    re.compile(r"\btypedef\b[^;]*?\(\s*\*\s*(\w+)\s*\)"),
    re.compile(r"\}\s*(\w+)\s*;"),
    re.compile(r"#\s*define\s+(\w+)"),
    re.compile(r"\b([A-Za-z_]\w*)\s*\("),
    re.compile(r"\b(\w+)(?:\[\w*\])*\s*(?:=[^;,(){}]*)?[;,]"),
)
ENUMERATORS = re.compile(r"\benum\b[^{;]*\{([^}]*)\}")
ENUMERATOR = re.compile(r"(?:^|,)\s*(\w+)")


def code_of(file):
    """The file's code without comments, texts and includes."""
    return INCLUDE.sub("", TEXT.sub('""', COMMENT.sub(" ", tree.text_of(file) or "")))


def without_bodies(code):
    """Inline functions without what they do, innermost braces first."""
    while True:
        shorter = BODY.sub(");", code)
        if shorter == code:
            return code
        code = shorter


def declared(code):
    code = without_bodies(PRIVATE.sub("", code))
    names = {name for rule in DECLARATIONS[:-1] for name in rule.findall(code)}
    for values in ENUMERATORS.findall(code):
        names.update(ENUMERATOR.findall(values))
    members = re.sub(r"\([^()]*\)", "()", re.sub(r"\([^()]*\)", "()", ENUMERATORS.sub("", code)))
    names.update(DECLARATIONS[-1].findall(members))
    return {name for name in names - KEYWORDS if not name.startswith("m_")}  # those are private


def platform_names(root):
    names = {}
    for file in tree.cxx_files(root, *HEADERS):
        header = file.relative_to(root).as_posix()
        if not header.startswith(NOT_PLATFORM):
            for name in declared(code_of(file)):
                names.setdefault(name, set()).add(header.split("/include/", 1)[1])
    return names


def used_names(root):
    """Identifiers of the plug-in, each with the files that have it; not those of namespace std."""
    names = {}
    for file in tree.cxx_files(root, "src/shop"):
        for name in re.findall(r"(?<!std::)\b[A-Za-z_]\w*", code_of(file)):
            names.setdefault(name, set()).add(tree.place(root, file))
    return names


def included_headers(root):
    names = {}
    for file in tree.cxx_files(root, "src/shop"):
        for header in re.findall(r"#\s*include <([\w/]+\.h)>", tree.text_of(file) or ""):
            names.setdefault(header, tree.place(root, file))
    return names


def places_in(cell):
    """The places that a cell names: pairs of a file (empty for any) and a name in it (empty for all of it)."""
    before, *parts = FILE.split(cell)
    for file, said in zip(["", *parts[::2]], [before, *parts[1::2]]):
        names = ["".join(name) for name in NAMED.findall(said.strip())]
        yield from ((file, name) for name in names or ([""] if file else []))


class Document:
    """The page: names by line, and which of them are uncertain."""

    def __init__(self, root):
        file = root / DOCUMENT
        self.headings, self.listed, self.marked, self.uncertain, self.places, self.used_in = set(), {}, {}, {}, [], []
        self.uncertain_rows, section = -1, ""  # the row of headings does not count
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines() if file.exists() else [], 1):
            if line.startswith("#"):
                section = line.strip("# ")
                self.headings.add(section)
            elif line.startswith("|") and not line.startswith("|---"):
                self.read_row(number, section, [cell.strip() for cell in line.strip("| ").split(" | ")])

    def read_row(self, number, section, cells):
        names = {name: number for name in re.findall(r"`([^`]+)`", cells[0])}
        self.places += [(number, *place) for place in places_in(cells[-1])]
        if section == UNCERTAIN:
            self.uncertain_rows += 1
            self.uncertain.update(names)
        elif section.endswith(".h"):
            self.listed.update(names)
            if names and len(cells) > USED_IN:
                self.used_in.append((number, tuple(names), cells[USED_IN]))
            if any(MARK in cell for cell in cells[1:]):
                self.marked.update(names)


def name_findings(page, platform, used):
    for name in sorted(set(platform) & set(used) - LOOKALIKES - set(page.listed)):
        yield f"{min(used[name])}: uses {name} of {min(platform[name])}, which {DOCUMENT} does not list"
    for name, number in page.listed.items():
        if name not in platform or name not in used:
            yield f"{DOCUMENT}:{number}: {name} is no name of the platform that src/shop uses"


def used_in_findings(page, used):
    for number, names, said in page.used_in:
        units = sorted({re.sub(r".*/|\.\w+$", "", place) for name in names for place in used.get(name, ())})
        true = ", ".join(units) if len(units) <= MOST_UNITS else f"{len(units)} units"
        if said != true:
            yield f"{DOCUMENT}:{number}: {', '.join(names)}: used in: {true}"


def uncertain_findings(page, used):
    for name, number in sorted(page.marked.items()):
        if name not in page.uncertain:
            yield f"{DOCUMENT}:{number}: {name} is marked as uncertain and not among the uncertain uses"
    for name, number in sorted(page.uncertain.items()):
        if name not in page.marked:
            yield f"{DOCUMENT}:{number}: {name} is among the uncertain uses and not marked as uncertain"
        if len(used.get(name, ())) > 1:
            yield f"{DOCUMENT}:{number}: {name} is uncertain and used in {', '.join(sorted(used[name]))}"
    if page.uncertain_rows > MOST_UNCERTAIN:
        yield f"{DOCUMENT}: {page.uncertain_rows} uncertain uses; there may be {MOST_UNCERTAIN}"


def place_findings(page, root, used):
    for number, file, name in page.places:
        place = f"src/shop/{file}"
        if not (root / place).exists():
            yield f"{DOCUMENT}:{number}: there is no {place}"
        elif name and not (place in used.get(name, ()) if file else name in used):
            yield f"{DOCUMENT}:{number}: there is no {name} in {place}"


def findings(root):
    page, platform, used = Document(root), platform_names(root), used_names(root)
    found = [*name_findings(page, platform, used), *used_in_findings(page, used), *uncertain_findings(page, used)]
    found += [f"{place}: includes {header}, which has no heading in {DOCUMENT}"
              for header, place in sorted(included_headers(root).items())
              if any((root / room / header).exists() for room in HEADERS) and header not in page.headings]
    return found + list(place_findings(page, root, used))


if __name__ == "__main__":
    sys.exit(tree.main(findings))
