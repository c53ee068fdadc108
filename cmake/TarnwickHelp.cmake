# The help: pages in help/, gathered into HELP/tarnwick.qch beside the program. What has an id in a page is found by it.
include(GNUInstallDirs)
find_package(Qt6 6.4 REQUIRED COMPONENTS Help)
find_package(Qt6ToolsTools REQUIRED)

set(tarnwick_help_file "${TARNWICK_BIN_DIR}/HELP/tarnwick.qch")
file(GLOB pages CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/help/*")
add_custom_command(
    OUTPUT "${tarnwick_help_file}"
    COMMAND ${CMAKE_COMMAND} -D "PAGES=${CMAKE_SOURCE_DIR}/help" -D "TO=${CMAKE_BINARY_DIR}/help"
            -P "${CMAKE_SOURCE_DIR}/cmake/HelpProject.cmake"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${TARNWICK_BIN_DIR}/HELP"
    COMMAND Qt6::qhelpgenerator -s "${CMAKE_BINARY_DIR}/help/tarnwick.qhp" -o "${tarnwick_help_file}"
    DEPENDS ${pages} "${CMAKE_SOURCE_DIR}/cmake/HelpProject.cmake"
    COMMENT "Gathering the help"
    VERBATIM)
add_custom_target(tarnwick_help ALL DEPENDS "${tarnwick_help_file}")
install(FILES "${tarnwick_help_file}" DESTINATION "${CMAKE_INSTALL_DATADIR}/tarnwick/HELP")
