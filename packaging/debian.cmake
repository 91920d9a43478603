# The Debian package: what Debian wants beside the program, and who depends on what.

set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Intake authors <intake@example.org>")
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "odbc-postgresql, odbc-mariadb")
set(CPACK_PACKAGE_DESCRIPTION
"Intake is a plugin for the graphics host Lumo. It reads JSON, XML, HTML tables,
databases and worksheets, picks records out of them, and puts their values into
the data store of a scene, on the press of a button or every few seconds.

The workbench is a stand-in for the host: it loads a source and shows what
arrives, says why nothing does, lists what can be selected, and serves a page
for the browser on which a scene can be watched, changed and tried.")

# What is made for the package alone; a build that is not packed does without.
add_custom_target(packaged DEPENDS manual)

# Compressed without a name or a time in it, so that the same sources give the same bytes.
function(install_compressed source name destination)
    set(compressed ${CMAKE_CURRENT_BINARY_DIR}/${name}.gz)
    add_custom_command(OUTPUT ${compressed}
        COMMAND gzip --best --no-name --stdout ${source} > ${compressed}
        DEPENDS ${source} VERBATIM)
    add_custom_target(packaged_${name} DEPENDS ${compressed})
    add_dependencies(packaged packaged_${name})
    install(FILES ${compressed} DESTINATION ${destination})
endfunction()

# The day of the release is that of CHANGELOG.md.
set(changelog ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
execute_process(COMMAND ${PROJECT_SOURCE_DIR}/scripts/release_date --rfc-email
    OUTPUT_VARIABLE release_date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file(changelog.in changelog @ONLY)
install_compressed(${CMAKE_CURRENT_BINARY_DIR}/changelog changelog ${doc_folder})
install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/copyright DESTINATION ${doc_folder})

set(manual ${PROJECT_BINARY_DIR}/workbench/manual)
install_compressed(${manual}/intake-workbench.1 intake-workbench.1 ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${manual}/intake-workbench.bash RENAME intake-workbench
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${manual}/intake-workbench.zsh RENAME _intake-workbench
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
