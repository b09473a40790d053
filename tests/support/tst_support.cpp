#include "support/printing.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

#include <gtest/gtest.h>

#include <QtCore/QStringList>

#include <string>

using namespace Vantle;

namespace {

/// Each leaves the library without a logger, as tests with one of their own do.
class TestsWithoutALogger : public testing::TestWithParam<int>
{
protected:
    ~TestsWithoutALogger() override { QtQuickCommon::setLogger(nullptr); }
};

} // namespace

TEST_P(TestsWithoutALogger, SeeWarningsOnStandardError)
{
    testing::internal::CaptureStderr();
    QtQuickCommon::logInfo("progress");
    QtQuickCommon::logWarning("problem %d", GetParam());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "problem " + std::to_string(GetParam()) + '\n');
}

INSTANTIATE_TEST_SUITE_P(OneAfterTheOther, TestsWithoutALogger, testing::Values(1, 2));

TEST(Printing, ShowsTextsAsTheyRead)
{
    EXPECT_EQ(testing::PrintToString(QStringLiteral("Grüße")), "\"Grüße\"");
    EXPECT_EQ(testing::PrintToString(QString()), "\"\"");
    EXPECT_EQ(testing::PrintToString(QStringList{QStringLiteral("a"), QStringLiteral("b c")}), "{ \"a\", \"b c\" }");
}
