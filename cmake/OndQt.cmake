# Which Qt the tree is built with (docs/qt.md).

if(APPLE)
  set(default 6) # the one that Homebrew still maintains
else()
  set(default 5)
endif()
set(OND_QT ${default} CACHE STRING "Major version of Qt, 5 or 6")
set_property(CACHE OND_QT PROPERTY STRINGS 5 6)

if(OND_QT EQUAL 5)
  set(OND_QT_OLDEST 5.15)
  set(OND_OTHER_QT 6)
elseif(OND_QT EQUAL 6)
  set(OND_QT_OLDEST 6.4)
  set(OND_OTHER_QT 5)
else()
  message(FATAL_ERROR "OND_QT is 5 or 6, not \"${OND_QT}\"")
endif()
# CMake alone keeps what the other one's moc made.
if(DEFINED OND_QT_BEFORE AND NOT OND_QT_BEFORE EQUAL OND_QT)
  file(GLOB_RECURSE generated "${PROJECT_BINARY_DIR}/timestamp*" "${PROJECT_BINARY_DIR}/*.moc"
    "${PROJECT_BINARY_DIR}/moc_*.cpp")
  list(FILTER generated INCLUDE REGEX "/[^/]+_autogen/")
  foreach(file IN LISTS generated)
    file(REMOVE "${file}")
  endforeach()
endif()
set(OND_QT_BEFORE ${OND_QT} CACHE INTERNAL "The Qt that this folder was built with last")
find_package(Qt${OND_QT} ${OND_QT_OLDEST} REQUIRED COMPONENTS Core Gui LinguistTools Network Svg Widgets)
