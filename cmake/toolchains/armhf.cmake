# 32-bit ARM with a floating point unit, as Debian's armhf.
set(triplet arm-linux-gnueabihf)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi) # gcc tells at every list what it changed with version 7.
set(emulator qemu-arm-static)
include("${CMAKE_CURRENT_LIST_DIR}/debian.cmake")
