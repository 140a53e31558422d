# Python inside the host: PY, the door of standin/python.h, and the module that the hou package is made of.
set(HOST_PY_SOURCES
    src/py/compile_check.cpp
    src/py/hou_assets.cpp
    src/py/hou_multi_parms.cpp
    src/py/hou_nodes.cpp
    src/py/hou_parms.cpp
    src/py/hou_scenes.cpp
    src/py/hou_session.cpp
    src/py/hou_spare_parms.cpp
    src/py/hou_types.cpp
    src/py/hou_undos.cpp
    src/py/hou_wires.cpp
    src/py/interpreter.cpp
    src/py/module.cpp
    src/py/parm_scripts.cpp
    src/py/py_python.cpp
    src/py/run.cpp
    src/py/template_facts.cpp)

# The package itself goes to python/ of the tree, where the library looks for it.
set(HOU_PACKAGE_FILES
    __init__.py
    _check.py
    _enums.py
    _errors.py
    _expressions.py
    _nodes.py
    _parms.py
    _ramp.py
    _scenes.py
    _session.py
    _template_group.py
    _templates.py
    _translate.py
    _types.py
    _vector.py
    hda.py
    hipFile.py
    undos.py)

set(HOU_PACKAGE_OUTPUTS "")
foreach(file IN LISTS HOU_PACKAGE_FILES)
    set(source ${CMAKE_CURRENT_LIST_DIR}/python/hou/${file})
    set(output ${KORVAN_TREE}/${KORVAN_PYTHON_DIR}/hou/${file})
    add_custom_command(OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND} -E copy ${source} ${output}
        DEPENDS ${source} VERBATIM)
    list(APPEND HOU_PACKAGE_OUTPUTS ${output})
    install(FILES ${source} DESTINATION ${KORVAN_PYTHON_DIR}/hou)
endforeach()

# Compiled here, since nobody may be able to write beside an installed package: to compile it anew at each start took
# longer than all the rest of it. The source's hash is checked, so a changed file is never passed over.
set(HOU_PACKAGE_DIR ${KORVAN_TREE}/${KORVAN_PYTHON_DIR}/hou)
set(HOU_PACKAGE_TAG cpython-${Python3_VERSION_MAJOR}${Python3_VERSION_MINOR})
set(HOU_PACKAGE_COMPILED "")
foreach(file IN LISTS HOU_PACKAGE_FILES)
    string(REGEX REPLACE "[.]py$" ".${HOU_PACKAGE_TAG}.pyc" compiled ${file})
    list(APPEND HOU_PACKAGE_COMPILED ${HOU_PACKAGE_DIR}/__pycache__/${compiled})
endforeach()
add_custom_command(OUTPUT ${HOU_PACKAGE_COMPILED}
    COMMAND ${Python3_EXECUTABLE} -m compileall -q -f -d hou --invalidation-mode checked-hash ${HOU_PACKAGE_DIR}
    DEPENDS ${HOU_PACKAGE_OUTPUTS}
    COMMENT "Compiling the hou package" VERBATIM)
install(FILES ${HOU_PACKAGE_COMPILED} DESTINATION ${KORVAN_PYTHON_DIR}/hou/__pycache__)

add_custom_target(hou_package ALL DEPENDS ${HOU_PACKAGE_OUTPUTS} ${HOU_PACKAGE_COMPILED})
# The library is of no use without the package; its target does not exist yet while this file is read.
cmake_language(DEFER CALL add_dependencies HoudiniOP2 hou_package)
