#include "wrappers/qt/application.h"

#include "hook/delegates.h"
#include "hook/inspector.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtGui/QWindow>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

EventData statementFor(const char *objectName)
{
    return {typeByNameFn(), QString::fromLatin1(objectName), {Inspector::self()->createString("text")}};
}

} // namespace

TEST(Application, IsFoundWhileItLives)
{
    EXPECT_EQ(Application::self(), nullptr);
    {
        Application application;
        EXPECT_EQ(Application::self(), &application);
    }
    EXPECT_EQ(Application::self(), nullptr);
}

TEST(Application, CanBeMadeAgain)
{
    for (int round = 0; round < 2; ++round) {
        Application application;
        EXPECT_EQ(Application::self(), &application);
        QWindow window;
        EXPECT_EQ(wrapAndRegisterQObject(&window)->scriptName(), QStringLiteral("QWindow"));
    }
}

TEST(Application, KeepsTheConfiguration)
{
    WrapperConfig config;
    config.compressionDebugLevel = 2;
    config.classesWithoutCoordinates = {"Button", "QQuickSlider"};
    const Application application(config);
    config.classesWithoutCoordinates.clear();
    ASSERT_NE(application.wrapperConfig(), nullptr);
    EXPECT_EQ(application.wrapperConfig()->compressionDebugLevel, 2U);
    EXPECT_EQ(application.wrapperConfig()->classesWithoutCoordinates, (QList<QByteArray>{"Button", "QQuickSlider"}));
}

TEST(Application, IsSilentAndRecordsEverythingByDefault)
{
    const Application application;
    EXPECT_EQ(application.wrapperConfig()->compressionDebugLevel, 0U);
    EXPECT_TRUE(application.wrapperConfig()->classesWithoutCoordinates.isEmpty());
}

TEST(Application, KnowsWindowsFromTheStart)
{
    const Application application;
    const Class *const window = Inspector::self()->classByName(QStringLiteral("QWindow"));
    ASSERT_NE(window, nullptr);
    EXPECT_NE(DelegateFactory::self()->geometryDelegate(window), nullptr);
    EXPECT_NE(DelegateFactory::self()->interactionDelegate(window), nullptr);
}

TEST(Application, HandsStatementsToTheHandler)
{
    Application application;
    QStringList received;
    application.setStatementHandler([&](const EventData &statement) {
        EXPECT_EQ(statement.method(), typeByNameFn());
        EXPECT_EQ(statement.arguments().size(), 1U);
        received.append(statement.objectName());
    });
    application.recordEvent(statementFor("first"));
    static_cast<StatementSink &>(application).recordEvent(statementFor("second"));
    EXPECT_EQ(received, (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

TEST(Application, DropsStatementsThatNobodyHandles)
{
    Application application;
    application.recordEvent(statementFor("early"));
    int received = 0;
    application.setStatementHandler([&](const EventData &) { ++received; });
    application.setStatementHandler({});
    application.recordEvent(statementFor("late"));
    EXPECT_EQ(received, 0);
}

TEST(Application, HandlerMayReplaceItself)
{
    Application application;
    QStringList received;
    const QString first = QStringLiteral("by the first");
    application.setStatementHandler([&application, &received, first](const EventData &) {
        application.setStatementHandler(
            [&received](const EventData &) { received.append(QStringLiteral("by the second")); });
        received.append(first);
    });
    application.recordEvent(statementFor("one"));
    application.recordEvent(statementFor("two"));
    EXPECT_EQ(received, (QStringList{first, QStringLiteral("by the second")}));
}

TEST(Application, HandlerMayRecordFurtherStatements)
{
    Application application;
    QStringList received;
    application.setStatementHandler([&](const EventData &statement) {
        received.append(statement.objectName());
        if (received.size() == 1)
            application.recordEvent(statementFor("inner"));
    });
    application.recordEvent(statementFor("outer"));
    EXPECT_EQ(received, (QStringList{QStringLiteral("outer"), QStringLiteral("inner")}));
}
