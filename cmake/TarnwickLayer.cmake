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
        set_property(GLOBAL APPEND PROPERTY TARNWICK_LAYERS ${target})
        if(NOT layer_PRECOMPILED)
            set(layer_PRECOMPILED plain)
        endif()
        tarnwick_precompile(${target} ${layer_PRECOMPILED})
        tarnwick_together(${target})
    endif()

    if(layer_QT AND sources)
        file(GLOB_RECURSE headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h"
             "${CMAKE_CURRENT_SOURCE_DIR}/*.qrc")
        target_sources(${target} PRIVATE ${headers})
        set_target_properties(${target} PROPERTIES AUTOMOC ON AUTORCC ON
                              # moc reads headers alone: what a layer uses need not be built before.
                              AUTOGEN_ORIGIN_DEPENDS OFF)
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

# tarnwick_host(<program>)
#
# Makes the program a host of libraries loaded at run time: it holds every layer declared before it whole and shows it to
# what it loads, so that all work with one copy of the engine and of desk.
function(tarnwick_host program)
    get_property(layers GLOBAL PROPERTY TARNWICK_LAYERS)
    string(REPLACE ";" "," layers "${layers}")
    set_target_properties(${program} PROPERTIES ENABLE_EXPORTS ON LINK_LIBRARY_OVERRIDE "WHOLE_ARCHIVE,${layers}")
endfunction()

# tarnwick_module(<module> [LINK <library>...] SOURCES <source>...)
#
# A library that a host loads at run time. It sees the layers' headers and links none of them: what it uses is the host's.
# LINK names what is shared beside: Qt.
function(tarnwick_module module)
    cmake_parse_arguments(PARSE_ARGV 1 module "" "" "LINK;SOURCES")
    add_library(${module} MODULE ${module_SOURCES})
    target_include_directories(${module} PRIVATE "${CMAKE_SOURCE_DIR}/src")
    target_link_libraries(${module} PRIVATE tarnwick_compiler Eigen3::Eigen tarnwick_highway ${module_LINK})
    set_target_properties(${module} PROPERTIES PREFIX "" AUTOMOC ON AUTOGEN_ORIGIN_DEPENDS OFF)
endfunction()

# tarnwick_editor(<library> <folder>)
#
# The editor made of the folder's sources, beside the programs and installed where they look for it.
function(tarnwick_editor library folder)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp")
    tarnwick_module(${library} SOURCES ${sources} LINK Qt6::Widgets)
    tarnwick_precompile(${library} widgets)
    tarnwick_together(${library})
    set_target_properties(${library} PROPERTIES LIBRARY_OUTPUT_DIRECTORY "${TARNWICK_BIN_DIR}")
    install(TARGETS ${library} LIBRARY DESTINATION lib/tarnwick)
    if(TARGET tarnwick)
        add_dependencies(tarnwick ${library}) # which looks for it when it is wanted
    endif()
    set_property(GLOBAL APPEND PROPERTY TARNWICK_EDITORS ${library})
endfunction()
