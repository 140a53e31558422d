# The preview: a web server, its page, and the process that has the nodes. Added to the target kshop.
if(NOT KORVAN_PREVIEW)
    target_sources(kshop PRIVATE preview/command_preview_absent.cpp)
    return()
endif()

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(KORVAN_HTTPLIB REQUIRED IMPORTED_TARGET cpp-httplib)

target_sources(kshop PRIVATE
    preview/command_preview.cpp
    preview/command_preview_worker.cpp
    preview/edit_values.cpp
    preview/edits.cpp
    preview/export.cpp
    preview/file_watch.cpp
    preview/front_requests.cpp
    preview/gesture.cpp
    preview/guard.cpp
    preview/http_server_module.cpp
    preview/kept_edits.cpp
    preview/lint_findings.cpp
    preview/node_view.cpp
    preview/page_files.cpp
    preview/parm_facts.cpp
    preview/parm_view.cpp
    preview/record_log.cpp
    preview/scene.cpp
    preview/supervisor.cpp
    preview/worker_line.cpp
    preview/worker_process.cpp
    preview/worker_requests.cpp)
target_link_libraries(kshop PRIVATE Threads::Threads ${CMAKE_DL_LIBS})

# By itself, so that only the preview loads what the web server needs.
add_library(kshop_http MODULE preview/http_server.cpp)
target_link_libraries(kshop_http PRIVATE PkgConfig::KORVAN_HTTPLIB Threads::Threads zelk::warnings)
set_target_properties(kshop_http PROPERTIES PREFIX "" CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
add_dependencies(kshop kshop_http)
install(TARGETS kshop_http LIBRARY DESTINATION lib)

# Copied whenever one changes, so that the build tree is complete by itself.
set(page_directory ${CMAKE_CURRENT_SOURCE_DIR}/preview/page)
file(GLOB page_files CONFIGURE_DEPENDS
    ${page_directory}/*.html ${page_directory}/*.css ${page_directory}/*.js ${page_directory}/*.svg)
set(page_copies)
foreach(file ${page_files})
    cmake_path(GET file FILENAME name)
    set(copy ${KORVAN_TREE}/${KORVAN_PREVIEW_DIR}/${name})
    add_custom_command(OUTPUT ${copy} DEPENDS ${file}
        COMMAND ${CMAKE_COMMAND} -E copy ${file} ${copy}
        COMMENT "Copying ${name}")
    list(APPEND page_copies ${copy})
endforeach()
add_custom_target(kshop_preview_page ALL DEPENDS ${page_copies})
add_dependencies(kshop kshop_preview_page)
install(FILES ${page_files} DESTINATION ${KORVAN_PREVIEW_DIR})
