# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Builds a project that has TitleScene as a part of itself, and installs it: TitleScene adds nothing
# to what the project installs.

include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")

set(parent "${SOURCE_DIR}/consumer/subfolder")
build_project("${parent}" "${SCRATCH_DIR}/build" "-DTITLESCENE_SOURCE_DIR=${PROJECT_DIR}")
run("${SCRATCH_DIR}/build/painttitle")

run("${CMAKE_COMMAND}" --install "${SCRATCH_DIR}/build" --prefix "${SCRATCH_DIR}/installed")
file(GLOB_RECURSE installed RELATIVE "${SCRATCH_DIR}/installed" "${SCRATCH_DIR}/installed/*")
if(NOT installed STREQUAL "bin/painttitle")
    message(FATAL_ERROR "The project installs ${installed}")
endif()

run("${CMAKE_COMMAND}" -S "${parent}" -B "${SCRATCH_DIR}/fetched" -G "${GENERATOR}"
    "-DCMAKE_CXX_COMPILER=${COMPILER}" -DFETCH=ON "-DTITLESCENE_SOURCE_DIR=${PROJECT_DIR}")
