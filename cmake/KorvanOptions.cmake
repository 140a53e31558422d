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

option(KORVAN_FUZZ "Build the fuzzers: needs clang, and instruments everything" OFF)
if(KORVAN_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=address,undefined)
endif()
