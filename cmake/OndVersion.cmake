# The changelog's newest version is the project's, and says when it was released.

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
file(STRINGS "${PROJECT_SOURCE_DIR}/CHANGELOG.md" versions REGEX "^## \\[[0-9]")
list(GET versions 0 newest)
if(NOT newest MATCHES "^## \\[(.*)\\] - ([0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9])$")
  message(FATAL_ERROR "CHANGELOG.md: not the form of a version: ${newest}")
endif()
set(OND_RELEASE_DATE "${CMAKE_MATCH_2}")
if(NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "CHANGELOG.md ends in version ${CMAKE_MATCH_1}, and the project's is ${PROJECT_VERSION}")
endif()
