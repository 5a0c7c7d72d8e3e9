# Options that every target of the tree is compiled with, and the list of a folder's sources.

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_OBJCXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()
set(CMAKE_CXX_FLAGS_SANITIZED "-O1 -g -fno-omit-frame-pointer" CACHE STRING "Flags of the sanitizer presets")

add_library(ond_build_options INTERFACE)
# Calls within the library go straight to their target: nobody replaces its functions at load time.
target_compile_options(ond_build_options INTERFACE -fno-semantic-interposition)
target_compile_options(ond_build_options INTERFACE -Wall -Wextra -Wpedantic $<$<BOOL:${OND_WERROR}>:-Werror>)
if(OND_SANITIZE)
  target_compile_options(ond_build_options INTERFACE -fsanitize=${OND_SANITIZE} -fno-sanitize-recover=all)
  target_link_options(ond_build_options INTERFACE -fsanitize=${OND_SANITIZE})
endif()
if(OND_BUILD_FUZZERS)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "OND_BUILD_FUZZERS needs clang: set CMAKE_CXX_COMPILER")
  endif()
  target_compile_options(ond_build_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# ond_sources(PUBLIC header... PRIVATE file...)
# Adds the files of the current folder to the library. PUBLIC names headers that are installed.
function(ond_sources)
  cmake_parse_arguments(arg "" "" "PUBLIC;PRIVATE" ${ARGN})
  list(TRANSFORM arg_PUBLIC PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  target_sources(ondpdftoolutils_core PRIVATE ${arg_PRIVATE} ${arg_PUBLIC})
  target_sources(ondpdftoolutils PUBLIC
    FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${arg_PUBLIC})
endfunction()

# The standard library gives its templates default visibility, and Qt its classes, so that what we instantiate of them,
# and what is not inlined, would be exported beside our own interface. The instance of a SingleTon is reached through its
# getter only; visible, it would keep the library from being unloaded.
function(ond_hide_foreign_symbols target)
  if(APPLE)
    set(list "${PROJECT_SOURCE_DIR}/cmake/foreign-symbols.txt")
    target_link_options(${target} PRIVATE "LINKER:-unexported_symbols_list,${list}")
  else()
    set(list "${PROJECT_SOURCE_DIR}/cmake/foreign-symbols.map")
    target_link_options(${target} PRIVATE "LINKER:--version-script,${list}")
  endif()
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${list}")
endfunction()
