# cmake --install: the library with its headers and its package, the scripts of the tables, both programs.
include(CMakePackageConfigHelpers)

set(KVO_PAKETORDNER "${CMAKE_INSTALL_LIBDIR}/cmake/KVOBildZuordnung")
set(KVO_SQL_ORDNER "${CMAKE_INSTALL_DATADIR}/KVOBildZuordnung/sql")

install(TARGETS KVOBildZuordnung EXPORT KVOBildZuordnungTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/KVOBildZuordnung")
install(EXPORT KVOBildZuordnungTargets NAMESPACE KVOBildZuordnung:: DESTINATION "${KVO_PAKETORDNER}")

configure_package_config_file(KVOBildZuordnungConfig.cmake.in KVOBildZuordnungConfig.cmake
  INSTALL_DESTINATION "${KVO_PAKETORDNER}" PATH_VARS KVO_SQL_ORDNER)
write_basic_package_version_file(KVOBildZuordnungConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  "${CMAKE_CURRENT_BINARY_DIR}/KVOBildZuordnungConfig.cmake"
  "${CMAKE_CURRENT_BINARY_DIR}/KVOBildZuordnungConfigVersion.cmake"
  DESTINATION "${KVO_PAKETORDNER}")

# The prefix is where the file lies, so that the tree can be put anywhere.
set(KVO_PKGCONFIG_ORDNER "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH KVO_ZUM_VORSATZ "${KVO_PKGCONFIG_ORDNER}" "${CMAKE_INSTALL_PREFIX}")
configure_file(KVOBildZuordnung.pc.in KVOBildZuordnung.pc @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/KVOBildZuordnung.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

install(DIRECTORY "${PROJECT_SOURCE_DIR}/sql/" DESTINATION "${KVO_SQL_ORDNER}" FILES_MATCHING PATTERN "*.sql")
