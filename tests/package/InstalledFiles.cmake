# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Neither private headers nor folders of this machine may show in an installed text file.
function(check_text file)
    file(READ "${file}" content)
    foreach(unwanted "_p.h" "private/" "${BUILD_DIR}" "${PROJECT_DIR}" "${SCRATCH_DIR}")
        string(FIND "${content}" "${unwanted}" position)
        if(NOT position EQUAL -1)
            message(SEND_ERROR "${file} mentions ${unwanted}")
        endif()
    endforeach()
endfunction()

# Binaries may keep source paths in their debugging information; what counts is where they load from.
function(check_binary file)
    execute_process(COMMAND "${READELF}" --dynamic "${file}"
        OUTPUT_VARIABLE dynamic RESULT_VARIABLE result)
    string(FIND "${dynamic}" "${PROJECT_DIR}" position)
    if(NOT result EQUAL 0 OR NOT position EQUAL -1)
        message(SEND_ERROR "${file} loads libraries from ${PROJECT_DIR}, or cannot be read")
    endif()
endfunction()

function(check_installed_files prefix)
    file(GLOB_RECURSE files LIST_DIRECTORIES false "${prefix}/*")
    if(NOT files)
        message(FATAL_ERROR "Nothing is installed in ${prefix}")
    endif()
    foreach(file IN LISTS files)
        file(READ "${file}" magic LIMIT 4 HEX)
        if(magic STREQUAL "7f454c46")
            check_binary("${file}")
        elseif(NOT file MATCHES "\\.(a|gz)$")
            check_text("${file}")
        endif()
        if(file MATCHES "_p\\.h$")
            message(SEND_ERROR "${file} is a private header")
        endif()
    endforeach()
endfunction()
