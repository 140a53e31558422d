# The doors to the licensed platform: the host toolkit, the renderer and its interactive-render library, in place of the
# stand-ins. Each place is asked for by name, and a missing one ends the configuration with a sentence.
function(korvan_require_place variable what)
    if(NOT ${variable})
        message(FATAL_ERROR "${variable} is not set: give the directory of ${what} with -D${variable}=DIR.")
    endif()
    foreach(file ${ARGN})
        if(NOT EXISTS ${${variable}}/${file})
            message(FATAL_ERROR "${variable}=${${variable}} does not hold ${file}: it is not the directory of ${what}.")
        endif()
    endforeach()
endfunction()

set(HFS "" CACHE PATH "Installation of the host, version 15.5")
set(KORVAN_ROOT "" CACHE PATH "Installation of the renderer")
set(ZELK_IPR_ROOT "" CACHE PATH "Installation of the interactive-render library")
set(KORVAN_HOST_STRING_ABI 0 CACHE STRING "String ABI of the platform's libraries: 0 is that of the host's compiler")
korvan_require_place(HFS "the host (its installation)"
    toolkit/include/OP/OP_Node.h dsolib/libHoudiniOP1.so dsolib/libHoudiniOP2.so)
korvan_require_place(KORVAN_ROOT "the Korvan renderer" include/kr.h lib/libkr.so)
korvan_require_place(ZELK_IPR_ROOT "the interactive-render library" include/zelk/ipr/delta.h lib/libzelk_ipr.so)

# As the toolkit's own compiler script gives them, but for MAKING_DSO and the tag: those are for UT/UT_DSOVersion.h, which
# the plug-in does not include. A newer compiler needs the old string ABI.
add_library(zelk_host INTERFACE)
add_library(zelk::host ALIAS zelk_host)
target_include_directories(zelk_host SYSTEM INTERFACE ${HFS}/toolkit/include)
target_compile_definitions(zelk_host INTERFACE
    LINUX AMD64 SIZEOF_VOID_P=8 SESI_LITTLE_ENDIAN _GNU_SOURCE _REENTRANT _FILE_OFFSET_BITS=64 ENABLE_THREADS
    ENABLE_UI_THREADS USE_PTHREADS GCC3 GCC4 FBX_ENABLED=1 OPENCL_ENABLED=1 OPENVDB_ENABLED=1 CXX11_ENABLED=1
    _GLIBCXX_USE_CXX11_ABI=${KORVAN_HOST_STRING_ABI})
target_compile_options(zelk_host INTERFACE
    -fno-strict-aliasing -Wno-deprecated -Wno-reorder -Wno-parentheses -Wno-sign-compare -Wno-uninitialized
    -Wno-unused-parameter -Wno-attributes)
target_link_directories(zelk_host INTERFACE ${HFS}/dsolib)
target_link_libraries(zelk_host INTERFACE HoudiniOP2 HoudiniOP1)
set(KORVAN_PROCESS_SUPPLIES ON) # what the toolkit keeps in its other libraries

add_library(zelk_renderer INTERFACE)
add_library(zelk::renderer ALIAS zelk_renderer)
target_include_directories(zelk_renderer SYSTEM INTERFACE ${KORVAN_ROOT}/include)
target_link_directories(zelk_renderer INTERFACE ${KORVAN_ROOT}/lib)
target_link_libraries(zelk_renderer INTERFACE kr)

add_library(zelk_ipr_door INTERFACE)
add_library(zelk::ipr ALIAS zelk_ipr_door)
target_include_directories(zelk_ipr_door SYSTEM INTERFACE ${ZELK_IPR_ROOT}/include)
target_link_directories(zelk_ipr_door INTERFACE ${ZELK_IPR_ROOT}/lib)
target_link_libraries(zelk_ipr_door INTERFACE zelk_ipr)
