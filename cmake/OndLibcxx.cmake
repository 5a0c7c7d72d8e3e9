# The preset libcxx: clang with the C++ library that macOS has. Qt hands no type of the standard library across; what does
# is compiled from source.

option(OND_LIBCXX "Build with LLVM's C++ library (clang only)" OFF)

# The reader of "mk.dat" and its like.
if(OND_LIBCXX)
  pkg_check_modules(inih REQUIRED IMPORTED_TARGET inih)
  add_library(ond_inireader STATIC cmake/INIReader.cpp)
  target_link_libraries(ond_inireader PUBLIC PkgConfig::inih)
else()
  pkg_check_modules(INIReader REQUIRED IMPORTED_TARGET INIReader)
  add_library(ond_inireader INTERFACE)
  target_link_libraries(ond_inireader INTERFACE PkgConfig::INIReader)
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
