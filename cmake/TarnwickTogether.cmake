# Sources compiled several at a time: most of the time of a source goes into the headers it shares with its neighbours.
# That changes no meaning: each source includes what it uses and compiles alone (the presets clang and lint build so).

find_program(TARNWICK_AWK awk)
set(tarnwick_together_default OFF)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND TARNWICK_AWK)
    set(tarnwick_together_default ON)
endif()
option(TARNWICK_TOGETHER "Compile several sources at a time" ${tarnwick_together_default})

if(TARNWICK_TOGETHER)
    # The warning takes the sources of a group for headers, which shall not use what is in an anonymous namespace.
    target_compile_options(tarnwick_compiler INTERFACE -Wno-subobject-linkage)
endif()

# tarnwick_together(<target>)
#
# Has the target's sources compiled in groups of up to 1500 lines, longer ones alone. together.awk tells which may go
# together; what it answered is kept in build/PRESET/together/<target>.txt. A source with options of its own stays alone.
function(tarnwick_together target)
    if(NOT TARNWICK_TOGETHER)
        return()
    endif()
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    execute_process(
        COMMAND "${TARNWICK_AWK}" -v "roots=${CMAKE_SOURCE_DIR}/src:${CMAKE_SOURCE_DIR}/tests:${CMAKE_CURRENT_SOURCE_DIR}"
                -v most=1500 -f "${CMAKE_SOURCE_DIR}/cmake/together.awk" ${sources}
        OUTPUT_VARIABLE answer COMMAND_ERROR_IS_FATAL ANY)
    file(WRITE "${CMAKE_BINARY_DIR}/together/${target}.txt" "${answer}")

    string(REGEX MATCHALL "[^\n]+" groups "${answer}")
    foreach(group IN LISTS groups)
        separate_arguments(members UNIX_COMMAND "${group}")
        list(LENGTH members size)
        if(size GREATER 1)
            list(GET members 0 first)
            get_filename_component(name "${first}" NAME_WE)
            math(EXPR others "${size} - 1")
            set_source_files_properties(${members} PROPERTIES UNITY_GROUP "${name}_and_${others}")
        endif()
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()
