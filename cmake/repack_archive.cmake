# Run by cpack when a package is made. Its archives hold the files as the file system lists them, and owned by whoever made
# them; packed again in the order of their names and owned by root, two builds of the same source are the same.
cmake_path(GET CPACK_TEMPORARY_DIRECTORY PARENT_PATH parent)
cmake_path(GET CPACK_TEMPORARY_DIRECTORY FILENAME folder)
if(CPACK_GENERATOR STREQUAL "TGZ")
  execute_process(
    COMMAND tar --format=gnu --sort=name --owner=0 --group=0 --numeric-owner -c ${folder}
    COMMAND gzip -9n
    WORKING_DIRECTORY ${parent} OUTPUT_FILE ${CPACK_PACKAGE_FILES} COMMAND_ERROR_IS_FATAL ANY)
elseif(CPACK_GENERATOR STREQUAL "ZIP")
  file(REMOVE ${CPACK_PACKAGE_FILES})
  execute_process(
    COMMAND find ${folder}
    COMMAND sort
    COMMAND zip -q -X -@ ${CPACK_PACKAGE_FILES}
    WORKING_DIRECTORY ${parent} COMMAND_ERROR_IS_FATAL ANY)
endif()
