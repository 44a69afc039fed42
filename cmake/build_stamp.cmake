# The date and time that the program shows as its own. Two builds of the same source must not differ: they are taken from
# SOURCE_DATE_EPOCH when the build is configured, or the time of the last commit, or, without either, a fixed day.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  set(crv_epoch $ENV{SOURCE_DATE_EPOCH})
elseif(EXISTS ${CMAKE_SOURCE_DIR}/.git)
  execute_process(COMMAND git log -1 --format=%ct WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
    OUTPUT_VARIABLE crv_epoch OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  # A new commit has a new time.
  if(EXISTS ${CMAKE_SOURCE_DIR}/.git/logs/HEAD)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/.git/logs/HEAD)
  endif()
endif()
if(NOT crv_epoch MATCHES "^[0-9]+$")
  set(crv_epoch 1767225600)
endif()

set(crv_outer_epoch "$ENV{SOURCE_DATE_EPOCH}")
set(ENV{SOURCE_DATE_EPOCH} ${crv_epoch})
string(TIMESTAMP crv_build_date "%b %d %Y" UTC)
string(TIMESTAMP crv_build_time "%H:%M:%S" UTC)
string(REGEX REPLACE " 0" "  " crv_build_date "${crv_build_date}")
if(crv_outer_epoch)
  set(ENV{SOURCE_DATE_EPOCH} ${crv_outer_epoch})
else()
  unset(ENV{SOURCE_DATE_EPOCH})
endif()

set(crv_stamped_source ${CMAKE_SOURCE_DIR}/src/util/identity.cpp)
set(crv_stamp "CRV_BUILD_DATE=\"${crv_build_date}\";CRV_BUILD_TIME=\"${crv_build_time}\"")
set_source_files_properties(${crv_stamped_source} PROPERTIES COMPILE_DEFINITIONS "${crv_stamp}")
