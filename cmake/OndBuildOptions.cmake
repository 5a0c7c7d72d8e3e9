# Options that every target of the tree is compiled with.

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

add_library(ond_build_options INTERFACE)
if(NOT APPLE)
  # Calls within the library go straight to their target: nobody replaces its functions at load time. On macOS they do
  # in any case.
  target_compile_options(ond_build_options INTERFACE -fno-semantic-interposition)
endif()
target_compile_options(ond_build_options INTERFACE -Wall -Wextra -Wpedantic $<$<BOOL:${OND_WERROR}>:-Werror>)
if(OND_SANITIZE)
  target_compile_options(ond_build_options INTERFACE -fsanitize=${OND_SANITIZE} -fno-sanitize-recover=all)
  target_link_options(ond_build_options INTERFACE -fsanitize=${OND_SANITIZE})
  # gcc takes std::regex, among others, for uninitialised in such builds.
  target_compile_options(ond_build_options INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-maybe-uninitialized>)
endif()
if(OND_BUILD_FUZZERS)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "OND_BUILD_FUZZERS needs clang: set CMAKE_CXX_COMPILER")
  endif()
  target_compile_options(ond_build_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
