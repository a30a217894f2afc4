# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Installs the build into an empty prefix, looks through what was installed, then builds and runs a
# project that uses it. Run with cmake -P; tests/CMakeLists.txt passes:
#   SOURCE_DIR   this folder
#   PROJECT_DIR  the sources of TitleScene
#   BUILD_DIR    the build of TitleScene
#   SCRATCH_DIR  a folder to work in, emptied first
#   LIBDIR, INCLUDEDIR   where libraries and headers go, below the prefix
#   GENERATOR, COMPILER, FLAGS, BUILD_TYPE, READELF   those of the build

set(prefix "${SCRATCH_DIR}/prefix")
set(consumer "${SCRATCH_DIR}/consumer")

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "Failed (${result}): ${command}")
    endif()
endfunction()

# Neither private headers nor folders of this machine may show in an installed text file.
function(check_text file)
    file(READ "${file}" content)
    foreach(unwanted "_p.h" "private/" "${BUILD_DIR}" "${PROJECT_DIR}")
        string(FIND "${content}" "${unwanted}" position)
        if(NOT position EQUAL -1)
            message(SEND_ERROR "${file} mentions ${unwanted}")
        endif()
    endforeach()
endfunction()

# Binaries keep source paths in their debugging information; what counts is where they load from.
function(check_binary file)
    execute_process(COMMAND "${READELF}" --dynamic "${file}"
        OUTPUT_VARIABLE dynamic RESULT_VARIABLE result)
    string(FIND "${dynamic}" "${BUILD_DIR}" position)
    if(NOT result EQUAL 0 OR NOT position EQUAL -1)
        message(SEND_ERROR "${file} loads libraries from ${BUILD_DIR}, or cannot be read")
    endif()
endfunction()

function(check_installed_files)
    file(GLOB_RECURSE files LIST_DIRECTORIES false "${prefix}/*")
    foreach(file IN LISTS files)
        file(READ "${file}" magic LIMIT 4 HEX)
        if(magic STREQUAL "7f454c46")
            check_binary("${file}")
        elseif(NOT file MATCHES "\\.a$")
            check_text("${file}")
        endif()
        if(file MATCHES "_p\\.h$")
            message(SEND_ERROR "${file} is a private header")
        endif()
    endforeach()
endfunction()

file(REMOVE_RECURSE "${SCRATCH_DIR}")
run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${prefix}")
check_installed_files()

set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBDIR}/pkgconfig:$ENV{PKG_CONFIG_PATH}")
run("${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${consumer}" -G "${GENERATOR}"
    "-DCMAKE_PREFIX_PATH=${prefix}"
    "-DTITLESCENE_INCLUDE_DIR=${prefix}/${INCLUDEDIR}"
    "-DCMAKE_CXX_COMPILER=${COMPILER}"
    "-DCMAKE_CXX_FLAGS=${FLAGS}"
    "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}")
run("${CMAKE_COMMAND}" --build "${consumer}")

set(ENV{LD_LIBRARY_PATH} "${prefix}/${LIBDIR}:$ENV{LD_LIBRARY_PATH}")
run("${consumer}/consumer_cmake")
run("${consumer}/consumer_pkgconfig")
