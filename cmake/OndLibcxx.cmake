# The preset libcxx: clang with the C++ library that macOS has. Qt hands no type of the standard library across; what does
# is compiled from source.

option(OND_LIBCXX "Build with LLVM's C++ library (clang only)" OFF)

if(OND_LIBCXX)
  add_library(ond_inireader STATIC cmake/INIReader.cpp)
  target_link_options(ond_inireader INTERFACE "LINKER:--exclude-libs,libond_inireader.a")
  target_link_libraries(ond_inireader PUBLIC inih)
  set_target_properties(PkgConfig::INIReader PROPERTIES INTERFACE_LINK_LIBRARIES ond_inireader)
endif()

# Defines GTest::gtest and GTest::gtest_main.
macro(ond_find_googletest)
  if(OND_LIBCXX)
    set(BUILD_GMOCK OFF)
    add_subdirectory(/usr/src/googletest "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL)
  else()
    find_package(GTest REQUIRED)
  endif()
endmacro()
