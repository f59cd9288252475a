#include <QGuiApplication>
#include <QStandardPaths>

#include <gtest/gtest.h>

#ifdef __SANITIZE_ADDRESS__
// Graphics drivers free some memory only by being unloaded, and a report from an unloaded library
// names no function; so libraries stay.
extern "C" int dlclose(void*)
{
    return 0;
}
#endif

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    QGuiApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    return RUN_ALL_TESTS();
}
