#include "support/warningguard.h"

#include <gtest/gtest.h>

#include <QtCore/QMutex>
#include <QtCore/QStringList>

namespace VantleTest {

namespace {

QMutex mutex;
QStringList expected;

void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtDebugMsg || type == QtInfoMsg) {
        fprintf(stderr, "%s\n", qPrintable(message));
        return;
    }
    const QMutexLocker lock(&mutex);
    for (qsizetype i = 0; i < expected.size(); ++i) {
        if (message.contains(expected.at(i))) {
            expected.removeAt(i);
            return;
        }
    }
    ADD_FAILURE() << "unexpected Qt message: " << qPrintable(message);
}

class Listener : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo &) override
    {
        const QMutexLocker lock(&mutex);
        for (const QString &fragment : std::as_const(expected))
            ADD_FAILURE() << "expected Qt warning did not come: " << qPrintable(fragment);
        expected.clear();
    }
};

} // namespace

void installWarningGuard()
{
    qInstallMessageHandler(handleMessage);
    testing::UnitTest::GetInstance()->listeners().Append(new Listener);
}

void expectWarning(const QString &fragment)
{
    const QMutexLocker lock(&mutex);
    expected.append(fragment);
}

} // namespace VantleTest
