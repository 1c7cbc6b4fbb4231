# What the toolchain files share: Debian's cross compiler for a machine, and qemu-user to run what it
# makes. They set NETXML_TRIPLE, NETXML_QEMU and CMAKE_SYSTEM_PROCESSOR first.
#
# NETXML_MACHINE_ROOT is the directory where qemu looks for the machine's files before the host's:
# the compiler's own, unless a script has made one that holds iconv's modules too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES NETXML_MACHINE_ROOT)
if(NOT NETXML_MACHINE_ROOT)
    set(NETXML_MACHINE_ROOT /usr/${NETXML_TRIPLE})
endif()

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${NETXML_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${NETXML_TRIPLE}-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR ${NETXML_QEMU} -L ${NETXML_MACHINE_ROOT})

# Libraries, headers and packages of the host are of no use.
set(CMAKE_FIND_ROOT_PATH /usr/${NETXML_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
