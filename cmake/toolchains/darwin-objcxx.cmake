# Behind the folders of the compiler and the sysroot. For C++ CMake leaves out this system's own folder by itself, where its C
# library has its headers.
set(CMAKE_INCLUDE_SYSTEM_FLAG_OBJCXX "-idirafter ")
