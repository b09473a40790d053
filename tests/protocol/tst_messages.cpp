#include "protocol/messages.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <limits>

using namespace Vantle::Protocol;

namespace {

QJsonObject parsed(const char *text)
{
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray(text));
    EXPECT_TRUE(document.isObject()) << text;
    return document.object();
}

Hello someHello()
{
    Hello hello;
    hello.token = QStringLiteral("abc");
    hello.version = QStringLiteral("0.1.0");
    hello.pid = 4711;
    hello.program = QStringLiteral("/usr/bin/käse");
    hello.qtVersion = QStringLiteral("6.4.2");
    hello.platform = QStringLiteral("xcb");
    return hello;
}

TEST(Hello, survivesTheWayThroughJson)
{
    const auto hello = Hello::fromJson(someHello().toJson());
    ASSERT_TRUE(hello);
    EXPECT_EQ(hello->token, QStringLiteral("abc"));
    EXPECT_EQ(hello->protocol, 1);
    EXPECT_EQ(hello->version, QStringLiteral("0.1.0"));
    EXPECT_EQ(hello->pid, 4711);
    EXPECT_EQ(hello->program, QStringLiteral("/usr/bin/käse"));
    EXPECT_EQ(hello->qtVersion, QStringLiteral("6.4.2"));
    EXPECT_EQ(hello->platform, QStringLiteral("xcb"));
}

TEST(Hello, ignoresFieldsThatItDoesNotKnow)
{
    QJsonObject json = someHello().toJson();
    json.insert(QStringLiteral("future"), QJsonArray{1, 2});
    EXPECT_TRUE(Hello::fromJson(json));
}

TEST(Hello, namesTheFieldThatIsMissing)
{
    const QStringList keys = someHello().toJson().keys();
    EXPECT_EQ(keys.size(), 7);
    for (const QString &key : keys) {
        QJsonObject json = someHello().toJson();
        json.remove(key);
        QString error;
        EXPECT_FALSE(Hello::fromJson(json, &error));
        EXPECT_TRUE(error.contains(key)) << qPrintable(error);
    }
}

TEST(Hello, refusesNumbersThatAreNoWholeNumbersInRange)
{
    const QJsonValue wrong[] = {1.5, -1, 1e300, QStringLiteral("1"), true, QJsonValue::Null};
    for (const QJsonValue &value : wrong) {
        QJsonObject json = someHello().toJson();
        json.insert(QStringLiteral("protocol"), value);
        EXPECT_FALSE(Hello::fromJson(json)) << value.toDouble();
    }
}

TEST(HelloResult, survivesTheWayThroughJson)
{
    const HelloResult sent{true,
                           2,
                           {QStringLiteral("QQuickButton"), QStringLiteral("Tile")},
                           {QStringLiteral("/a"), QStringLiteral("/b c")},
                           QStringLiteral("names.json"),
                           false,
                           true,
                           true};
    const auto result = HelloResult::fromJson(sent.toJson());
    ASSERT_TRUE(result);
    EXPECT_TRUE(result->record);
    EXPECT_EQ(result->debugCompression, 2);
    EXPECT_EQ(result->classesWithoutCoordinates, sent.classesWithoutCoordinates);
    EXPECT_EQ(result->extensionDirectories, sent.extensionDirectories);
    EXPECT_EQ(result->namesFile, sent.namesFile);
    EXPECT_FALSE(result->standardExtension);
    EXPECT_TRUE(result->digests);
    EXPECT_TRUE(result->strict);
}

TEST(HelloResult, mayComeFromAToolThatKnowsNothingOfExtensionsAndNames)
{
    const auto result = HelloResult::fromJson(
        parsed(R"({"record": false, "debugCompression": 0, "classesWithoutCoordinates": []})"));
    ASSERT_TRUE(result);
    EXPECT_TRUE(result->extensionDirectories.isEmpty());
    EXPECT_TRUE(result->namesFile.isEmpty());
    EXPECT_FALSE(result->digests);
    EXPECT_FALSE(result->strict);
}

TEST(HelloResult, refusesExtensionsAndNamesOfAWrongType)
{
    for (const char *wrong : {R"("extensionDirectories": "/a")", R"("extensionDirectories": [1])", R"("namesFile": 1)",
                              R"("namesFile": null)"}) {
        const QByteArray text = QByteArray(
                                    R"({"record": false, "debugCompression": 0, "classesWithoutCoordinates": [],)")
            + wrong + '}';
        EXPECT_FALSE(HelloResult::fromJson(parsed(text.constData()))) << wrong;
    }
}

TEST(HelloResult, refusesAListThatHoldsSomethingElseThanStrings)
{
    QString error;
    const QJsonObject json = parsed(
        R"({"record": true, "debugCompression": 0, "classesWithoutCoordinates": ["A", 1]})");
    EXPECT_FALSE(HelloResult::fromJson(json, &error));
    EXPECT_EQ(error, QStringLiteral("\"classesWithoutCoordinates\" has to be an array of strings"));
}

