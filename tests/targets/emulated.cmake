# Programs of another processor as programs of this machine: for each one, a program of its name in
# the directory "emulated" that runs it under QEMU. Sets crv_tested_program to the one of crv.
if(NOT CRV_QEMU)
  message(FATAL_ERROR "The tests of this target need qemu-user-static")
endif()
find_program(CRV_HOST_COMPILER NAMES g++ clang++ c++ REQUIRED)

set(emulated ${CMAKE_BINARY_DIR}/emulated)
set(starter_source ${CMAKE_CURRENT_LIST_DIR}/start_under_qemu.cpp)
set(starters ${crv_programs})
list(TRANSFORM starters PREPEND ${emulated}/)
foreach(starter IN LISTS starters)
  add_custom_command(OUTPUT ${starter} DEPENDS ${starter_source}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${emulated}
    COMMAND ${CRV_HOST_COMPILER} -std=c++17 -O1 "-DCRV_QEMU=\"${CRV_QEMU}\""
      -o ${starter} ${starter_source} VERBATIM)
endforeach()
add_custom_target(crv_emulated ALL DEPENDS ${starters})
set(crv_tested_program ${emulated}/crv)
