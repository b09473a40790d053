#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventrecorder.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

void expectFallbacks()
{
    const SharedPtr<QtEventRecorder> recorder = QtEventRecorder::instance();
    EXPECT_EQ(recorder->doubleClickTime(), 400u);
    EXPECT_EQ(recorder->dragDistance(), 4);
    recorder->flushEventQueue();
}

} // namespace

TEST(EventRecorderWithoutGui, FallsBackWithoutAnyApplicationObject)
{
    ASSERT_EQ(QCoreApplication::instance(), nullptr);
    const Application application;
    expectFallbacks();
}

TEST(EventRecorderWithoutGui, FallsBackWithAPlainApplicationObject)
{
    int argc = 1;
    char name[] = "test";
    char *argv[] = {name, nullptr};
    const QCoreApplication core(argc, argv);
    const Application application;
    expectFallbacks();
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
