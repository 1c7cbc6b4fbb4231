# What "cmake --install" puts in place beside the tool (tools/CMakeLists.txt): the headers, both
# libraries, a pkg-config file and a CMake package. All of it may be moved afterwards as a whole.
include(CMakePackageConfigHelpers)

install(TARGETS netxml netxml-static EXPORT netxml-targets)
install(DIRECTORY include/netxml TYPE INCLUDE)

# pkg-config says what a static link needs besides. The C library's own iconv needs nothing.
set(netxml_private_libraries "")
if(NETXML_ICONV STREQUAL "libiconv")
    set(netxml_private_libraries "-liconv")
elseif(NETXML_ICONV_LIBRARY)
    # Where the linker looks by itself, the name will do; elsewhere the directory goes along.
    foreach(library ${Iconv_LIBRARIES})
        get_filename_component(directory ${library} DIRECTORY)
        if(directory AND NOT directory IN_LIST CMAKE_C_IMPLICIT_LINK_DIRECTORIES)
            string(APPEND netxml_private_libraries "-L${directory} ")
        endif()
    endforeach()
    string(APPEND netxml_private_libraries "-liconv")
endif()
if(NOT NETXML_WITHOUT_LIBSTDCXX)
    string(STRIP "${netxml_private_libraries} -lstdc++" netxml_private_libraries)
endif()
set(netxml_pkgconfig_directory ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH netxml_to_prefix ${netxml_pkgconfig_directory} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH netxml_libdir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_LIBDIR})
file(RELATIVE_PATH netxml_includedir ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
string(REGEX REPLACE "/$" "" netxml_to_prefix "${netxml_to_prefix}")
configure_file(cmake/netxml.pc.in ${PROJECT_BINARY_DIR}/netxml.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/netxml.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# A version that is written the same in another major release would promise too much.
set(netxml_package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/netxml)
install(EXPORT netxml-targets NAMESPACE netxml:: FILE netxmlTargets.cmake
    DESTINATION ${netxml_package_directory})
set(netxml_needs_iconv OFF)
if(NETXML_ICONV_LIBRARY AND NOT NETXML_ICONV STREQUAL "libiconv")
    set(netxml_needs_iconv ON)
endif()
configure_package_config_file(cmake/netxmlConfig.cmake.in ${PROJECT_BINARY_DIR}/netxmlConfig.cmake
    INSTALL_DESTINATION ${netxml_package_directory} PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/netxmlConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/netxmlConfig.cmake ${PROJECT_BINARY_DIR}/netxmlConfigVersion.cmake
    cmake/NetxmlAddSchema.cmake DESTINATION ${netxml_package_directory})
