# Toolchain for Linux on another processor: a cross compiler of Debian, and QEMU to run the
# programs. CRV_CROSS names the compiler without "-g++", for example aarch64-linux-gnu.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CRV_CROSS)
set(CMAKE_SYSTEM_NAME Linux)
string(REGEX MATCH "^[^-]+" CMAKE_SYSTEM_PROCESSOR "${CRV_CROSS}")
set(CMAKE_CXX_COMPILER ${CRV_CROSS}-g++)

# Find libraries and headers of the other processor, and programs of the build machine.
set(CMAKE_FIND_ROOT_PATH /usr/${CRV_CROSS})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

string(REPLACE i686 i386 qemu_processor ${CMAKE_SYSTEM_PROCESSOR})
find_program(CRV_QEMU qemu-${qemu_processor}-static)
if(CRV_QEMU)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${CRV_QEMU} -L /usr/${CRV_CROSS})
endif()
