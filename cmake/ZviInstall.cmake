# What `cmake --install` gives: the headers, the library, the program, the CMake package and the pkg-config file.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/zvi")

install(TARGETS zvi EXPORT zviTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(EXPORT zviTargets NAMESPACE zvi:: DESTINATION ${package_dir})

install(DIRECTORY "${PROJECT_SOURCE_DIR}/zvi" DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h"
  PATTERN "*Detail.h" EXCLUDE
  PATTERN "zvi/base" EXCLUDE
  PATTERN "posix" EXCLUDE
  PATTERN "windows" EXCLUDE)
install(FILES "${PROJECT_BINARY_DIR}/include/zvi/core/Version.h"
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zvi/core)

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/zviConfig.cmake.in" "${PROJECT_BINARY_DIR}/zviConfig.cmake"
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file("${PROJECT_BINARY_DIR}/zviConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/zviConfig.cmake" "${PROJECT_BINARY_DIR}/zviConfigVersion.cmake"
  DESTINATION ${package_dir})

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
install(FILES "${PROJECT_BINARY_DIR}/zvi.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(TARGET zvi-cli)
  install(TARGETS zvi-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
