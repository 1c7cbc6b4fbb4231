# netxml_exports_map(OUT) names the version script of the shared library: cmake/exports.map, or a copy
# in the build tree without the functions that this build leaves out.
#
# What opens files shares its rooms with what does not. It is left out by the linker: a function that
# is not exported, and that nothing else reaches, goes with its section (--gc-sections). The schema
# half is left out as whole files, and the script then must not name its functions, because some
# linkers refuse names without a definition.
function(netxml_exports_map out)
    set(map ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${map})
    if(NETXML_WITH_SCHEMA AND NETXML_WITH_FILES)
        set(${out} ${map} PARENT_SCOPE)
        return()
    endif()

    file(READ ${map} text)
    if(NOT NETXML_WITH_SCHEMA)
        string(REGEX REPLACE "    (Schema|SCHEMA)[A-Za-z0-9_]*;\n" "" text "${text}")
        string(REGEX REPLACE "    XML_IsMatchRegex;\n" "" text "${text}")
    endif()
    if(NOT NETXML_WITH_FILES)
        string(REGEX REPLACE "    XML_[A-Za-z_]*(ByFile|FileOutStream)[A-Za-z]*;\n" "" text "${text}")
    endif()
    set(map ${PROJECT_BINARY_DIR}/exports.map)
    file(CONFIGURE OUTPUT ${map} CONTENT "${text}" @ONLY)
    set(${out} ${map} PARENT_SCOPE)
endfunction()
