# Where things go below the tree's root, in the build directory and below the install prefix alike:
#   bin/  lib/  dso/  korvan/plugins/  korvan/metadata/  python/  share/kshop/preview/
set(KORVAN_TREE ${CMAKE_BINARY_DIR})
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${KORVAN_TREE}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${KORVAN_TREE}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${KORVAN_TREE}/lib)

set(KORVAN_DSO_DIR dso)
set(KORVAN_PLUGIN_DIR korvan/plugins)
set(KORVAN_METADATA_DIR korvan/metadata)
set(KORVAN_PYTHON_DIR python)
set(KORVAN_PREVIEW_DIR share/kshop/preview)

# The tree can be moved: everything finds its libraries beside itself.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../lib:$ORIGIN/../../lib")
