# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The TitleScene authors

# Installs what find_package(TitleScene) and pkg-config need. The library and its headers are
# installed where they are defined, in Scene/.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/TitleScene")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

install(EXPORT TitleSceneTargets
    NAMESPACE TitleScene::
    DESTINATION "${package_dir}"
    COMPONENT development)

configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/TitleSceneConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/TitleSceneConfig.cmake"
    INSTALL_DESTINATION "${package_dir}"
    NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/TitleSceneConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(
    FILES
        "${PROJECT_BINARY_DIR}/TitleSceneConfig.cmake"
        "${PROJECT_BINARY_DIR}/TitleSceneConfigVersion.cmake"
    DESTINATION "${package_dir}"
    COMPONENT development)

# The folders are given relative to the .pc file, so that an installed tree can be moved.
set(pkgconfig_full_dir "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH pkgconfig_to_prefix "${pkgconfig_full_dir}" "${CMAKE_INSTALL_PREFIX}")
file(RELATIVE_PATH pkgconfig_to_libdir "${pkgconfig_full_dir}" "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH pkgconfig_to_includedir "${pkgconfig_full_dir}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
set(pkgconfig_definitions "")
if(NOT BUILD_SHARED_LIBS)
    set(pkgconfig_definitions " -DTITLESCENE_STATIC_DEFINE")
endif()
configure_file(
    "${PROJECT_SOURCE_DIR}/cmake/titlescene.pc.in"
    "${PROJECT_BINARY_DIR}/titlescene.pc"
    @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/titlescene.pc"
    DESTINATION "${pkgconfig_dir}"
    COMPONENT development)
