# An overlay port of this tree: vcpkg install netxml --overlay-ports=packaging/vcpkg
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)

vcpkg_check_features(OUT_FEATURE_OPTIONS features FEATURES
    schema NETXML_WITH_SCHEMA
    tool NETXML_BUILD_TOOLS)
vcpkg_cmake_configure(SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS ${features} -DNETXML_BUILD_TESTS=OFF -DNETXML_BUILD_EXAMPLES=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(CONFIG_PATH lib/cmake/netxml)
vcpkg_fixup_pkgconfig()
if("tool" IN_LIST FEATURES)
    vcpkg_copy_tools(TOOL_NAMES netxml AUTO_CLEAN)
endif()

# Both libraries are built; a triplet asks for one, and the exported targets name both.
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
set(VCPKG_POLICY_DLLS_IN_STATIC_LIBRARY enabled)
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
