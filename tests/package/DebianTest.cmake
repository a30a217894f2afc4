# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Packs the build into Debian packages, looks at what they say and hold, installs them below a scratch
# root, and uses the commands and the library there. The packages of the preset deb differ in the
# folder of the library only.

include("${CMAKE_CURRENT_LIST_DIR}/Steps.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/InstalledFiles.cmake")

set(packages "${SCRATCH_DIR}/packages")
set(root "${SCRATCH_DIR}/root")
set(release "${VERSION}-1")
set(runtime "libtitlescene${SOVERSION}")

function(read_output result)
    execute_process(COMMAND ${ARGN}
        OUTPUT_VARIABLE output OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(${result} "${output}" PARENT_SCOPE)
endfunction()

function(expect_equal what actual expected)
    if(NOT actual STREQUAL expected)
        message(SEND_ERROR "${what}:\n${actual}\nexpected:\n${expected}")
    endif()
endfunction()

function(expect_match what actual pattern)
    if(NOT actual MATCHES "${pattern}")
        message(SEND_ERROR "${what}: ${actual}\nis without ${pattern}")
    endif()
endfunction()

# expect_field(<package> <field> <pattern>...)
function(expect_field package field)
    read_output(value dpkg-deb --field "${${package}_deb}" ${field})
    foreach(pattern IN LISTS ARGN)
        expect_match("${field} of ${package}" "${value}" "${pattern}")
    endforeach()
endfunction()

# The files of a package without folders, in order; the target of a link is not told.
function(read_file_list package result)
    read_output(listing dpkg-deb --fsys-tarfile "${${package}_deb}" COMMAND tar --list)
    string(REPLACE "\n" ";" files "${listing}")
    list(FILTER files EXCLUDE REGEX "/$")
    list(SORT files)
    set(${result} "${files}" PARENT_SCOPE)
endfunction()

function(expect_files package)
    read_file_list(${package} files)
    list(APPEND ARGN
        ./usr/share/doc/${package}/changelog.Debian.gz
        ./usr/share/doc/${package}/changelog.gz
        ./usr/share/doc/${package}/copyright)
    list(SORT ARGN)
    expect_equal("Files of ${package}" "${files}" "${ARGN}")
endfunction()

function(expect_no_machine_folders file)
    file(STRINGS "${file}" leaks REGEX "${PROJECT_DIR}")
    if(leaks)
        message(SEND_ERROR "${file} mentions ${leaks}")
    endif()
endfunction()

# As dpkg does it where we may, with a database of its own, but for the scripts: they would run on this
# machine. Otherwise the files alone.
function(install_packages)
    read_output(user id -u)
    if(user EQUAL 0)
        file(MAKE_DIRECTORY "${root}/var/lib/dpkg/info" "${root}/var/lib/dpkg/updates"
            "${root}/var/lib/dpkg/triggers")
        file(TOUCH "${root}/var/lib/dpkg/status")
        run(dpkg "--root=${root}" --log=/dev/null --force-depends --unpack ${ARGN})
        read_output(states
            dpkg-query "--admindir=${root}/var/lib/dpkg" -W "-f=\${Package} \${db:Status-Status}\\n")
        expect_equal("Installed packages" "${states}"
            "libtitlescene-dev unpacked\n${runtime} unpacked\ntitlescene-tools unpacked")
    else()
        foreach(package IN LISTS ARGN)
            run(dpkg-deb --extract "${package}" "${root}")
        endforeach()
    endif()
endfunction()

run("${CMAKE_CPACK_COMMAND}" --config "${BUILD_DIR}/CPackConfig.cmake" -B "${packages}"
    -D CPACK_PACKAGING_INSTALL_PREFIX=/usr)

read_output(architecture dpkg --print-architecture)
foreach(package IN ITEMS ${runtime} libtitlescene-dev titlescene-tools)
    set(${package}_deb "${packages}/${package}_${release}_${architecture}.deb")
    expect_field(${package} Version "^${release}$")
endforeach()

# What dpkg worked out. The library uses private parts of QtSvg, so that it needs that very version.
expect_field(${runtime} Depends
    "libc6 \\(>= [0-9.]+\\)" "libqt5core5a \\(>= 5" "libqt5gui5 " "libqt5svg5 " "libqt5widgets5 "
    "libqt5xml5 " "libstdc\\+\\+6 " "qtsvg-abi-5-[0-9]+-[0-9]+")
expect_field(libtitlescene-dev Depends
    "${runtime} \\(= ${release}\\)" "qtbase5-dev " "libqt5svg5-dev " "libboost-dev ")
expect_field(titlescene-tools Depends
    "${runtime} \\(= ${release}\\)" "libqt5core5a " "libqt5gui5 ")

read_output(shlibs dpkg-deb --info "${${runtime}_deb}" shlibs)
expect_equal("shlibs" "${shlibs}" "libTitleScene ${SOVERSION} ${runtime} (>= ${release})")

read_output(triggers dpkg-deb --info "${${runtime}_deb}" triggers)
expect_equal("triggers" "${triggers}" "activate-noawait ldconfig")

expect_files(${runtime}
    ./usr/${LIBDIR}/libTitleScene.so.${SOVERSION}
    ./usr/${LIBDIR}/libTitleScene.so.${VERSION})
list(TRANSFORM TOOLS PREPEND ./usr/bin/ OUTPUT_VARIABLE commands)
list(TRANSFORM TOOLS REPLACE "(.+)" "./usr/share/man/man1/\\1.1.gz" OUTPUT_VARIABLE pages)
expect_files(titlescene-tools ${commands} ${pages})
read_file_list(libtitlescene-dev files)
foreach(file IN ITEMS
        ${LIBDIR}/libTitleScene.so ${LIBDIR}/pkgconfig/titlescene.pc
        ${LIBDIR}/cmake/TitleScene/TitleSceneConfig.cmake include/Scene/SvgDocument.h)
    expect_match("Files of libtitlescene-dev" "${files}" "\\./usr/${file}(;|$)")
endforeach()

install_packages("${${runtime}_deb}" "${libtitlescene-dev_deb}" "${titlescene-tools_deb}")
set(prefix "${root}/usr")
check_installed_files("${prefix}")
expect_no_machine_folders("${prefix}/${LIBDIR}/libTitleScene.so.${VERSION}")

set(ENV{LD_LIBRARY_PATH} "${prefix}/${LIBDIR}")
foreach(tool IN LISTS TOOLS)
    expect_no_machine_folders("${prefix}/bin/${tool}")
    read_output(version "${prefix}/bin/${tool}" --version)
    expect_equal("Version" "${version}" "${tool} ${VERSION}")
endforeach()
run("${prefix}/bin/titlescene-render" --quiet --at 1000 --output "${SCRATCH_DIR}/pictures"
    "${PROJECT_DIR}/templates/lower-third.svg")
if(NOT EXISTS "${SCRATCH_DIR}/pictures/at-00001000ms.png")
    message(SEND_ERROR "The installed titlescene-render renders nothing")
endif()

paint_with_cmake_package("${prefix}" "${SCRATCH_DIR}/cmake")
