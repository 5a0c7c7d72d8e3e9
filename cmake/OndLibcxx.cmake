# The preset libcxx: clang with the C++ library that macOS has. Qt 5 hands no type of the standard library across; what does
# is compiled from source. Qt 6 does, and Linux's takes those of the other C++ library.

option(OND_LIBCXX "Build with LLVM's C++ library (clang only)" OFF)
if(OND_LIBCXX AND NOT APPLE AND NOT OND_QT EQUAL 5)
  message(FATAL_ERROR "Qt 6 is built with the other C++ library here: -DOND_QT=5 (docs/qt.md)")
endif()

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
