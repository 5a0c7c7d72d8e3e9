# Qt 6 asks for OpenGL by a framework that Apple's SDK has and the folder in its place has not; nothing here draws with it.
add_library(WrapOpenGL::WrapOpenGL INTERFACE IMPORTED)
