# Finds iconv. NETXML_ICONV=libc takes only the C library's, =libiconv only GNU libiconv, whose header
# maps iconv_open, iconv and iconv_close onto libiconv_open, libiconv and libiconv_close.
#
# NETXML_ICONV_LIBRARY is what the build links, empty where the C library has iconv. NETXML_ICONV_LINK
# is the same for the libraries, whose installed form must not name a path of this machine.
set(NETXML_ICONV_LIBRARY "")
set(NETXML_ICONV_LINK "")
if(NETXML_ICONV STREQUAL "libiconv")
    find_path(NETXML_LIBICONV_INCLUDE iconv.h PATH_SUFFIXES libiconv NO_CACHE REQUIRED)
    find_library(NETXML_LIBICONV_LIBRARY iconv NO_CACHE REQUIRED)
    set(NETXML_ICONV_LIBRARY ${NETXML_LIBICONV_LIBRARY})
    set(NETXML_ICONV_LINK $<BUILD_INTERFACE:${NETXML_LIBICONV_LIBRARY}> $<INSTALL_INTERFACE:iconv>)
    target_include_directories(netxml_flags SYSTEM INTERFACE ${NETXML_LIBICONV_INCLUDE})
else()
    find_package(Iconv REQUIRED)
    if(Iconv_IS_BUILT_IN)
        # nothing to link
    elseif(NETXML_ICONV STREQUAL "libc")
        message(FATAL_ERROR "NETXML_ICONV=libc, but the C library has no iconv")
    else()
        set(NETXML_ICONV_LIBRARY Iconv::Iconv)
        set(NETXML_ICONV_LINK Iconv::Iconv)
        target_link_libraries(netxml_flags INTERFACE Iconv::Iconv)
    endif()
endif()
