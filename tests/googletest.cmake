# Builds GoogleTest from its sources, which its Debian package contains: the package's libraries fit
# neither another system nor another C++ library. Defines the target crv_googletest.
find_path(googletest googletest/src/gtest-all.cc
  PATHS /usr/src/googletest NO_CMAKE_FIND_ROOT_PATH REQUIRED)
add_library(crv_googletest STATIC
  ${googletest}/googletest/src/gtest-all.cc ${googletest}/googlemock/src/gmock-all.cc
  ${googletest}/googletest/src/gtest_main.cc)
target_include_directories(crv_googletest PRIVATE
  ${googletest}/googletest ${googletest}/googlemock)
target_include_directories(crv_googletest SYSTEM PUBLIC
  ${googletest}/googletest/include ${googletest}/googlemock/include)
target_compile_options(crv_googletest PRIVATE -O0)
if(CRV_STATIC)
  # The linker warns of getaddrinfo, by which GoogleTest can send results to another machine.
  target_link_options(crv_googletest INTERFACE LINKER:--no-warnings)
endif()
