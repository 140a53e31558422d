"""The plug-in exports exactly the entry points that were agreed: `exported_symbols.py KORVAN_SHOP_SO`."""

import subprocess
import sys

AGREED = {"newVopOperator", "newShopOperator", "HoudiniDSOVersion", "HoudiniCompilerVersion", "getMetaDataCacheStr"}


def exported(library):
    """Names of the dynamic symbols that the library defines."""
    listing = subprocess.run(["nm", "-D", "--defined-only", "--format=posix", library],
                             check=True, capture_output=True, text=True)
    return {line.split()[0].split("@")[0] for line in listing.stdout.splitlines() if line.strip()}


def findings(library):
    names = exported(library)
    return ([f"{library} exports {n}, which nobody agreed to" for n in sorted(names - AGREED)]
            + [f"{library} does not export {n}" for n in sorted(AGREED - names)])


if __name__ == "__main__":
    found = findings(sys.argv[1])
    print("\n".join(found) if found else f"{len(AGREED)} agreed symbols and no other")
    sys.exit(1 if found else 0)
