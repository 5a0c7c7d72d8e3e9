# cmake --install: library (component "runtime"), headers, CMake package and pkg-config file ("development"), the programs
# in a bundle of their own ("tools").

include(CMakePackageConfigHelpers)

set(OND_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/ondpdftoolutils")

install(TARGETS ondpdftoolutils
  EXPORT ondpdftoolutilsTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/ondpdftoolutils" COMPONENT development)
if(OND_VIPSDK_FILES)
  install(FILES ${OND_VIPSDK_FILES} DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime)
else()
  install(TARGETS ondvipsdk
    EXPORT ondpdftoolutilsTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime)
endif()
install(EXPORT ondpdftoolutilsTargets
  NAMESPACE ondpdftoolutils::
  DESTINATION "${OND_PACKAGE_DIR}"
  COMPONENT development)

configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/ondpdftoolutilsConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/ondpdftoolutilsConfig.cmake"
  INSTALL_DESTINATION "${OND_PACKAGE_DIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/ondpdftoolutilsConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/ondpdftoolutilsConfig.cmake"
  "${PROJECT_BINARY_DIR}/ondpdftoolutilsConfigVersion.cmake"
  DESTINATION "${OND_PACKAGE_DIR}"
  COMPONENT development)

# The file finds its prefix from its own place, so that an installed tree may be moved.
file(RELATIVE_PATH OND_PC_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file("${CMAKE_CURRENT_LIST_DIR}/ondpdftoolutils.pc.in" "${PROJECT_BINARY_DIR}/ondpdftoolutils.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/ondpdftoolutils.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
  COMPONENT development)

# The programs answer nothing outside a bundle. Theirs holds links to the installed libraries, and a script leads into it.
cmake_path(APPEND CMAKE_INSTALL_LIBDIR ondpdftoolutils "${OND_BUNDLE_NAME}.app" Contents OUTPUT_VARIABLE contents)
install(TARGETS pdforvell-inspect orvell-account RUNTIME DESTINATION "${contents}/MacOS" COMPONENT tools)
install(FILES "${OND_BUNDLE_DIR}/Contents/Info.plist" DESTINATION "${contents}" COMPONENT tools)
install(DIRECTORY "${OND_BUNDLE_DIR}/Contents/Resources" DESTINATION "${contents}" COMPONENT tools)
file(RELATIVE_PATH OND_INSPECT_FROM_BIN "/${CMAKE_INSTALL_BINDIR}" "/${contents}/MacOS/pdforvell-inspect")
configure_file("${CMAKE_CURRENT_LIST_DIR}/pdforvell-inspect.in" "${PROJECT_BINARY_DIR}/pdforvell-inspect" @ONLY)
install(PROGRAMS "${PROJECT_BINARY_DIR}/pdforvell-inspect" DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tools)
set(links "")
if(OND_VIPSDK_FILES)
  set(libraries ${OND_VIPSDK_FILES})
  list(TRANSFORM libraries REPLACE ".*/" "")
else()
  set(libraries "$<TARGET_FILE_NAME:ondvipsdk>")
endif()
foreach(library IN LISTS libraries ITEMS "$<TARGET_SONAME_FILE_NAME:ondpdftoolutils>")
  list(APPEND links "${contents}/Frameworks/${library}=${CMAKE_INSTALL_LIBDIR}/${library}")
endforeach()
install(CODE "
  set(links \"${links}\")
  foreach(link IN LISTS links)
    string(REGEX MATCH \"(.*)=(.*)\" matched \"\${link}\")
    set(from \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/\${CMAKE_MATCH_1}\")
    set(to \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/\${CMAKE_MATCH_2}\")
    cmake_path(GET from PARENT_PATH folder)
    file(MAKE_DIRECTORY \"\${folder}\")
    cmake_path(RELATIVE_PATH to BASE_DIRECTORY \"\${folder}\")
    message(STATUS \"Linking: \${from}\")
    file(CREATE_LINK \"\${to}\" \"\${from}\" SYMBOLIC)
  endforeach()" COMPONENT tools)
