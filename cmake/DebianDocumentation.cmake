# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Gives each package its copyright and its changelogs, and compresses the manual pages. CPack runs
# this when the files of all packages are in their folders.

function(compress file)
    execute_process(COMMAND gzip --best --no-name --force "${file}" RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "gzip failed for ${file}")
    endif()
endfunction()

# SOURCE_DATE_EPOCH stands for the present when it is set, so that packages can be reproduced.
string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(debian_changelog
"${CPACK_PACKAGE_NAME} (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium

  * Built from the sources of version ${CPACK_PACKAGE_VERSION}; changelog.gz says what is new.

 -- ${CPACK_PACKAGE_CONTACT}  ${now}
")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${component}" upper)
    set(share
        "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}/share")
    set(documentation "${share}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")

    configure_file("${CPACK_TITLESCENE_SOURCE_DIR}/LICENSE" "${documentation}/copyright" COPYONLY)
    configure_file("${CPACK_TITLESCENE_SOURCE_DIR}/CHANGELOG.md" "${documentation}/changelog" COPYONLY)
    file(WRITE "${documentation}/changelog.Debian" "${debian_changelog}")
    compress("${documentation}/changelog")
    compress("${documentation}/changelog.Debian")

    file(GLOB pages "${share}/man/man*/*.[1-9]")
    foreach(page IN LISTS pages)
        compress("${page}")
    endforeach()
endforeach()
