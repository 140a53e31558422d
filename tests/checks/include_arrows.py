"""Who may include whom: see ARCHITECTURE.md, "Rooms"."""

import re
import sys

import tree

CXX_LIBRARY = set(
    "algorithm array atomic bitset cassert cctype cerrno cfloat cinttypes ciso646 climits clocale cmath csetjmp "
    "csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cwchar cwctype chrono complex condition_variable "
    "deque exception forward_list fstream functional future initializer_list iomanip ios iosfwd iostream istream "
    "iterator limits list locale map memory mutex new numeric ostream queue random ratio regex set sstream stack "
    "stdexcept streambuf string system_error thread tuple type_traits typeindex typeinfo unordered_map unordered_set "
    "utility valarray vector".split())
C_LIBRARY = set(
    "assert.h ctype.h errno.h float.h inttypes.h limits.h locale.h math.h setjmp.h signal.h stdarg.h stdbool.h "
    "stddef.h stdint.h stdio.h stdlib.h string.h time.h wchar.h".split())
STANDARD = CXX_LIBRARY | C_LIBRARY
# What C++17 code for one platform may use besides.
PLATFORM = STANDARD | set(
    "any charconv filesystem optional string_view variant cxxabi.h dirent.h dlfcn.h elf.h fcntl.h fnmatch.h glob.h link.h "
    "netdb.h poll.h pthread.h pwd.h signal.h spawn.h strings.h termios.h unistd.h".split())
PLATFORM_PREFIXES = ("sys/", "arpa/", "net/", "netinet/")

HOST_LIBRARIES = ("UT/", "SYS/", "CH/", "PRM/", "CMD/", "PY/", "FS/", "OP/", "VOP/", "SHOP/")
RENDERER_HEADERS = ("kr.h", "kr_plugin.h", "kr_observe.h")

# room: directory; library: allowed without a prefix; prefixes: allowed beginnings of <...>;
# roots: where a header of the room's own may lie, besides beside the file that includes it.
ROOMS = (
    dict(room="src/shop", library=STANDARD | {"kr.h"}, prefixes=HOST_LIBRARIES + ("zelk/ipr/",), roots=("src/shop",)),
    dict(room="standin/common", library=PLATFORM, prefixes=("common/",) + PLATFORM_PREFIXES, roots=()),
    dict(room="standin/host", library=PLATFORM | {"Python.h", "zlib.h"},
         prefixes=("pybind11/", "common/") + PLATFORM_PREFIXES, roots=("standin/host/include", "standin/host/src")),
    dict(room="standin/renderer", library=PLATFORM, prefixes=("toml++/", "nlohmann/", "common/") + PLATFORM_PREFIXES,
         roots=("standin/renderer/include", "standin/renderer/src", "standin/renderer/shaders")),
    dict(room="standin/ipr", library=PLATFORM | {"kr.h", "zmq.h", "zmq.hpp", "msgpack.hpp"},
         prefixes=("msgpack/",) + PLATFORM_PREFIXES, roots=("standin/ipr/include", "standin/ipr/src")),
    dict(room="tools", library=PLATFORM | set(RENDERER_HEADERS) | {"httplib.h", "spawn.h"},
         prefixes=HOST_LIBRARIES + ("standin/", "zelk/ipr/", "CLI/", "fmt/", "nlohmann/") + PLATFORM_PREFIXES,
         roots=("tools", "tools/kshop")),
)

# The plug-in is loaded, never linked, by anything outside its own directory, its tests and benchmarks.
LINK_FREE_ROOMS = ("standin", "tools")

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
LINKS = re.compile(r"target_(?:link_libraries|sources|include_directories)\s*\(([^)]*)\)")


def is_own(root, file, name, room):
    """A header of the room itself, and not one that is reached by climbing out of it."""
    home = (root / room["room"]).resolve()
    for base in (file.parent, *(root / r for r in room["roots"])):
        target = (base / name).resolve()
        if target.is_file() and home in target.parents:
            return True
    return False


def is_allowed(root, file, name, room):
    return name in room["library"] or name.startswith(room["prefixes"]) or is_own(root, file, name, room)


def include_findings(root):
    for room in ROOMS:
        for file in tree.cxx_files(root, room["room"]):
            text = tree.text_of(file) or ""
            for match in INCLUDE.finditer(text):
                name = match.group(2)
                if not is_allowed(root, file, name, room):
                    line = text.count("\n", 0, match.start(1)) + 1
                    yield f"{tree.place(root, file, line)}: {room['room']} may not include {name}"


def link_findings(root):
    for file in tree.files(root, *LINK_FREE_ROOMS):
        if file.name != "CMakeLists.txt" and file.suffix != ".cmake":
            continue
        text = tree.text_of(file) or ""
        for match in LINKS.finditer(text):
            if re.search(r"\bkorvan_shop\b|\bkorvan_shop_objects\b|src/shop", match.group(1)):
                line = text.count("\n", 0, match.start()) + 1
                yield f"{tree.place(root, file, line)}: nothing here may link or include the plug-in"


def findings(root):
    return list(include_findings(root)) + list(link_findings(root))


if __name__ == "__main__":
    sys.exit(tree.main(findings))
