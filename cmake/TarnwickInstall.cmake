# Where `cmake --install` puts the programs and what a desktop needs to know of them.
include(GNUInstallDirs)
foreach(program tarnwick tarnwick-cli)
    if(TARGET ${program})
        install(TARGETS ${program} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
    endif()
endforeach()
install(DIRECTORY TFN DESTINATION "${CMAKE_INSTALL_DATADIR}/tarnwick"
        FILES_MATCHING PATTERN "*.tfn")
if(TARGET tarnwick)
    install(FILES packaging/tarnwick.desktop DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
    install(FILES packaging/tarnwick-mime.xml DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages"
            RENAME tarnwick.xml)
endif()
