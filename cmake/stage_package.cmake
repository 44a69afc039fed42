# Prepares the files of a package; cpack runs it after the installation into its staging directory.
# Adds the license texts of the linked libraries and the files that Debian requires in a .deb, and
# sets all file times to the time of the source.
if(CPACK_GENERATOR MATCHES "^(DEB|RPM)$")
  set(share ${CPACK_TEMPORARY_DIRECTORY}/usr/share)
else()
  set(share ${CPACK_TEMPORARY_DIRECTORY}/share)
endif()
set(doc ${share}/doc/crv)

find_program(crv_python python3 REQUIRED)
get_filename_component(crv_source ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
execute_process(
  COMMAND ${crv_python} -B ${crv_source}/scripts/linked_libraries.py ${CPACK_CRV_COMPILER}
    ${CPACK_CRV_LINKAGE} ${CPACK_PACKAGE_VERSION} ${doc}/libraries
  COMMAND_ERROR_IS_FATAL ANY)

# The completions of all programs are one file, which rpmlint wants only once.
if(CPACK_GENERATOR STREQUAL "RPM")
  file(GLOB names RELATIVE ${share} ${share}/bash-completion/completions/crv-*
    ${share}/fish/vendor_completions.d/crv-*)
  foreach(name IN LISTS names)
    string(REGEX REPLACE ".*/crv-[a-z]+" "crv" first ${name})
    file(REMOVE ${share}/${name})
    file(CREATE_LINK ${first} ${share}/${name} SYMBOLIC)
  endforeach()
endif()

set(packed)
if(CPACK_GENERATOR MATCHES "^(DEB|RPM)$")
  file(GLOB packed ${share}/man/man*/*)
endif()
if(CPACK_GENERATOR STREQUAL "DEB")
  file(REMOVE ${doc}/LICENSE) # it is in the copyright file
  file(COPY ${CPACK_CRV_DEBIAN_DIR}/copyright DESTINATION ${doc})
  file(COPY_FILE ${CPACK_CRV_DEBIAN_DIR}/changelog ${doc}/changelog.Debian)
  # README.md links to CHANGELOG.md, and Debian wants a packed changelog.
  file(COPY_FILE ${doc}/CHANGELOG.md ${doc}/changelog)
  file(CHMOD ${doc}/copyright ${doc}/changelog.Debian
    PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  list(APPEND packed ${doc}/changelog ${doc}/changelog.Debian)
endif()
if(packed)
  execute_process(COMMAND gzip -9nf ${packed} COMMAND_ERROR_IS_FATAL ANY)
endif()

# The C library of the .deb, in the lowest version that has all symbols of the programs.
# dpkg-shlibdeps finds it except for programs of a cross compiler.
if(CPACK_GENERATOR STREQUAL "DEB" AND NOT CPACK_DEBIAN_PACKAGE_SHLIBDEPS)
  file(GLOB programs ${CPACK_TEMPORARY_DIRECTORY}/usr/bin/*)
  execute_process(COMMAND ${CPACK_CRV_READELF} --wide --version-info ${programs}
    OUTPUT_VARIABLE versions ERROR_QUIET)
  string(REGEX MATCHALL "GLIBC_[0-9.]+" versions "${versions}")
  if(NOT versions)
    message(FATAL_ERROR "No version of the C library found in ${programs}")
  endif()
  list(TRANSFORM versions REPLACE "GLIBC_" "")
  list(SORT versions COMPARE NATURAL ORDER DESCENDING)
  list(GET versions 0 version)
  set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6 (>= ${version})")
endif()

execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec chmod u+rw,go+r {} +
  COMMAND_ERROR_IS_FATAL ANY)
set(ENV{SOURCE_DATE_EPOCH} ${CPACK_CRV_EPOCH})
string(TIMESTAMP crv_time "%Y%m%d%H%M.%S" UTC)
set(ENV{TZ} UTC0)
execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch -h -t ${crv_time} {} +
  COMMAND_ERROR_IS_FATAL ANY)
