#include "support/defaultlogger.h"
#include "support/warningguard.h"

#include <gtest/gtest.h>

#include <QtGui/QGuiApplication>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    QGuiApplication application(argc, argv);
    VantleTest::installDefaultLogger();
    VantleTest::installWarningGuard();
    return RUN_ALL_TESTS();
}
