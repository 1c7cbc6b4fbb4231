# 32-bit Arm: little-endian, pointers of four bytes, char without a sign.
set(NETXML_TRIPLE arm-linux-gnueabihf)
set(NETXML_QEMU qemu-arm)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
