# What a build is made of. The presets name the few combinations that people use.
option(KORVAN_STANDINS "Build the open stand-ins of host and renderer, and what needs them" ON)
option(KORVAN_PREVIEW "Build kshop preview: needs cpp-httplib, a prebuilt C++ library" ON)
option(KORVAN_TESTS "Build the tests" ON)
option(KORVAN_BENCH "Build the benchmarks" ON)
option(KORVAN_WERROR "Treat warnings as errors" ON)

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(KORVAN_CCACHE ccache)
if(KORVAN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_C_COMPILER_LAUNCHER ${KORVAN_CCACHE})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${KORVAN_CCACHE})
endif()

# What every target of ours is compiled with: link zelk::warnings privately.
add_library(zelk_warnings INTERFACE)
add_library(zelk::warnings ALIAS zelk_warnings)
target_compile_options(zelk_warnings INTERFACE -Wall -Wextra -Wpedantic $<$<BOOL:${KORVAN_WERROR}>:-Werror>)

set(KORVAN_SANITIZE "" CACHE STRING "Sanitizers to build everything with, separated by commas")
if(KORVAN_SANITIZE)
    add_compile_options(-fsanitize=${KORVAN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${KORVAN_SANITIZE})
endif()

option(KORVAN_COVERAGE "Count which lines run" OFF)
if(KORVAN_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()

# The host's compiler knows the C++ library's old texts only. GoogleTest is then built from its sources, since the packaged
# library has the new ones; nothing else that is linked has texts in its interface.
option(KORVAN_OLD_STRINGS "Build with the C++ library's old string ABI, that of the host's compiler" OFF)
if(KORVAN_OLD_STRINGS)
    add_compile_definitions(_GLIBCXX_USE_CXX11_ABI=0)
    set(KORVAN_GOOGLETEST_SOURCES /usr/src/googletest CACHE PATH "Sources of GoogleTest")
    if(KORVAN_BENCH OR KORVAN_PREVIEW)
        message(FATAL_ERROR "The benchmarks and the preview link libraries with the new string ABI: give "
                            "-DKORVAN_BENCH=OFF and -DKORVAN_PREVIEW=OFF with -DKORVAN_OLD_STRINGS=ON.")
    endif()
    if(KORVAN_TESTS AND NOT EXISTS ${KORVAN_GOOGLETEST_SOURCES}/CMakeLists.txt)
        message(FATAL_ERROR "KORVAN_GOOGLETEST_SOURCES=${KORVAN_GOOGLETEST_SOURCES} holds no sources of GoogleTest: "
                            "install the package googletest (script/bootstrap --test does).")
    endif()
    set(INSTALL_GTEST OFF)
    include(FetchContent)
    FetchContent_Declare(GTest SOURCE_DIR ${KORVAN_GOOGLETEST_SOURCES} OVERRIDE_FIND_PACKAGE)
endif()

option(KORVAN_FUZZ "Build the fuzzers: needs clang, and instruments everything" OFF)
if(KORVAN_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=address,undefined)
    set(KORVAN_PROCESS_SUPPLIES ON) # what the compiler puts in: it is in the program only
endif()