TEST(Statement, survivesTheWayThroughJson)
{
    const Statement sent{QStringLiteral("mouseClick"),
                         QStringLiteral("Window Button[text=\"a\\\"b\"]"),
                         {{QStringLiteral("x"), QStringLiteral("int"), -12},
                          {QStringLiteral("text"), QStringLiteral("QString"), QStringLiteral("ä\n\"")}},
                         QStringLiteral("12:34:56.789")};
    const auto statement = Statement::fromJson(sent.toJson());
    ASSERT_TRUE(statement);
    EXPECT_EQ(statement->function, sent.function);
    EXPECT_EQ(statement->object, sent.object);
    EXPECT_EQ(statement->time, sent.time);
    ASSERT_EQ(statement->arguments.size(), 2);
    EXPECT_EQ(statement->arguments.at(0).name, QStringLiteral("x"));
    EXPECT_EQ(statement->arguments.at(0).type, QStringLiteral("int"));
    EXPECT_EQ(statement->arguments.at(0).value, QJsonValue(-12));
    EXPECT_EQ(statement->arguments.at(1).value, QJsonValue(QStringLiteral("ä\n\"")));
}

TEST(Statement, hasAPlaceForNoArguments)
{
    const Statement sent{QStringLiteral("closeWindow"), QStringLiteral("Window"), {}, QStringLiteral("00:00:00.000")};
    const auto statement = Statement::fromJson(sent.toJson());
    ASSERT_TRUE(statement);
    EXPECT_TRUE(statement->arguments.isEmpty());
}

TEST(Statement, saysWhichArgumentIsWrong)
{
    const char *wrong[] = {R"({"name": "y", "type": "int", "value": null})",
                           R"({"name": "y", "type": "int", "value": [1]})", R"({"name": "y", "type": "int"})",
                           R"({"name": 1, "type": "int", "value": 1})", R"("y")"};
    for (const char *argument : wrong) {
        const QByteArray text = QByteArray(R"({"function": "f", "object": "", "time": "", "arguments": [)")
            + R"({"name": "x", "type": "int", "value": 1}, )" + argument + "]}";
        QString error;
        EXPECT_FALSE(Statement::fromJson(parsed(text.constData()), &error));
        EXPECT_TRUE(error.startsWith(QStringLiteral("argument 2: "))) << qPrintable(error);
    }
}

TEST(LogMessage, survivesTheWayThroughJsonAtBothLevels)
{
    for (const LogMessage::Level level : {LogMessage::Info, LogMessage::Warning}) {
        const auto log = LogMessage::fromJson(LogMessage{level, QStringLiteral("text")}.toJson());
        ASSERT_TRUE(log);
        EXPECT_EQ(log->level, level);
        EXPECT_EQ(log->message, QStringLiteral("text"));
    }
}

TEST(LogMessage, refusesALevelThatItDoesNotKnow)
{
    QString error;
    EXPECT_FALSE(LogMessage::fromJson(parsed(R"({"level": "fatal", "message": "x"})"), &error));
    EXPECT_EQ(error, QStringLiteral("\"level\" has to be \"info\" or \"warning\""));
}

TEST(Messages, callersMayLeaveTheReasonOut)
{
    EXPECT_FALSE(Hello::fromJson({}, nullptr));
    EXPECT_FALSE(HelloResult::fromJson({}, nullptr));
    EXPECT_FALSE(Statement::fromJson({}, nullptr));
    EXPECT_FALSE(LogMessage::fromJson({}, nullptr));
}

TEST(Comment, survivesTheWayThroughJson)
{
    const auto comment = Comment::fromJson(
        Comment{QStringLiteral("a press\nof nothing"), QStringLiteral("12:00:00.000")}.toJson());
    ASSERT_TRUE(comment);
    EXPECT_EQ(comment->text, QStringLiteral("a press\nof nothing"));
    EXPECT_EQ(comment->time, QStringLiteral("12:00:00.000"));
    QString error;
    EXPECT_FALSE(Comment::fromJson(parsed(R"({"time": ""})"), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("text"))) << qPrintable(error);
}

TEST(Pending, holdsStatementsInTheirOrder)
{
    Statement first;
    first.function = QStringLiteral("mouseClick");
    first.arguments.append({QStringLiteral("x"), QStringLiteral("int"), 3});
    Statement second;
    second.function = QStringLiteral("type");
    const auto pending = Pending::fromJson(Pending{{first, second}}.toJson());
    ASSERT_TRUE(pending);
    ASSERT_EQ(pending->statements.size(), 2);
    EXPECT_EQ(pending->statements.at(0).arguments.size(), 1);
    EXPECT_EQ(pending->statements.at(1).function, QStringLiteral("type"));
}

TEST(Pending, mayBeNothing)
{
    const auto pending = Pending::fromJson(parsed(R"({"statements": []})"));
    ASSERT_TRUE(pending);
    EXPECT_TRUE(pending->statements.isEmpty());
}

TEST(Pending, namesTheStatementThatIsWrong)
{
    QString error;
    EXPECT_FALSE(Pending::fromJson(
        parsed(R"({"statements": [{"function": "f", "object": "", "arguments": [], "time": ""}, {}]})"), &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("statement 2: "))) << qPrintable(error);
    EXPECT_FALSE(Pending::fromJson(parsed("{}"), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("statements"))) << qPrintable(error);
}

TEST(Digest, survivesTheWayThroughJson)
{
    const auto digest = Digest::fromJson(Digest{QStringLiteral("a1"), 7}.toJson());
    ASSERT_TRUE(digest);
    EXPECT_EQ(digest->value, QStringLiteral("a1"));
    EXPECT_EQ(digest->objects, 7);
    EXPECT_FALSE(Digest::fromJson(parsed(R"({"value": "a1", "objects": -1})")));
}

} // namespace
