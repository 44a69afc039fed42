# Packs .tar.gz and .zip again for reproducible builds; cpack runs it after it has built a package.
# The archives of cpack contain the files in the order of the file system and with the owner of the
# build. Here they are sorted by name and owned by root.
cmake_path(GET CPACK_TEMPORARY_DIRECTORY PARENT_PATH parent)
cmake_path(GET CPACK_TEMPORARY_DIRECTORY FILENAME directory)
if(CPACK_GENERATOR STREQUAL "TGZ")
  find_program(crv_tar NAMES gtar tar REQUIRED)
  execute_process(COMMAND ${crv_tar} --version OUTPUT_VARIABLE crv_tar_version)
  if(NOT crv_tar_version MATCHES "GNU tar")
    message(FATAL_ERROR "The archive needs GNU tar, and ${crv_tar} is another: install it as gtar")
  endif()
  execute_process(
    COMMAND ${crv_tar} --format=gnu --sort=name --owner=0 --group=0 --numeric-owner -c ${directory}
    COMMAND gzip -9n
    WORKING_DIRECTORY ${parent} OUTPUT_FILE ${CPACK_PACKAGE_FILES} COMMAND_ERROR_IS_FATAL ANY)
elseif(CPACK_GENERATOR STREQUAL "ZIP")
  file(REMOVE ${CPACK_PACKAGE_FILES})
  execute_process(
    COMMAND find ${directory}
    COMMAND sort
    COMMAND zip -q -X -@ ${CPACK_PACKAGE_FILES}
    WORKING_DIRECTORY ${parent} COMMAND_ERROR_IS_FATAL ANY)
endif()
