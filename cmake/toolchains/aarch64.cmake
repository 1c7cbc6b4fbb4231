# 64-bit Arm: little-endian, with blocks of its own (support/block_neon.hpp).
set(NETXML_TRIPLE aarch64-linux-gnu)
set(NETXML_QEMU qemu-aarch64)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
