# 64-bit ARM, as Debian's arm64.
set(triplet aarch64-linux-gnu)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(emulator qemu-aarch64-static)
include("${CMAKE_CURRENT_LIST_DIR}/debian.cmake")
