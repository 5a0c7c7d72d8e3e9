# Debian packages by CPack: the library, the development files, the programs, and the debug information of each.

set(OND_MAINTAINER "PDF Orvell <packages@pdforvell.example>" CACHE STRING "Who is named as the packages' maintainer")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ondpdftoolutils)
set(CPACK_PACKAGE_CONTACT "${OND_MAINTAINER}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SOURCE ondpdftoolutils)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${OND_BUNDLE_DIR}/Contents/Frameworks")
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(library "libondpdftoolutils${PROJECT_VERSION_MAJOR}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${library}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Tells the processes of the product where its bundle and the user's data are,
which settings are in force and who is signed in; runs work in the background
and writes the diagnostic log.")
set(CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${CMAKE_CURRENT_LIST_DIR}/debian/triggers")

if(OND_QT EQUAL 5)
  set(qt "qtbase5-dev")
else()
  set(qt "qt6-base-dev")
endif()
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libondpdftoolutils-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${qt} (>= ${OND_QT_OLDEST})")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Development files: headers, CMake package, pkg-config file, and a guide with
examples.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME ondpdftoolutils-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "Programs: the inspector prints what the library answers on this machine, names
what is wrong with an installation, and writes a report for support.")
set(CPACK_DEBIAN_TOOLS_DEBUGINFO_PACKAGE ON)

# Every package has the copyright and both changelogs.
execute_process(COMMAND date -uR -d "${OND_RELEASE_DATE}" OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE)
set(doc "${PROJECT_BINARY_DIR}/doc")
configure_file("${CMAKE_CURRENT_LIST_DIR}/debian/changelog.in" "${doc}/changelog.Debian" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${doc}/changelog" COPYONLY)
execute_process(COMMAND gzip -9nf "${doc}/changelog.Debian" "${doc}/changelog" COMMAND_ERROR_IS_FATAL ANY)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER "${component}" part)
  set(folder "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${part}_PACKAGE_NAME}")
  install(FILES "${CMAKE_CURRENT_LIST_DIR}/debian/copyright" "${doc}/changelog.Debian.gz" "${doc}/changelog.gz"
    DESTINATION "${folder}" COMPONENT ${component})
  if(EXISTS "${CMAKE_CURRENT_LIST_DIR}/debian/${component}.lintian-overrides")
    install(FILES "${CMAKE_CURRENT_LIST_DIR}/debian/${component}.lintian-overrides"
      DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides"
      RENAME "${CPACK_DEBIAN_${part}_PACKAGE_NAME}" COMPONENT ${component})
  endif()
endforeach()
set(folder "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME}")
install(FILES "${PROJECT_SOURCE_DIR}/docs/guide.md" DESTINATION "${folder}" COMPONENT development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${folder}" COMPONENT development
  FILES_MATCHING PATTERN *.cpp)
install(CODE "execute_process(COMMAND gzip -9nf
  \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_MANDIR}/man1/pdforvell-inspect.1\")" COMPONENT tools)

include(CPack)
