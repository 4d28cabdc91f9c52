# Builds the tree that it lies in: vcpkg install baseapi --overlay-ports=packaging/vcpkg
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

vcpkg_check_features(OUT_FEATURE_OPTIONS FEATURE_OPTIONS FEATURES programs BASEAPI_PROGRAMS)
set(PKGCONFIG_OPTION)
if("programs" IN_LIST FEATURES)
  vcpkg_find_acquire_program(PKGCONFIG)
  set(PKGCONFIG_OPTION "-DPKG_CONFIG_EXECUTABLE=${PKGCONFIG}")
endif()
vcpkg_cmake_configure(
  SOURCE_PATH "${SOURCE_PATH}"
  OPTIONS
    ${FEATURE_OPTIONS}
    ${PKGCONFIG_OPTION}
    -DBASEAPI_BENCHMARKS=OFF
    -DBASEAPI_BOTH_KINDS=OFF
    -DBASEAPI_INSTALL=ON
    -DBASEAPI_TESTS=OFF
    -DBASEAPI_WARNINGS_AS_ERRORS=OFF)
vcpkg_cmake_install()

vcpkg_cmake_config_fixup(CONFIG_PATH lib/cmake/baseapi)
vcpkg_fixup_pkgconfig()
if("programs" IN_LIST FEATURES)
  vcpkg_copy_tools(TOOL_NAMES quillbox quillboxd AUTO_CLEAN)
endif()
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE" COMMENT [[
baseapi is under the MIT licence. hostkit_photos and quillbox use Exiv2, which is under the GPL: a program that is linked with
hostkit_photos is passed on under the GPL.]])
