#include "protocol/messages.h"

#include "protocol/fieldreader.h"

#include <QtCore/QJsonArray>

#include <limits>

namespace Vantle::Protocol {

namespace {

constexpr qint64 intMin = std::numeric_limits<int>::min();
constexpr qint64 intMax = std::numeric_limits<int>::max();

std::optional<StatementArgument> argumentFrom(const QJsonValue &json, QString *error)
{
    const QJsonObject object = json.toObject();
    FieldReader reader(object);
    const StatementArgument argument{reader.string("name"), reader.string("type"), reader.numberOrString("value")};
    return reader.finish(argument, error);
}

} // namespace

QJsonObject Hello::toJson() const
{
    return {
        {QStringLiteral("token"), token},       {QStringLiteral("protocol"), protocol},
        {QStringLiteral("version"), version},   {QStringLiteral("pid"), pid},
        {QStringLiteral("program"), program},   {QStringLiteral("qtVersion"), qtVersion},
        {QStringLiteral("platform"), platform},
    };
}

std::optional<Hello> Hello::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    Hello hello;
    hello.token = reader.string("token");
    hello.protocol = static_cast<int>(reader.integer("protocol", 0, intMax));
    hello.version = reader.string("version");
    hello.pid = reader.integer("pid", 0, std::numeric_limits<qint64>::max());
    hello.program = reader.string("program");
    hello.qtVersion = reader.string("qtVersion");
    hello.platform = reader.string("platform");
    return reader.finish(hello, error);
}

QJsonObject HelloResult::toJson() const
{
    QJsonObject json{
        {QStringLiteral("record"), record},
        {QStringLiteral("debugCompression"), debugCompression},
        {QStringLiteral("classesWithoutCoordinates"), QJsonArray::fromStringList(classesWithoutCoordinates)},
    };
    if (!extensionDirectories.isEmpty())
        json.insert(QStringLiteral("extensionDirectories"), QJsonArray::fromStringList(extensionDirectories));
    if (!namesFile.isEmpty())
        json.insert(QStringLiteral("namesFile"), namesFile);
    if (!standardExtension)
        json.insert(QStringLiteral("standardExtension"), false);
    if (digests)
        json.insert(QStringLiteral("digests"), true);
    if (strict)
        json.insert(QStringLiteral("strict"), true);
    return json;
}

std::optional<HelloResult> HelloResult::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    HelloResult result;
    result.record = reader.boolean("record");
    result.debugCompression = static_cast<int>(reader.integer("debugCompression", intMin, intMax));
    result.classesWithoutCoordinates = reader.strings("classesWithoutCoordinates");
    if (reader.has("extensionDirectories"))
        result.extensionDirectories = reader.strings("extensionDirectories");
    if (reader.has("namesFile"))
        result.namesFile = reader.string("namesFile");
    result.standardExtension = reader.boolean("standardExtension", true);
    result.digests = reader.boolean("digests", false);
    result.strict = reader.boolean("strict", false);
    return reader.finish(result, error);
}

QJsonObject Statement::toJson() const
{
    QJsonArray list;
    for (const StatementArgument &argument : arguments) {
        list.append(QJsonObject{{QStringLiteral("name"), argument.name},
                                {QStringLiteral("type"), argument.type},
                                {QStringLiteral("value"), argument.value}});
    }
    return {
        {QStringLiteral("function"), function},
        {QStringLiteral("object"), object},
        {QStringLiteral("arguments"), list},
        {QStringLiteral("time"), time},
    };
}

std::optional<Statement> Statement::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    Statement statement;
    statement.function = reader.string("function");
    statement.object = reader.string("object");
    statement.time = reader.string("time");
    const QJsonArray list = reader.array("arguments");
    for (qsizetype i = 0; i < list.size(); ++i) {
        QString reason;
        if (const auto argument = argumentFrom(list.at(i), &reason))
            statement.arguments.append(*argument);
        else
            reader.complain(QStringLiteral("argument %1: %2").arg(i + 1).arg(reason));
    }
    return reader.finish(statement, error);
}

QJsonObject Comment::toJson() const
{
    return {{QStringLiteral("text"), text}, {QStringLiteral("time"), time}};
}

std::optional<Comment> Comment::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    const Comment comment{reader.string("text"), reader.string("time")};
    return reader.finish(comment, error);
}

QJsonObject Pending::toJson() const
{
    QJsonArray list;
    for (const Statement &statement : statements)
        list.append(statement.toJson());
    return {{QStringLiteral("statements"), list}};
}

std::optional<Pending> Pending::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    Pending pending;
    const QJsonArray list = reader.array("statements");
    for (qsizetype i = 0; i < list.size(); ++i) {
        QString reason;
        if (const auto statement = Statement::fromJson(list.at(i).toObject(), &reason))
            pending.statements.append(*statement);
        else
            reader.complain(QStringLiteral("statement %1: %2").arg(i + 1).arg(reason));
    }
    return reader.finish(pending, error);
}

QJsonObject Digest::toJson() const
{
    return {{QStringLiteral("value"), value}, {QStringLiteral("objects"), objects}};
}

std::optional<Digest> Digest::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    const Digest digest{reader.string("value"), static_cast<int>(reader.integer("objects", 0, intMax))};
    return reader.finish(digest, error);
}

QJsonObject LogMessage::toJson() const
{
    return {
        {QStringLiteral("level"), level == Warning ? QStringLiteral("warning") : QStringLiteral("info")},
        {QStringLiteral("message"), message},
    };
}

std::optional<LogMessage> LogMessage::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    LogMessage log;
    const QString level = reader.string("level");
    if (level == QLatin1String("warning"))
        log.level = Warning;
    else if (level != QLatin1String("info"))
        reader.complain("level", "\"info\" or \"warning\"");
    log.message = reader.string("message");
    return reader.finish(log, error);
}

} // namespace Vantle::Protocol
