# Precompiled headers: what nearly every file of a kind of target reads, parsed once per kind. They change no meaning: each
# file includes what it uses and must compile without them (the presets clang and lint build so).

# Only GCC's are offered: ccache keeps them.
set(tarnwick_precompile_default OFF)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    set(tarnwick_precompile_default ON)
endif()
option(TARNWICK_PRECOMPILE "Precompile the headers most files include" ${tarnwick_precompile_default})

# tarnwick_precompiled(<kind> [LINK <library>...] HEADERS <header>...)
#
# Declares the precompiled headers <kind>, made as a target with these libraries would compile them.
function(tarnwick_precompiled kind)
    cmake_parse_arguments(PARSE_ARGV 1 pch "" "" "LINK;HEADERS")
    if(NOT TARNWICK_PRECOMPILE)
        return()
    endif()
    set(target tarnwick_precompiled_${kind})
    file(CONFIGURE OUTPUT ${kind}_precompiled.cpp CONTENT "") # a target needs a source
    add_library(${target} OBJECT EXCLUDE_FROM_ALL "${CMAKE_CURRENT_BINARY_DIR}/${kind}_precompiled.cpp")
    target_link_libraries(${target} PRIVATE tarnwick_compiler ${pch_LINK})
    target_precompile_headers(${target} PRIVATE ${pch_HEADERS})
    set_target_properties(${target} PROPERTIES CXX_COMPILER_LAUNCHER
        "${CMAKE_SOURCE_DIR}/cmake/precompiled/compile-afresh;${CMAKE_CXX_COMPILER_LAUNCHER}")
endfunction()

# The faces of the engine spend no time of their own: they shall be built soon rather than run soon. Their sources are those
# of the kinds "widgets" and "batch".
add_library(tarnwick_face_code INTERFACE)
target_compile_options(tarnwick_face_code INTERFACE $<$<CONFIG:Release>:-O1>)

# tarnwick_precompile(<target> <kind>): the target's sources read the precompiled headers <kind> first.
function(tarnwick_precompile target kind)
    if(kind MATCHES "^(widgets|batch)$")
        target_link_libraries(${target} PRIVATE tarnwick_face_code)
    endif()
    if(TARNWICK_PRECOMPILE)
        target_precompile_headers(${target} REUSE_FROM tarnwick_precompiled_${kind})
    endif()
endfunction()
