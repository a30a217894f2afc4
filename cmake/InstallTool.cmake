# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# titlescene_install_tool(<target>)
# Tells a command its version, and installs it with its manual page <target>.1. The installed command
# finds the library beside which it is installed. The global property TITLESCENE_TOOLS lists the
# commands.
function(titlescene_install_tool target)
    set_property(GLOBAL APPEND PROPERTY TITLESCENE_TOOLS ${target})
    target_compile_definitions(${target} PRIVATE TITLESCENE_VERSION="${PROJECT_VERSION}")
    if(NOT TITLESCENE_INSTALL)
        return()
    endif()

    file(RELATIVE_PATH library_from_command
        "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    set_target_properties(${target} PROPERTIES
        INSTALL_RPATH "$ORIGIN/${library_from_command}")
    install(TARGETS ${target}
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tools)
    install(FILES "${CMAKE_CURRENT_SOURCE_DIR}/${target}.1"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tools)
endfunction()
