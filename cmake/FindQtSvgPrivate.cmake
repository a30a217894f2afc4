# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Finds the folder for #include <private/qsvgtinydocument_p.h> that fits the QtSvg in use.
#
# Qt5Svg must have been found before. Looks, in this order, at
#   1. the cache variable TITLESCENE_QTSVG_PRIVATE_INCLUDE_DIR,
#   2. QtSvg's own folder <include>/QtSvg/<version>/QtSvg,
#   3. the folder that scripts/setup fills.
# A folder's version is the one in its path. The classes inside change between Qt's minor versions,
# so headers of another minor version than the library's are refused.
#
# Sets QtSvgPrivate_FOUND, QtSvgPrivate_INCLUDE_DIR and QtSvgPrivate_VERSION.

set(TITLESCENE_QTSVG_PRIVATE_INCLUDE_DIR "" CACHE PATH
    "Folder <version>/QtSvg that holds private/qsvgtinydocument_p.h; empty: look for it")

function(titlescene_qtsvg_private_fail reason)
    message(FATAL_ERROR
        "${reason}\n"
        "TitleScene needs the private headers of QtSvg ${Qt5Svg_VERSION}. To provide them:\n"
        "  Debian, Ubuntu:  run scripts/setup\n"
        "  Fedora:          install qt5-qtsvg-devel and qt5-qtbase-private-devel\n"
        "  openSUSE:        install libqt5-qtsvg-private-headers-devel\n"
        "  elsewhere:       set TITLESCENE_QTSVG_PRIVATE_INCLUDE_DIR to the folder <version>/QtSvg "
        "that holds private/qsvgtinydocument_p.h")
endfunction()

# The folders among the arguments that hold the header.
function(titlescene_qtsvg_private_existing result)
    set(existing "")
    foreach(folder IN LISTS ARGN)
        if(EXISTS "${folder}/private/qsvgtinydocument_p.h")
            list(APPEND existing "${folder}")
        endif()
    endforeach()
    set(${result} "${existing}" PARENT_SCOPE)
endfunction()

# The last x.y.z that is a whole component of the path; empty when there is none.
function(titlescene_qtsvg_private_version folder result)
    string(REGEX MATCHALL "/[0-9]+\\.[0-9]+\\.[0-9]+" versions "${folder}/")
    set(version "")
    if(versions)
        list(GET versions -1 version)
        string(SUBSTRING "${version}" 1 -1 version)
    endif()
    set(${result} "${version}" PARENT_SCOPE)
endfunction()

if(TITLESCENE_QTSVG_PRIVATE_INCLUDE_DIR)
    titlescene_qtsvg_private_existing(candidates "${TITLESCENE_QTSVG_PRIVATE_INCLUDE_DIR}")
    if(NOT candidates)
        titlescene_qtsvg_private_fail(
            "TITLESCENE_QTSVG_PRIVATE_INCLUDE_DIR is ${TITLESCENE_QTSVG_PRIVATE_INCLUDE_DIR}, which has no private/qsvgtinydocument_p.h.")
    endif()
else()
    set(qt_folders "")
    foreach(folder IN LISTS Qt5Svg_INCLUDE_DIRS)
        file(GLOB versioned "${folder}/*.*.*/QtSvg")
        list(APPEND qt_folders ${versioned})
    endforeach()
    file(GLOB setup_folders "${CMAKE_CURRENT_LIST_DIR}/../build/deps/qtsvg-private/*.*.*/QtSvg")
    titlescene_qtsvg_private_existing(candidates ${qt_folders} ${setup_folders})
    if(NOT candidates)
        titlescene_qtsvg_private_fail("QtSvg's private headers were not found.")
    endif()
endif()

set(QtSvgPrivate_INCLUDE_DIR "")
set(refused "")
string(REGEX MATCH "^[0-9]+\\.[0-9]+\\." wanted_minor "${Qt5Svg_VERSION}")
foreach(folder IN LISTS candidates)
    get_filename_component(folder "${folder}" ABSOLUTE)
    titlescene_qtsvg_private_version("${folder}" version)
    string(FIND "${version}" "${wanted_minor}" position)
    if(position EQUAL 0)
        set(QtSvgPrivate_INCLUDE_DIR "${folder}")
        set(QtSvgPrivate_VERSION "${version}")
        break()
    elseif(version)
        string(APPEND refused "\n  ${folder} is of version ${version}")
    else()
        string(APPEND refused "\n  ${folder} does not tell its version")
    endif()
endforeach()
if(NOT QtSvgPrivate_INCLUDE_DIR)
    titlescene_qtsvg_private_fail(
        "QtSvg is of version ${Qt5Svg_VERSION}, and the private headers found are not:${refused}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(QtSvgPrivate
    REQUIRED_VARS QtSvgPrivate_INCLUDE_DIR
    VERSION_VAR QtSvgPrivate_VERSION)
