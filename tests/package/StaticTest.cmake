# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Builds the library as a static one, installs it, and builds and runs projects that use it.

include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/InstalledFiles.cmake")

set(prefix "${SCRATCH_DIR}/prefix")
build_project("${PROJECT_DIR}" "${SCRATCH_DIR}/library"
    "-DCMAKE_INSTALL_LIBDIR=${LIBDIR}"
    "-DCMAKE_BUILD_TYPE=Debug"
    -DBUILD_SHARED_LIBS=OFF
    -DTITLESCENE_BUILD_BENCHMARKS=OFF
    -DTITLESCENE_BUILD_EXAMPLES=OFF
    -DTITLESCENE_BUILD_TESTS=OFF
    -DTITLESCENE_BUILD_TOOLS=OFF)
run("${CMAKE_COMMAND}" --install "${SCRATCH_DIR}/library" --prefix "${prefix}")
check_installed_files("${prefix}")

file(GLOB libraries RELATIVE "${prefix}/${LIBDIR}" "${prefix}/${LIBDIR}/lib*")
if(NOT libraries STREQUAL "libTitleScene.a")
    message(FATAL_ERROR "A static build installs ${libraries}")
endif()

paint_with_cmake_package("${prefix}" "${SCRATCH_DIR}/cmake")
paint_with_make("${prefix}" "${SCRATCH_DIR}/make" "PKG_CONFIG=pkg-config --static")
