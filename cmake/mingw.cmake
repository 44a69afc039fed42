# Toolchain for 64-bit Windows: the MinGW cross compiler, and Wine to run the programs. The program
# is linked statically. The variant of the compiler with POSIX threads is used, because its C++
# library is more complete.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# Find libraries and headers of Windows, and programs of the build machine.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(CRV_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(CRV_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CRV_WINE})
endif()
