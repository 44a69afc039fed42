# The date and time that the program prints as those of its build. They never come from the clock,
# because two builds of the same source must not differ. The first source in this list is used, and
# the build prints which one:
#
#   SOURCE_DATE_EPOCH of the environment when the build is configured
#   the time of the last commit, in a checkout
#   the time of the commit in cmake/commit_time.txt, which git archive fills in for a source archive
#   a fixed day, with a warning
set(crv_fixed_epoch 1767225600)
file(STRINGS ${CMAKE_SOURCE_DIR}/cmake/commit_time.txt crv_archived_epoch LIMIT_COUNT 1)

set(crv_epoch)
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  set(crv_epoch $ENV{SOURCE_DATE_EPOCH})
  set(crv_epoch_source "SOURCE_DATE_EPOCH")
  if(NOT crv_epoch MATCHES "^[0-9]+$")
    message(FATAL_ERROR "SOURCE_DATE_EPOCH is not a number of seconds: '${crv_epoch}'")
  endif()
elseif(EXISTS ${CMAKE_SOURCE_DIR}/.git)
  # Reading the time of a commit is safe in a checkout of any owner.
  execute_process(
    COMMAND git -c safe.directory=${CMAKE_SOURCE_DIR} log -1 --format=%ct
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} RESULT_VARIABLE crv_git_result
    OUTPUT_VARIABLE crv_epoch ERROR_VARIABLE crv_git_error OUTPUT_STRIP_TRAILING_WHITESPACE)
  set(crv_epoch_source "last commit")
  # A new commit has a new time.
  if(EXISTS ${CMAKE_SOURCE_DIR}/.git/logs/HEAD)
    set_property(DIRECTORY APPEND PROPERTY
      CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/.git/logs/HEAD)
  endif()
  if(NOT crv_git_result EQUAL 0 OR NOT crv_epoch MATCHES "^[0-9]+$")
    string(STRIP "${crv_git_result} ${crv_git_error}" crv_git_error)
    message(WARNING "git does not tell the time of the last commit: ${crv_git_error}")
    set(crv_epoch)
  endif()
elseif(crv_archived_epoch MATCHES "^[0-9]+$")
  set(crv_epoch ${crv_archived_epoch})
  set(crv_epoch_source "source archive")
endif()
if(NOT crv_epoch MATCHES "^[0-9]+$")
  set(crv_epoch ${crv_fixed_epoch})
  set(crv_epoch_source "fixed day")
  message(WARNING "No time of the source is known, so the program is stamped with a fixed day. "
    "Set SOURCE_DATE_EPOCH to the time of the source, in seconds since 1970.")
endif()

set(crv_outer_epoch "$ENV{SOURCE_DATE_EPOCH}")
set(ENV{SOURCE_DATE_EPOCH} ${crv_epoch})
string(TIMESTAMP crv_build_date "%b %d %Y" UTC)
string(TIMESTAMP crv_build_time "%H:%M:%S" UTC)
string(TIMESTAMP crv_debian_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
string(REGEX REPLACE " 0" "  " crv_build_date "${crv_build_date}")
if(crv_outer_epoch)
  set(ENV{SOURCE_DATE_EPOCH} ${crv_outer_epoch})
else()
  unset(ENV{SOURCE_DATE_EPOCH})
endif()
message(STATUS "Build stamp: ${crv_build_date} ${crv_build_time} (${crv_epoch_source})")

set(crv_stamped_source ${CMAKE_SOURCE_DIR}/src/util/identity.cpp)
set(crv_stamp "CRV_BUILD_DATE=\"${crv_build_date}\";CRV_BUILD_TIME=\"${crv_build_time}\"")
list(APPEND crv_stamp "CRV_VERSION=\"${PROJECT_VERSION}\"")
set_source_files_properties(${crv_stamped_source} PROPERTIES COMPILE_DEFINITIONS "${crv_stamp}")
