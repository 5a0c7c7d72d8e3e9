# macOS from Linux, to see that everything compiles and links there; ./dev check-darwin says how. The compiler is clang, as
# on a Mac, with what tools/darwin/sysroot has made in place of Apple's SDK: nothing that is built here runs.
#   OND_DARWIN_ARCH      arm64 or x86_64
#   OND_DARWIN_SYSROOT   the folder that tools/darwin/sysroot made for it

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR "${OND_DARWIN_ARCH}")
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES OND_DARWIN_ARCH OND_DARWIN_SYSROOT)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_OSX_SYSROOT "${OND_DARWIN_SYSROOT}" CACHE PATH "")
set(ENV{PATH} "${OND_DARWIN_SYSROOT}/usr/bin:$ENV{PATH}") # CMake asks sw_vers

find_program(OND_CLANG clang++ REQUIRED)
foreach(language IN ITEMS CXX OBJCXX)
  set(CMAKE_${language}_COMPILER "${OND_CLANG}")
  set(CMAKE_${language}_COMPILER_TARGET "${OND_DARWIN_ARCH}-apple-macos${CMAKE_OSX_DEPLOYMENT_TARGET}")
  set(CMAKE_${language}_FLAGS_INIT "-stdlib=libc++")
endforeach()
set(CMAKE_USER_MAKE_RULES_OVERRIDE_OBJCXX "${CMAKE_CURRENT_LIST_DIR}/darwin-objcxx.cmake")
string(APPEND CMAKE_OBJCXX_FLAGS_INIT " -Wunguarded-availability -Wnullable-to-nonnull-conversion")
set(CMAKE_INSTALL_NAME_TOOL /bin/false) # nothing is installed; everything is linked with the paths that it is to have
set(CMAKE_CROSSCOMPILING_EMULATOR /bin/true) # what the tools are to write about themselves stays empty
foreach(kind IN ITEMS EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "--ld-path=${OND_DARWIN_SYSROOT}/usr/bin/ld -mlinker-version=711")
endforeach()

# Qt's and the others' own files are those of this system.
set(CMAKE_LIBRARY_ARCHITECTURE "${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu")
set(CMAKE_PREFIX_PATH "/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/cmake" /usr)
set(CMAKE_FIND_LIBRARY_SUFFIXES .so .a)
set(CMAKE_PROJECT_INCLUDE "${CMAKE_CURRENT_LIST_DIR}/darwin-qt.cmake")
