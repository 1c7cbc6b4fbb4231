# PowerPC: big-endian, pointers of four bytes.
set(NETXML_TRIPLE powerpc-linux-gnu)
set(NETXML_QEMU qemu-ppc)
set(CMAKE_SYSTEM_PROCESSOR ppc)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
