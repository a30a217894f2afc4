# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# What the scripts of this folder have in common. They run with cmake -P; CMakeLists.txt passes:
#   SOURCE_DIR   this folder
#   PROJECT_DIR  the sources of TitleScene
#   BUILD_DIR    the build of TitleScene
#   SCRATCH_DIR  a folder to work in, emptied first
#   LIBDIR       where libraries go, below the prefix
#   VERSION, SOVERSION   those of the library
#   TOOLS        the names of the commands
#   GENERATOR, COMPILER, FLAGS, BUILD_TYPE, READELF   those of the build

file(REMOVE_RECURSE "${SCRATCH_DIR}")
file(MAKE_DIRECTORY "${SCRATCH_DIR}")

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "Failed (${result}): ${command}")
    endif()
endfunction()

# build_project(<source folder> <build folder> [<definition>...])
function(build_project source build)
    run("${CMAKE_COMMAND}" -S "${source}" -B "${build}" -G "${GENERATOR}"
        "-DCMAKE_CXX_COMPILER=${COMPILER}"
        ${ARGN})
    run("${CMAKE_COMMAND}" --build "${build}" --parallel 2)
endfunction()

# paint_with_cmake_package(<prefix> <build folder>)
# Builds and runs a CMake project that finds TitleScene below the prefix.
function(paint_with_cmake_package prefix build)
    build_project("${SOURCE_DIR}/consumer/cmake" "${build}"
        "-DCMAKE_PREFIX_PATH=${prefix}"
        "-DCMAKE_CXX_FLAGS=${FLAGS}"
        "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}")
    run("${CMAKE_COMMAND}" -E env "LD_LIBRARY_PATH=${prefix}/${LIBDIR}" "${build}/painttitle")
endfunction()

# paint_with_make(<prefix> <build folder> [<variable>...])
# The same with a Makefile and pkg-config.
function(paint_with_make prefix build)
    file(MAKE_DIRECTORY "${build}")
    run("${CMAKE_COMMAND}" -E env "PKG_CONFIG_PATH=${prefix}/${LIBDIR}/pkgconfig"
        make -C "${build}" -f "${SOURCE_DIR}/consumer/make/Makefile"
        "CXX=${COMPILER}" "CXXFLAGS=${FLAGS}" ${ARGN})
    run("${CMAKE_COMMAND}" -E env "LD_LIBRARY_PATH=${prefix}/${LIBDIR}" "${build}/painttitle")
endfunction()
