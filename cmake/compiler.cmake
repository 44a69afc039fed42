# Compiler and linker options of all targets: warnings, exact arithmetic, large files, sanitizers.
include(CheckCXXSymbolExists)
include(CheckLinkerFlag)

add_library(crv_compiler INTERFACE)

target_compile_options(crv_compiler INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wformat=2 -Wconversion -Wsign-conversion -Wundef -Wcast-qual
  # No fused operations: they round differently, and output must be the same on every machine.
  -ffp-contract=off)

# 32-bit x86 computes with 80 bits by default, which rounds differently too.
check_cxx_symbol_exists(__i386__ "cstddef" CRV_I386)
if(CRV_I386)
  target_compile_options(crv_compiler INTERFACE -msse2 -mfpmath=sse)
endif()

if(WIN32 OR CMAKE_SIZEOF_VOID_P EQUAL 4)
  # Without it 32-bit programs cannot open files of 2 GiB and more, and programs for Windows get
  # sizes of 32 bits.
  target_compile_definitions(crv_compiler INTERFACE _FILE_OFFSET_BITS=64)
endif()

if(WIN32)
  # Use the printf of MinGW. That of the C runtime writes exponents of three digits and does not
  # support %zu.
  target_compile_definitions(crv_compiler INTERFACE __USE_MINGW_ANSI_STDIO=1)
endif()

if(CRV_LIBCXX)
  # For everything, GoogleTest included.
  add_compile_options(-stdlib=libc++)
  add_link_options(-stdlib=libc++)
  link_libraries(c++abi) # a static libc++ needs it beside itself
endif()

if(CRV_WERROR)
  target_compile_options(crv_compiler INTERFACE -Werror)
endif()

if(CRV_COVERAGE)
  target_compile_options(crv_compiler INTERFACE
    --coverage -fprofile-abs-path -fprofile-update=atomic)
  target_link_options(crv_compiler INTERFACE --coverage)
endif()

if(CRV_SANITIZE)
  target_compile_options(crv_compiler INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(crv_compiler INTERFACE -fsanitize=address,undefined)
else()
  # The program starts faster without shared libraries of the compiler. Linkers that do not know an
  # option, such as that of macOS, take the shared library.
  foreach(library libstdc++ libgcc)
    check_linker_flag(CXX -static-${library} CRV_STATIC_${library})
    if(CRV_STATIC_${library})
      target_link_options(crv_compiler INTERFACE -static-${library})
    endif()
  endforeach()
endif()
