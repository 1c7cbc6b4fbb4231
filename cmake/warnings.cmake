# Warnings for every target of ours; errors in CI (NETXML_WERROR).
# Several sources of a target are compiled at a time, where the build asks for that.
function(netxml_unity target)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${NETXML_UNITY} UNITY_BUILD_BATCH_SIZE 8)
endfunction()

function(netxml_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(NETXML_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
