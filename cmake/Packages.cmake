# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Debian packages of what is installed: the library, what programs are built with, and the commands.
# Build them with the preset deb, whose folders are those of a distribution.

set(TITLESCENE_PACKAGE_MAINTAINER "The TitleScene authors <titlescene@localhost>" CACHE STRING
    "Who answers for the packages: name <address>")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME titlescene)
set(CPACK_PACKAGE_CONTACT "${TITLESCENE_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGE_VENDOR "The TitleScene authors")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_COMPONENTS_ALL development)
if(BUILD_SHARED_LIBS)
    list(APPEND CPACK_COMPONENTS_ALL runtime)
    set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
    set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
endif()
if(TITLESCENE_BUILD_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
set(CPACK_STRIP_FILES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# dpkg works out what the binaries need. It cannot know our own library, which is not installed yet:
# that is what the dependencies of the components above are for.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/Scene")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(library_package libtitlescene${PROJECT_VERSION_MAJOR})

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
file(WRITE "${PROJECT_BINARY_DIR}/debian/triggers" "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_BINARY_DIR}/debian/triggers")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
"TitleScene plays animated SVG titles for video editors: it paints any frame,
in any order, with the same pixels every time. Titles are shown and edited on
a Qt graphics scene.

This package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtitlescene-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "qtbase5-dev (>= ${TITLESCENE_QT_MINIMUM}), libqt5svg5-dev (>= ${TITLESCENE_QT_MINIMUM}), libboost-dev (>= ${TITLESCENE_BOOST_MINIMUM})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"TitleScene plays animated SVG titles for video editors: it paints any frame,
in any order, with the same pixels every time.

This package holds the headers, and the files for CMake and pkg-config.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME titlescene-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION video)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
"TitleScene plays animated SVG titles for video editors: it paints any frame,
in any order, with the same pixels every time.

This package holds its commands. titlescene-render renders a title to numbered
pictures, to an overview, or to raw video for an encoder, without a display.")

# What every package of Debian has in share/doc is made where CPack collects the files.
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/DebianDocumentation.cmake")
set(CPACK_TITLESCENE_SOURCE_DIR "${PROJECT_SOURCE_DIR}")

include(CPack)
