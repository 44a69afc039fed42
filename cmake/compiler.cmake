# Compiler and linker options of all targets: warnings, exact arithmetic, sanitizers.
add_library(crv_compiler INTERFACE)

target_compile_options(crv_compiler INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wformat=2 -Wconversion -Wsign-conversion -Wundef -Wcast-qual
  # No fused operations: they round differently, and output must be the same on every machine.
  -ffp-contract=off)

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
  # The program starts faster without shared libraries of the compiler.
  target_link_options(crv_compiler INTERFACE -static-libstdc++ -static-libgcc)
endif()
