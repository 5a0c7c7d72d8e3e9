namespace {

// A library with a variable per thread is never unloaded; CMakeLists.txt says why this one must not be.
[[gnu::used]] thread_local bool g_keepsLibraryLoaded = true;

} // namespace
