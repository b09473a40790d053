#include "agent/recording/statementmessages.h"

#include "hook/eventdata.h"
#include "hook/inspector.h"
#include "hook/method.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QObject>

#include <limits>

using namespace Vantle;
using namespace Vantle::Agent;

namespace {

const QString object = QStringLiteral("Window Button#save");

SharedPtr<Object> integer(int value) { return Inspector::self()->createInteger(value); }
SharedPtr<Object> text(const char *value) { return Inspector::self()->createString(value); }

/// The message after its way over the wire; it must be accepted there.
Protocol::Statement sent(const EventData &statement)
{
    const QByteArray wire = QJsonDocument(toMessage(statement).toJson()).toJson();
    QString error;
    const auto received = Protocol::Statement::fromJson(QJsonDocument::fromJson(wire).object(), &error);
    EXPECT_TRUE(received) << qPrintable(error);
    return received.value_or(Protocol::Statement());
}

/// What becomes of one argument that is a \p value.
Protocol::StatementArgument sentArgument(const SharedPtr<Object> &value)
{
    const Protocol::Statement message = sent(EventData(QtWrapper::typeByNameFn(), object, {value}));
    EXPECT_EQ(message.arguments.size(), 1);
    return message.arguments.value(0);
}

} // namespace

TEST(StatementMessages, CarryFunctionObjectAndArguments)
{
    EventData statement(QtWrapper::mouseClickOCBMByNameFn(), object,
                        {integer(12), integer(-3), integer(0x04000000), integer(1)});
    statement.time = QTime(9, 5, 7, 42);
    const Protocol::Statement message = sent(statement);
    EXPECT_EQ(message.function, QStringLiteral("mouseClick"));
    EXPECT_EQ(message.object, object);
    EXPECT_EQ(message.time, QStringLiteral("09:05:07.042"));

    ASSERT_EQ(message.arguments.size(), 4);
    const char *const expected[][2] = {
        {"x", "int"}, {"y", "int"}, {"modifiers", "Qt::KeyboardModifiers"}, {"button", "Qt::MouseButton"}};
    const int values[] = {12, -3, 0x04000000, 1};
    for (qsizetype i = 0; i < 4; ++i) {
        EXPECT_EQ(message.arguments.at(i).name, QString::fromLatin1(expected[i][0]));
        EXPECT_EQ(message.arguments.at(i).type, QString::fromLatin1(expected[i][1]));
        EXPECT_EQ(message.arguments.at(i).value, QJsonValue(values[i]));
    }
}

TEST(StatementMessages, CarryTextsAsTheyAre)
{
    for (const char *value : {"", "Grüße, 世界 🙂", "line\nbreak\ttab \"quote\" \\", "<Ctrl+S>"}) {
        const Protocol::StatementArgument argument = sentArgument(text(value));
        EXPECT_EQ(argument.name, QStringLiteral("text"));
        EXPECT_EQ(argument.type, QStringLiteral("QString"));
        EXPECT_EQ(argument.value, QJsonValue(QString::fromUtf8(value)));
    }
}

TEST(StatementMessages, CarryNumbersOfEverySize)
{
    for (int value : {0, 1, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        EXPECT_EQ(sentArgument(integer(value)).value, QJsonValue(value));
    EXPECT_EQ(sentArgument(Inspector::self()->createDouble(0.1)).value, QJsonValue(0.1));
}

TEST(StatementMessages, CarryTruthAsNumber)
{
    EXPECT_EQ(sentArgument(Inspector::self()->createBoolean(true)).value, QJsonValue(1));
    EXPECT_EQ(sentArgument(Inspector::self()->createBoolean(false)).value, QJsonValue(0));
}

TEST(StatementMessages, CarryWhatHasNoValueAsEmptyText)
{
    QObject thing;
    for (const SharedPtr<Object> &value : {SharedPtr<Object>(), QtWrapper::wrapAndRegisterQObject(nullptr),
                                           QtWrapper::wrapAndRegisterQObject(&thing), Inspector::self()->voidResult()})
        EXPECT_EQ(sentArgument(value).value, QJsonValue(QString()));
}

TEST(StatementMessages, WithoutArgumentsCarryNone)
{
    EXPECT_TRUE(sent(EventData(QtWrapper::closeWindowByNameFn(), object, {})).arguments.isEmpty());
}

TEST(StatementMessages, ArgumentsBeyondTheSignatureGoByTheirOwnClass)
{
    const Protocol::Statement message = sent(EventData(QtWrapper::closeWindowByNameFn(), object, {integer(7)}));
    ASSERT_EQ(message.arguments.size(), 1);
    EXPECT_EQ(message.arguments.at(0).name, QString());
    EXPECT_EQ(message.arguments.at(0).type, QStringLiteral("int"));
    EXPECT_EQ(message.arguments.at(0).value, QJsonValue(7));
}

TEST(StatementMessages, ArgumentsOfUnknownTypeGoByTheirOwnClass)
{
    const QList<Argument> signature{Argument(QStringLiteral("objectName"), nullptr, Argument::ByValue, 0),
                                    Argument(QStringLiteral("thing"), nullptr, Argument::ByValue, 0)};
    const Method method(Argument(nullptr, Argument::ByValue, 0), QStringLiteral("poke"), Signature(signature));
    const Protocol::Statement known = sent(EventData(&method, object, {integer(7)}));
    EXPECT_EQ(known.arguments.value(0).name, QStringLiteral("thing"));
    EXPECT_EQ(known.arguments.value(0).type, QStringLiteral("int"));
    EXPECT_EQ(sent(EventData(&method, object, {SharedPtr<Object>()})).arguments.value(0).type, QString());
}

TEST(StatementMessages, WithoutTimeOrObjectAreStillAccepted)
{
    const Protocol::Statement message = sent(EventData(QtWrapper::closeWindowByNameFn(), QString(), {}));
    EXPECT_EQ(message.object, QString());
    EXPECT_EQ(message.time, QString());
}
