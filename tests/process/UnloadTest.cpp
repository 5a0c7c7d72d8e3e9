#include <dlfcn.h>
#include <gtest/gtest.h>

TEST(Unload, LeavesTheLibraryWhereApplicationsMayCallIt)
{
    void *library = ::dlopen(OND_TEST_LIBRARY, RTLD_NOW);
    ASSERT_NE(library, nullptr) << ::dlerror();
    EXPECT_EQ(::dlclose(library), 0);
    EXPECT_NE(::dlopen(OND_TEST_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
}
