# tarnwick_layer(<name> [QT] [PRECOMPILED <kind>] [USES <layer>...] [LINK <library>...])
#
# Declares the folder that calls it as one layer: the library tarnwick_<name>, made of every source in the folder except
# main.cpp, seen from src/ and allowed to use only the named layers. A layer without sources is header-only. QT runs moc
# and rcc over the folder. PRECOMPILED names the headers of TarnwickPrecompile its sources read, if not those for plain
# layers.
function(tarnwick_layer name)
    cmake_parse_arguments(PARSE_ARGV 1 layer "QT" "PRECOMPILED" "USES;LINK")
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    list(REMOVE_ITEM sources "${CMAKE_CURRENT_SOURCE_DIR}/main.cpp")
    list(TRANSFORM layer_USES PREPEND tarnwick_)

    set(target tarnwick_${name})
    if(sources)
        add_library(${target} STATIC ${sources})
        set(scope PUBLIC)
    else()
        add_library(${target} INTERFACE)
        set(scope INTERFACE)
    endif()
    target_include_directories(${target} ${scope} "${CMAKE_SOURCE_DIR}/src")
    target_link_libraries(${target} ${scope} tarnwick_compiler ${layer_USES} ${layer_LINK})
    if(sources)
        if(NOT layer_PRECOMPILED)
            set(layer_PRECOMPILED plain)
        endif()
        tarnwick_precompile(${target} ${layer_PRECOMPILED})
    endif()

    if(layer_QT AND sources)
        file(GLOB_RECURSE headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h"
             "${CMAKE_CURRENT_SOURCE_DIR}/*.qrc")
        target_sources(${target} PRIVATE ${headers})
        set_target_properties(${target} PROPERTIES AUTOMOC ON AUTORCC ON)
    endif()
endfunction()

# tarnwick_program(<program> <layer>)
#
# The program made of the folder's main.cpp and its layer, put into bin/.
function(tarnwick_program program layer)
    file(GLOB main CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/main.cpp")
    if(NOT main)
        return()
    endif()
    add_executable(${program} ${main})
    target_link_libraries(${program} PRIVATE tarnwick_${layer})
    set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${TARNWICK_BIN_DIR}")
endfunction()
