// Runs each test in a process of its own: what the loader of extensions finds
// out, it finds out once in a process. With a filter this process itself runs
// what the filter names.

#include "support/warningguard.h"

#include <gtest/gtest.h>

#include <QtCore/QProcess>
#include <QtGui/QGuiApplication>

#include <cstdio>

namespace {

int runEachTest(const QString &program)
{
    int failures = 0;
    const testing::UnitTest &tests = *testing::UnitTest::GetInstance();
    for (int i = 0; i < tests.total_test_suite_count(); ++i) {
        const testing::TestSuite &suite = *tests.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j) {
            const QString name = QStringLiteral("%1.%2").arg(QString::fromUtf8(suite.name()),
                                                             QString::fromUtf8(suite.GetTestInfo(j)->name()));
            QProcess process;
            process.setProcessChannelMode(QProcess::MergedChannels);
            process.start(program, {QStringLiteral("--gtest_filter=") + name});
            const bool isFinished = process.waitForFinished(60000);
            const QByteArray output = process.readAll();
            const bool isPassed = isFinished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0
                && output.contains("[  PASSED  ] 1 test.");
            std::printf("%s %s\n", isPassed ? "passed" : "FAILED", qPrintable(name));
            if (!isPassed) {
                std::printf("%s\n", output.constData());
                ++failures;
            }
        }
    }
    return failures ? 1 : 0;
}

} // namespace

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    QGuiApplication application(argc, argv);
    if (testing::GTEST_FLAG(filter) == "*" && !testing::GTEST_FLAG(list_tests))
        return runEachTest(QCoreApplication::applicationFilePath());
    VantleTest::installWarningGuard();
    return RUN_ALL_TESTS();
}
