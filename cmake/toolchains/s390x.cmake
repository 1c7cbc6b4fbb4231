# IBM Z: big-endian, pointers of eight bytes.
set(NETXML_TRIPLE s390x-linux-gnu)
set(NETXML_QEMU qemu-s390x)
set(CMAKE_SYSTEM_PROCESSOR s390x)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
