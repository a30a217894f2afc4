# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Fetches packages of real animated SVG files (all under the MIT licence) from the npm registry that
# this machine is set up for, and unpacks them into FOLDER. Fails when that cannot be done. What is
# there already is not fetched again.

# registry(<variable>): the address of the registry, with a slash at its end; empty without one.
function(registry variable)
    set(address "$ENV{npm_config_registry}")
    if(NOT address)
        execute_process(COMMAND npm config get registry
            OUTPUT_VARIABLE address OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    endif()
    if(address AND NOT address MATCHES "/$")
        string(APPEND address "/")
    endif()
    set(${variable} "${address}" PARENT_SCOPE)
endfunction()

# fetch(<name> <version> <hash>): <name>-<version> in FOLDER.
function(fetch name version hash)
    get_filename_component(base "${name}" NAME)
    set(target "${FOLDER}/${base}-${version}")
    if(EXISTS "${target}/package/package.json")
        return()
    endif()
    registry(address)
    if(NOT address)
        message(FATAL_ERROR "no npm registry is set up")
    endif()
    set(archive "${FOLDER}/${base}-${version}.tgz")
    file(DOWNLOAD "${address}${name}/-/${base}-${version}.tgz" "${archive}" STATUS status TIMEOUT 60)
    list(GET status 0 code)
    if(NOT code EQUAL 0)
        message(FATAL_ERROR "cannot fetch ${name}: ${status}")
    endif()
    file(SHA256 "${archive}" found)
    if(NOT found STREQUAL hash)
        message(FATAL_ERROR "${name} ${version} is another file than it was")
    endif()
    file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${target}")
endfunction()

fetch(@bybas/weather-icons 2.0.0 253a95053f54bd85f5274c66f36707d76ab1f93af24f026832be27ce6c8642f9)
fetch(loading-svg 1.0.0 56277d2465a55ff561e4e3b802d57d0ec092cb8d0fc7ecb402e63fbc5b79c954)
fetch(svg-loaders 0.2.0 1aef6dc3d9a10a662663877d50a1534063073c32a96adb518ec17a2744e51185)
