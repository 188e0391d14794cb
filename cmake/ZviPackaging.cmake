# What cpack makes of an installation: the Debian packages zvi, libzvi0 and libzvi-dev, or a zip for Windows. Only the
# project itself is packaged, not another one that builds it along.

if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()

set(CPACK_PACKAGE_NAME zvi)
set(CPACK_PACKAGE_VENDOR "The zvi developers")
set(CPACK_PACKAGE_CONTACT "The zvi developers <zvi@localhost>")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME "zvi-${PROJECT_VERSION}-windows-x86_64")
  install(FILES "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/CHANGELOG.md" DESTINATION . COMPONENT program)
  include(CPack)
  return()
endif()

# The manual is made by the program, which has to run here.
set(ZVI_MANUAL "${PROJECT_BINARY_DIR}/manual" CACHE PATH "Folder of manual pages to be packaged, made by scripts/manual")
mark_as_advanced(ZVI_MANUAL)
install(DIRECTORY "${ZVI_MANUAL}/" DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program OPTIONAL
  FILES_MATCHING PATTERN "*.1.gz")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL runtime development program)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/zvi")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# Until 1.0 a program runs with the minor version alone that it was linked with.
math(EXPR next_minor "${PROJECT_VERSION_MINOR} + 1")
set(minor "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
set(same_library "libzvi0 (>= ${minor}), libzvi0 (<< ${PROJECT_VERSION_MAJOR}.${next_minor}~)")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libzvi0)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "foundation library for engineering applications
Closed domains out of loose curves, tolerance-aware geometry, spatial search,
the small language of input fields, unit systems, settings, messages, logs,
profilers and child processes.

This package contains the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libzvi-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libzvi0 (= ${PROJECT_VERSION}-1)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "headers of a foundation library for engineering applications
Closed domains out of loose curves, tolerance-aware geometry, spatial search,
the small language of input fields, unit systems, settings, messages, logs,
profilers and child processes.

This package contains the headers, and what CMake and pkg-config need.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME zvi)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "libzvi0 (= ${PROJECT_VERSION}-1)")
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "domains, numbers, units and other engineering jobs at the prompt
Finds the closed domains of a drawing and the contacts of bodies, evaluates
what is typed into input fields, converts units, compresses number lists,
reads settings, message catalogues and profiles, and runs programs.")

# What Debian asks of each package: who may copy it, and what changed.
string(TIMESTAMP today "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file("${PROJECT_SOURCE_DIR}/packaging/changelog.in" "${PROJECT_BINARY_DIR}/packaging/changelog.Debian" @ONLY)
find_program(ZVI_GZIP gzip)
mark_as_advanced(ZVI_GZIP)
if(ZVI_GZIP)
  execute_process(COMMAND "${ZVI_GZIP}" -9nf "${PROJECT_BINARY_DIR}/packaging/changelog.Debian")
endif()
foreach(component IN ITEMS runtime development program)
  string(TOUPPER ${component} upper)
  set(folder "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
  install(FILES "${PROJECT_SOURCE_DIR}/packaging/copyright" DESTINATION ${folder} COMPONENT ${component})
  install(FILES "${PROJECT_BINARY_DIR}/packaging/changelog.Debian.gz" DESTINATION ${folder} COMPONENT ${component}
    OPTIONAL)
endforeach()

# The loader is told of the library, and packages are told what a program that uses it needs.
file(WRITE "${PROJECT_BINARY_DIR}/packaging/triggers" "activate-noawait ldconfig\n")
file(WRITE "${PROJECT_BINARY_DIR}/packaging/shlibs" "libzvi ${PROJECT_VERSION_MAJOR} ${same_library}\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  "${PROJECT_BINARY_DIR}/packaging/triggers" "${PROJECT_BINARY_DIR}/packaging/shlibs")

include(CPack)
