# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Builds a project that has TitleScene as a part of itself, as a static library that is installed with
# the project, and builds and runs projects that use what was installed. Left to itself TitleScene is a
# shared library there and adds nothing to what the project installs.

include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/InstalledFiles.cmake")

set(parent "${SOURCE_DIR}/consumer/subfolder")
set(prefix "${SCRATCH_DIR}/prefix")

function(expect_libraries folder expected)
    file(GLOB_RECURSE libraries RELATIVE "${folder}" "${folder}/*.a" "${folder}/*.so*")
    if(NOT libraries STREQUAL expected)
        message(FATAL_ERROR "Libraries in ${folder}: ${libraries}\nexpected: ${expected}")
    endif()
endfunction()

build_project("${parent}" "${SCRATCH_DIR}/static"
    "-DTITLESCENE_SOURCE_DIR=${PROJECT_DIR}"
    "-DCMAKE_INSTALL_LIBDIR=${LIBDIR}"
    -DBUILD_SHARED_LIBS=OFF
    -DTITLESCENE_INSTALL=ON)
run("${SCRATCH_DIR}/static/painttitle")

run("${CMAKE_COMMAND}" --install "${SCRATCH_DIR}/static" --prefix "${prefix}")
check_installed_files("${prefix}")
expect_libraries("${prefix}" "${LIBDIR}/libTitleScene.a")
paint_with_cmake_package("${prefix}" "${SCRATCH_DIR}/cmake")
paint_with_make("${prefix}" "${SCRATCH_DIR}/make" "PKG_CONFIG=pkg-config --static")

# Without a choice of the project's, by FetchContent this time. The project itself checks the kind of
# the library; what is installed needs no build.
run("${CMAKE_COMMAND}" -S "${parent}" -B "${SCRATCH_DIR}/shared" -G "${GENERATOR}"
    "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DTITLESCENE_SOURCE_DIR=${PROJECT_DIR}" -DFETCH=ON)
file(GLOB_RECURSE scripts "${SCRATCH_DIR}/shared/*/cmake_install.cmake")
foreach(script IN LISTS scripts)
    file(STRINGS "${script}" installed REGEX "TitleScene.*\\.(h|so|cmake|pc)")
    if(installed)
        message(SEND_ERROR "${script} installs ${installed}")
    endif()
endforeach()
