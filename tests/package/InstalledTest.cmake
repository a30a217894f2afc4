# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Installs the build into an empty prefix, looks through what was installed, moves it somewhere else,
# then builds and runs projects that use it there, those of the README among them.

include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/InstalledFiles.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/ReadmePrograms.cmake")

run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${SCRATCH_DIR}/installed")
check_installed_files("${SCRATCH_DIR}/installed")

set(prefix "${SCRATCH_DIR}/moved/here")
file(MAKE_DIRECTORY "${SCRATCH_DIR}/moved")
file(RENAME "${SCRATCH_DIR}/installed" "${prefix}")
paint_with_cmake_package("${prefix}" "${SCRATCH_DIR}/cmake")
paint_with_make("${prefix}" "${SCRATCH_DIR}/make")
if(EXISTS "${prefix}/bin/titlescene-render")
    build_readme_programs("${prefix}" "${SCRATCH_DIR}/readme")
endif()
