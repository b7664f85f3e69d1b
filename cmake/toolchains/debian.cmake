# Builds for another architecture with Debian's cross compiler, and with the libraries that scripts/sysroot has unpacked
# into VESMAR_SYSROOT. The file that includes this one sets the triplet, CMAKE_SYSTEM_PROCESSOR and the emulator.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${triplet})

set(VESMAR_SYSROOT "$ENV{VESMAR_SYSROOT}" CACHE PATH "What scripts/sysroot has unpacked")
if(NOT EXISTS "${VESMAR_SYSROOT}/complete")
  message(FATAL_ERROR "VESMAR_SYSROOT names no folder that scripts/sysroot has completed. scripts/test-arm does both.")
endif()
set(ENV{VESMAR_SYSROOT} "${VESMAR_SYSROOT}") # CMake's trial compilations read this file as well.

set(CMAKE_FIND_ROOT_PATH "${VESMAR_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
foreach(folder lib usr/lib)
  string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT " -Wl,-rpath-link,${VESMAR_SYSROOT}/${folder}/${triplet}")
endforeach()
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${CMAKE_EXE_LINKER_FLAGS_INIT}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${CMAKE_EXE_LINKER_FLAGS_INIT}")
set(CMAKE_CROSSCOMPILING_EMULATOR "${emulator};-L;${VESMAR_SYSROOT}")
