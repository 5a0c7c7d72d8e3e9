#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <dlfcn.h>

TEST(Unload, LeavesApplicationsAlone)
{
    int argc = 1;
    char name[] = "test", *argv[] = {name, nullptr};
    void *library = ::dlopen(OND_TEST_LIBRARY, RTLD_NOW);
    ASSERT_NE(library, nullptr) << ::dlerror();
    for (int i = 0; i < 2; ++i) {
        const QCoreApplication application(argc, argv);
        EXPECT_EQ(i == 0 ? ::dlclose(library) : 0, 0);
        QEvent event(QEvent::MouseMove);
        QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
    }
}
