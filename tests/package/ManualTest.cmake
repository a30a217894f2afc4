# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Compares the manual page PAGE of the command COMMAND with what the command says of itself: each has
# the options of the other. The page must be one that man formats without a warning.

function(options_of text result)
    string(REGEX MATCHALL "--[a-z][a-z-]*" options "${text}")
    list(REMOVE_DUPLICATES options)
    list(SORT options)
    if(NOT options)
        message(FATAL_ERROR "No options in:\n${text}")
    endif()
    set(${result} "${options}" PARENT_SCOPE)
endfunction()

execute_process(COMMAND "${COMMAND}" --help OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)
options_of("${help}" offered)

file(READ "${PAGE}" page)
string(REPLACE "\\-" "-" page "${page}")
options_of("${page}" described)
if(NOT offered STREQUAL described)
    message(SEND_ERROR "The command offers\n  ${offered}\nand the page describes\n  ${described}")
endif()

# The page is formatted for its warnings only.
execute_process(COMMAND man --warnings --encoding=UTF-8 --local-file "${PAGE}"
    OUTPUT_VARIABLE formatted ERROR_VARIABLE warnings RESULT_VARIABLE result)
if(NOT result EQUAL 0 OR NOT warnings STREQUAL "" OR NOT formatted MATCHES "SYNOPSIS")
    message(SEND_ERROR "${PAGE} (${result}): ${warnings}")
endif()
