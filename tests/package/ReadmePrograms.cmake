# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# The program and the two ways to build it that the README shows, as they stand there.

# readme_block(<language> <result>)
# The first block in a language.
function(readme_block language result)
    file(READ "${PROJECT_DIR}/README.md" text)
    set(opening "\n```${language}\n")
    string(FIND "${text}" "${opening}" begin)
    if(begin EQUAL -1)
        message(FATAL_ERROR "The README has no block in ${language}")
    endif()
    string(LENGTH "${opening}" length)
    math(EXPR begin "${begin} + ${length}")
    string(SUBSTRING "${text}" ${begin} -1 text)
    string(FIND "${text}" "```" end)
    string(SUBSTRING "${text}" 0 ${end} text)
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

# The frame that the program saves is the one that titlescene-render writes, but for the resolution,
# which stands before byte 54 of the file.
function(run_readme_program program prefix folder)
    run("${CMAKE_COMMAND}" -E chdir "${folder}"
        "${CMAKE_COMMAND}" -E env --unset=LD_LIBRARY_PATH
        "${program}" "${PROJECT_DIR}/templates/opener.svg")
    run("${prefix}/bin/titlescene-render" --quiet --at 1500 --output "${folder}/expected"
        "${PROJECT_DIR}/templates/opener.svg")
    file(READ "${folder}/frame.png" saved OFFSET 54 HEX)
    file(READ "${folder}/expected/at-00001500ms.png" expected OFFSET 54 HEX)
    if(saved STREQUAL "" OR NOT saved STREQUAL expected)
        message(FATAL_ERROR "The program of the README in ${folder} saves another picture")
    endif()
endfunction()

# build_readme_programs(<prefix> <folder>)
function(build_readme_programs prefix folder)
    readme_block(cpp program)
    readme_block(cmake cmake_lists)
    readme_block(make makefile)
    foreach(way IN ITEMS cmake make)
        file(WRITE "${folder}/${way}/main.cpp" "${program}")
    endforeach()
    file(WRITE "${folder}/cmake/CMakeLists.txt" "${cmake_lists}")
    file(WRITE "${folder}/make/Makefile" "${makefile}")

    build_project("${folder}/cmake" "${folder}/cmake/build"
        "-DCMAKE_PREFIX_PATH=${prefix}"
        "-DCMAKE_CXX_FLAGS=${FLAGS}"
        "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}")
    run_readme_program("${folder}/cmake/build/editor" "${prefix}" "${folder}/cmake")

    run("${CMAKE_COMMAND}" -E env
        "PKG_CONFIG_PATH=${prefix}/${LIBDIR}/pkgconfig" "CXX=${COMPILER}" "CXXFLAGS=${FLAGS}"
        make -C "${folder}/make")
    run_readme_program("${folder}/make/editor" "${prefix}" "${folder}/make")
endfunction()
