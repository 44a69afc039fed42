# Builds for 64-bit Windows with the cross compiler, and runs what was built under Wine. The program needs no libraries beside
# it. The threads of the compiler are those of POSIX, because it brings more of the C++ library.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# Libraries and headers are those of Windows, tools those of this machine.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(CRV_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(CRV_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CRV_WINE})
endif()
