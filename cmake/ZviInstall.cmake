# What `cmake --install` gives, in three components: `runtime` is the shared library, `development` the headers, the CMake
# package and the pkg-config file, `program` the program with its completion and manual.

include(CMakePackageConfigHelpers)

if(EXISTS /etc/debian_version)
  set(zsh_functions zsh/vendor-completions)
else()
  set(zsh_functions zsh/site-functions)
endif()
set(ZVI_ZSH_FUNCTIONS "${zsh_functions}" CACHE STRING "Folder of zsh completions under the data folder")
mark_as_advanced(ZVI_ZSH_FUNCTIONS)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/zvi")

install(TARGETS zvi EXPORT zviTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
install(EXPORT zviTargets NAMESPACE zvi:: DESTINATION ${package_dir} COMPONENT development)

install(DIRECTORY "${PROJECT_SOURCE_DIR}/zvi" DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  FILES_MATCHING PATTERN "*.h"
  PATTERN "*Detail.h" EXCLUDE
  PATTERN "zvi/base" EXCLUDE
  PATTERN "posix" EXCLUDE
  PATTERN "windows" EXCLUDE)
install(FILES "${PROJECT_BINARY_DIR}/include/zvi/core/Version.h"
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zvi/core COMPONENT development)

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/zviConfig.cmake.in" "${PROJECT_BINARY_DIR}/zviConfig.cmake"
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file("${PROJECT_BINARY_DIR}/zviConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/zviConfig.cmake" "${PROJECT_BINARY_DIR}/zviConfigVersion.cmake"
  DESTINATION ${package_dir} COMPONENT development)

# The pkg-config file finds its prefix from where it lies, so that the installed tree may be moved.
file(RELATIVE_PATH ZVI_PC_TO_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
get_target_property(library_type zvi TYPE)
if(library_type STREQUAL "STATIC_LIBRARY")
  set(ZVI_PC_CFLAGS " -DZVI_STATIC")
  get_target_property(system_libraries zvi ZVI_SYSTEM_LIBRARIES)
  list(TRANSFORM system_libraries PREPEND " -l")
  string(JOIN "" ZVI_PC_LIBS ${system_libraries})
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/zvi.pc.in" "${PROJECT_BINARY_DIR}/zvi.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/zvi.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)

if(TARGET zvi-cli)
  install(TARGETS zvi-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
  if(NOT WIN32)
    install(FILES "${PROJECT_SOURCE_DIR}/apps/zvi/completion/zvi.bash"
      DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME zvi COMPONENT program)
    install(FILES "${PROJECT_SOURCE_DIR}/apps/zvi/completion/_zvi"
      DESTINATION ${CMAKE_INSTALL_DATADIR}/${ZVI_ZSH_FUNCTIONS} COMPONENT program)
  endif()
endif()

# gdb finds its printers by the place of the library; Visual Studio is given the natvis file.
install(FILES "${PROJECT_SOURCE_DIR}/debuggers/zvi-gdb.py" COMPONENT development
  DESTINATION "${CMAKE_INSTALL_DATADIR}/gdb/auto-load/\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}"
  RENAME "libzvi.so.${PROJECT_VERSION}-gdb.py")
install(FILES "${PROJECT_SOURCE_DIR}/debuggers/zvi.natvis" DESTINATION ${CMAKE_INSTALL_DATADIR}/zvi COMPONENT development)

include(ZviPackaging)
