# ond_sources(PUBLIC header... PRIVATE file...)
# Adds the files of the current folder to the library. PUBLIC names headers that are installed.
function(ond_sources)
  cmake_parse_arguments(arg "" "" "PUBLIC;PRIVATE" ${ARGN})
  list(TRANSFORM arg_PUBLIC PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  target_sources(ondpdftoolutils_core PRIVATE ${arg_PRIVATE} ${arg_PUBLIC})
  target_sources(ondpdftoolutils PUBLIC
    FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${arg_PUBLIC})
endfunction()
