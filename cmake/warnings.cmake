# Warnings for every target of ours; errors in CI (NETXML_WERROR).
function(netxml_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
    if(NETXML_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
