# What every target of the project is built with, and the one way to declare a floor: a static
# library that sees only the floors that it names.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    # ccache accepts a precompiled header only when told to overlook these two things.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE_PROGRAM})
endif()

add_library(project_options INTERFACE)
target_compile_options(project_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wconversion -Wno-sign-conversion -fno-math-errno
    # Programs share the libraries' precompiled header, so they are compiled like them.
    -fPIC)
if(CCACHE_PROGRAM AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(project_options INTERFACE -fpch-preprocess)
endif()
target_compile_definitions(project_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)
if(FAKTURA_SANITIZE)
    target_compile_options(project_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(project_options INTERFACE -fsanitize=address,undefined)
endif()

# faktura_floor(name SOURCES file... LINKS target...)
# Files are included by their place below include_root, which is src, or above host.
function(faktura_floor name)
    cmake_parse_arguments(floor "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${floor_SOURCES})
    target_link_libraries(${name} PUBLIC ${floor_LINKS} PRIVATE project_options)
    target_include_directories(${name} PUBLIC ${include_root})
    if(NOT name STREQUAL "runtime")
        target_precompile_headers(${name} REUSE_FROM runtime)
    endif()
endfunction()
