#include "support/defaultlogger.h"
#include "support/warningguard.h"

#include <gtest/gtest.h>

#include <QtGui/QGuiApplication>

#ifdef __SANITIZE_ADDRESS__
// A report of leaks tells by a module's name whose they are, also when that
// module has gone: graphics drivers are unloaded before the program ends.
extern "C" Q_DECL_EXPORT int dlclose(void * /*handle*/) noexcept
{
    return 0;
}
#endif

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    QGuiApplication application(argc, argv);
    VantleTest::installDefaultLogger();
    VantleTest::installWarningGuard();
    return RUN_ALL_TESTS();
}
