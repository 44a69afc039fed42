# Installed documents, and the packages (.deb, .rpm, .tar.gz, .zip) that scripts/package.sh builds.

option(CRV_STATIC "Link the C library statically too" OFF)
option(CRV_HARDEN "Compile and link with the hardening options of distributions" OFF)

if(CRV_STATIC)
  check_linker_flag(CXX -static CRV_LINKER_KNOWS_STATIC)
  if(NOT CRV_LINKER_KNOWS_STATIC)
    message(WARNING "CRV_STATIC is ignored: this system has no C library to link statically")
    set(CRV_STATIC OFF)
  endif()
endif()
if(CRV_STATIC)
  target_link_options(crv_compiler INTERFACE -static)
endif()
if(CRV_HARDEN)
  target_compile_options(crv_compiler INTERFACE -fPIE -fstack-protector-strong)
  target_compile_definitions(crv_compiler INTERFACE _FORTIFY_SOURCE=2)
  target_link_options(crv_compiler INTERFACE -pie -Wl,-z,relro,-z,now)
endif()

# The documents keep their relative paths, so that the links between them work.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES bench/README.md DESTINATION ${CMAKE_INSTALL_DOCDIR}/bench)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR}
  FILES_MATCHING PATTERN "*.req" PATTERN "*.mad" PATTERN "*.pos" PATTERN "*.vdr")

set(CPACK_PACKAGE_VENDOR "The crv developers")
set(CPACK_PACKAGE_CONTACT "The crv developers <developers@crv.invalid>")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_SOURCE_DIR}/LICENSE)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/stage_package.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/repack_archive.cmake)

# Windows reports the processor as AMD64.
string(TOLOWER ${CMAKE_SYSTEM_NAME} crv_system)
string(TOLOWER ${CMAKE_SYSTEM_PROCESSOR} crv_processor)
string(REPLACE amd64 x86_64 crv_processor ${crv_processor})
set(CPACK_PACKAGE_FILE_NAME crv-${PROJECT_VERSION}-${crv_system}-${crv_processor})

set(crv_description
"crv reads the result files of simulation programs (request files, Madymo
files, column files and frame files), keeps the series that are named with
their statistics, and then draws them as a one-page PostScript chart and
prints it, writes them as aligned text tables, or tells the value of one
series where another meets a condition.")

# The programs of the .deb depend on the C library of the system only. The revision is 0crv1:
# revisions without a suffix are for distributions.
string(REGEX REPLACE "^aarch64$" arm64 crv_debian_processor ${crv_processor})
string(REGEX REPLACE "^x86_64$" amd64 crv_debian_processor ${crv_debian_processor})
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE ${crv_debian_processor})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 0crv1)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS ghostscript)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cups-bsd | lpr, poppler-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION ${crv_description})
# dpkg-shlibdeps gives the dependency a name that only cross compilers use; see stage_package.cmake.
if(NOT CMAKE_CROSSCOMPILING)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
endif()

# The programs of the .rpm need no library: systems that install it have older ones and newer ones.
# Nothing in the package may depend on the clock, on the name of this machine or on its directories.
set(CPACK_RPM_FILE_NAME RPM-DEFAULT)
set(CPACK_RPM_PACKAGE_RELEASE 1)
set(CPACK_RPM_PACKAGE_ARCHITECTURE ${crv_processor})
set(CPACK_RPM_PACKAGE_LICENSE
  "MIT AND LGPL-2.1-or-later AND GPL-3.0-or-later WITH GCC-exception-3.1")
set(CPACK_RPM_PACKAGE_GROUP Applications/Engineering)
set(CPACK_RPM_PACKAGE_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_RPM_PACKAGE_DESCRIPTION ${crv_description})
set(CPACK_RPM_PACKAGE_SUGGESTS "ghostscript, cups-client, poppler-utils")
set(CPACK_RPM_COMPRESSION_TYPE gzip)
set(CPACK_RPM_EXCLUDE_FROM_AUTO_FILELIST_ADDITION
  /usr/share/man /usr/share/man/man1 /usr/share/doc
  /usr/share/bash-completion /usr/share/bash-completion/completions
  /usr/share/zsh /usr/share/zsh/site-functions
  /usr/share/fish /usr/share/fish/vendor_completions.d)
set(CPACK_RPM_SPEC_MORE_DEFINE "%define use_source_date_epoch_as_buildtime 1
%define clamp_mtime_to_source_date_epoch 1
%define _buildhost crv.invalid
%define _build_id_links none
%define __os_install_post %{nil}
%define packager ${CPACK_PACKAGE_CONTACT}")

# For stage_package.cmake: only variables that begin with CPACK_ are passed to it.
set(CPACK_CRV_EPOCH ${crv_epoch})
set(CPACK_CRV_DEBIAN_DIR ${CMAKE_BINARY_DIR}/debian)
set(CPACK_CRV_COMPILER ${CMAKE_CXX_COMPILER})
set(CPACK_CRV_READELF ${CMAKE_READELF})
if(WIN32)
  set(CPACK_CRV_LINKAGE windows)
elseif(CRV_STATIC)
  set(CPACK_CRV_LINKAGE static)
else()
  set(CPACK_CRV_LINKAGE shared)
endif()
set(crv_debian_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(crv_contact ${CPACK_PACKAGE_CONTACT})
file(READ ${CMAKE_SOURCE_DIR}/LICENSE crv_license)
string(REGEX REPLACE "^MIT License\n\n(Copyright[^\n]*)\n\n(.*)\n$" "\\2"
  crv_license "${crv_license}")
string(REGEX REPLACE "\n\n" "\n.\n" crv_license "${crv_license}")
string(REGEX REPLACE "\n" "\n " crv_license "${crv_license}")
configure_file(cmake/debian/changelog.in debian/changelog @ONLY)
configure_file(cmake/debian/copyright.in debian/copyright @ONLY)

include(CPack)
