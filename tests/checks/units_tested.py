"""Every unit of the plug-in has its test file: src/shop/NAME.cpp needs tests/unit/NAME_test.cpp.

A file whose name is led by a unit's name (shader_desc_templates.cpp) belongs to that unit and may be tested with it.
"""

import sys

import tree


def units(root):
    """Stems of the sources that no other source's name leads."""
    stems = sorted(f.stem for f in tree.files(root, "src/shop") if f.suffix == ".cpp")
    return [s for s in stems if not any(s != other and s.startswith(other + "_") for other in stems)]


def is_tested(unit, tests):
    return any(t == f"{unit}_test" or (t.startswith(f"{unit}_") and t.endswith("_test")) for t in tests)


def findings(root):
    tests = {f.stem for f in tree.files(root, "tests/unit") if f.suffix == ".cpp"}
    return [f"src/shop/{u}.cpp has no test; write tests/unit/{u}_test.cpp" for u in units(root)
            if not is_tested(u, tests)]


if __name__ == "__main__":
    sys.exit(tree.main(findings))
