# cmake --install: headers, library, CMake package, pkg-config file.

include(CMakePackageConfigHelpers)

set(OND_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/ondpdftoolutils")

install(TARGETS ondpdftoolutils
  EXPORT ondpdftoolutilsTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/ondpdftoolutils")
if(OND_VIPSDK_FILES)
  install(FILES ${OND_VIPSDK_FILES} DESTINATION "${CMAKE_INSTALL_LIBDIR}")
else()
  install(TARGETS ondvipsdk EXPORT ondpdftoolutilsTargets LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
endif()
install(EXPORT ondpdftoolutilsTargets NAMESPACE ondpdftoolutils:: DESTINATION "${OND_PACKAGE_DIR}")

configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/ondpdftoolutilsConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/ondpdftoolutilsConfig.cmake"
  INSTALL_DESTINATION "${OND_PACKAGE_DIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/ondpdftoolutilsConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/ondpdftoolutilsConfig.cmake"
  "${PROJECT_BINARY_DIR}/ondpdftoolutilsConfigVersion.cmake"
  DESTINATION "${OND_PACKAGE_DIR}")

# The file finds its prefix from its own place, so that an installed tree may be moved.
file(RELATIVE_PATH OND_PC_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file("${CMAKE_CURRENT_LIST_DIR}/ondpdftoolutils.pc.in" "${PROJECT_BINARY_DIR}/ondpdftoolutils.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/ondpdftoolutils.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
