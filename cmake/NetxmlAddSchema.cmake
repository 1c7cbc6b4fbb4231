# netxml_add_schema(TARGET FILES X.xsd [Y.xsd ...]
#     [PREFIX NAME] [LANG c|c++] [OPTIONS OPTION ...])
#
# Compiles schema documents with "netxml schema compile" and adds the records to a target:
# NAME_schema.c and NAME_schema.h in the current binary directory, which becomes an include directory of
# the target. NAME is the PREFIX, else the first document's name without its last extension; two schemas
# in one directory need different ones. The documents count together, as one schema; call it once for each
# schema. They are compiled again when one of them changes, or a document that they include or import, or
# a catalog.
#
# OPTIONS are passed on, such as --include-path or --network-types; relative paths in them, and the
# documents, are below the current source directory. The program that links the target calls
# NAME_schema_register(), and links netxml.
#
# The tool is netxml's own target in its tree, else netxml::tool if there is one, else the program that
# NETXML_TOOL names, else the installed netxml: the one beside this package, or, in a cross build, one
# of the host's.

# Names in OUT what runs as the tool, and makes netxml::tool of an installed program.
function(netxml_find_tool out)
    set(${out} netxml::tool PARENT_SCOPE)
    if(TARGET netxml-tool)
        set(${out} netxml-tool PARENT_SCOPE)  # in netxml's own tree
        return()
    elseif(TARGET netxml::tool)
        return()
    endif()
    set(beside "")
    if(NOT CMAKE_CROSSCOMPILING)
        get_property(beside GLOBAL PROPERTY netxml_TOOL_HINT)
    endif()
    find_program(NETXML_TOOL netxml HINTS ${beside} DOC "The tool that compiles schemas, of this machine")
    if(NOT NETXML_TOOL)
        message(FATAL_ERROR "netxml_add_schema: the tool netxml is not installed; NETXML_TOOL names it")
    endif()
    add_executable(netxml::tool IMPORTED GLOBAL)
    set_target_properties(netxml::tool PROPERTIES IMPORTED_LOCATION ${NETXML_TOOL})
endfunction()

function(netxml_add_schema target)
    cmake_parse_arguments(PARSE_ARGV 1 schema "" "PREFIX;LANG" "FILES;OPTIONS")
    if(schema_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "netxml_add_schema: unknown arguments: ${schema_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT schema_FILES)
        message(FATAL_ERROR "netxml_add_schema: FILES names no schema document")
    endif()
    if(NOT TARGET ${target})
        message(FATAL_ERROR "netxml_add_schema: \"${target}\" is no target")
    endif()

    list(TRANSFORM schema_FILES REPLACE "^([^/].*)$" "${CMAKE_CURRENT_SOURCE_DIR}/\\1")
    list(GET schema_FILES 0 first)
    get_filename_component(name ${first} NAME_WLE)
    if(schema_PREFIX)
        set(name ${schema_PREFIX})
    endif()
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}_schema.c)
    set(header ${CMAKE_CURRENT_BINARY_DIR}/${name}_schema.h)
    if("${schema_LANG}" STREQUAL "c++")
        set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}_schema.cpp)
        set(header ${CMAKE_CURRENT_BINARY_DIR}/${name}_schema.hpp)
    endif()
    set(arguments ${schema_OPTIONS} -o ${source} -H ${header} --depfile ${source}.d)
    if(schema_PREFIX)
        list(APPEND arguments --prefix ${schema_PREFIX})
    endif()
    if(schema_LANG)
        list(APPEND arguments --lang ${schema_LANG})
    endif()

    # Several targets may take the same schema; what it is made of is kept by its name.
    get_property(known DIRECTORY PROPERTY netxml_schema:${source})
    set(wanted ${arguments} ${schema_FILES})
    if(known AND NOT "${known}" STREQUAL "${wanted}")
        message(FATAL_ERROR "netxml_add_schema: another schema in this directory is called \"${name}\", "
            "too; give one of them a PREFIX of its own")
    elseif(NOT known)
        set_property(DIRECTORY PROPERTY netxml_schema:${source} "${wanted}")
        netxml_find_tool(tool)
        add_custom_command(OUTPUT ${source} ${header}
            COMMAND ${tool} schema compile ${arguments} ${schema_FILES}
            WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
            DEPENDS ${tool} ${schema_FILES}
            DEPFILE ${source}.d
            COMMENT "Compiling schema ${name}"
            VERBATIM)
    endif()
    target_sources(${target} PRIVATE ${source} ${header})
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}>)
endfunction()
