# Prepares the files of a package; cpack runs it after the installation into its staging directory.
# Adds the files that Debian requires in a .deb, and sets all file times to the time of the source.
if(CPACK_GENERATOR STREQUAL "DEB")
  set(share ${CPACK_TEMPORARY_DIRECTORY}/usr/share)
  set(doc ${share}/doc/crv)
  file(REMOVE ${doc}/LICENSE) # it is in the copyright file
  file(COPY ${CPACK_CRV_DEBIAN_DIR}/copyright DESTINATION ${doc})
  file(COPY_FILE ${CPACK_CRV_DEBIAN_DIR}/changelog ${doc}/changelog.Debian)
  # README.md links to CHANGELOG.md, and Debian wants a packed changelog.
  file(COPY_FILE ${doc}/CHANGELOG.md ${doc}/changelog)
  file(CHMOD ${doc}/copyright ${doc}/changelog.Debian
    PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  file(GLOB pages ${share}/man/man*/*)
  execute_process(COMMAND gzip -9nf ${doc}/changelog ${doc}/changelog.Debian ${pages}
    COMMAND_ERROR_IS_FATAL ANY)
endif()

set(ENV{SOURCE_DATE_EPOCH} ${CPACK_CRV_EPOCH})
string(TIMESTAMP crv_time "%Y%m%d%H%M.%S" UTC)
set(ENV{TZ} UTC0)
execute_process(COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch -h -t ${crv_time} {} +
  COMMAND_ERROR_IS_FATAL ANY)
