#include "protocol/messages.h"

#include <QtCore/QJsonArray>

#include <limits>

namespace Vantle::Protocol {

namespace {

/// Takes fields out of an object and remembers the first one that was not
/// what it has to be.
class FieldReader
{
public:
    explicit FieldReader(const QJsonObject &json) : m_json(json) {}

    QString string(const char *key)
    {
        const QJsonValue value = field(key);
        if (!value.isString())
            complain(key, "a string");
        return value.toString();
    }

    bool boolean(const char *key)
    {
        const QJsonValue value = field(key);
        if (!value.isBool())
            complain(key, "true or false");
        return value.toBool();
    }

    qint64 integer(const char *key, qint64 from, qint64 to)
    {
        const QJsonValue value = field(key);
        // Two defaults tell a number with a fraction from every whole one.
        const qint64 number = value.toInteger(0);
        if (!value.isDouble() || number != value.toInteger(1) || number < from || number > to)
            complain(key, "a whole number in its range");
        return number;
    }

    QJsonArray array(const char *key)
    {
        const QJsonValue value = field(key);
        if (!value.isArray())
            complain(key, "an array");
        return value.toArray();
    }

    QStringList strings(const char *key)
    {
        QStringList result;
        const QJsonArray values = array(key);
        for (const QJsonValue &value : values) {
            if (!value.isString())
                complain(key, "an array of strings");
            result.append(value.toString());
        }
        return result;
    }

    QJsonValue numberOrString(const char *key)
    {
        const QJsonValue value = field(key);
        if (!value.isDouble() && !value.isString())
            complain(key, "a number or a string");
        return value;
    }

    void complain(const char *key, const char *expected)
    {
        if (m_complaint.isEmpty())
            m_complaint = QStringLiteral("\"%1\" has to be %2").arg(QLatin1String(key), QLatin1String(expected));
    }

    void complain(const QString &complaint)
    {
        if (m_complaint.isEmpty())
            m_complaint = complaint;
    }

    /// The record if nothing was wrong; otherwise nothing, and the reason.
    template<typename Record>
    std::optional<Record> finish(const Record &record, QString *error) const
    {
        if (m_complaint.isEmpty())
            return record;
        if (error)
            *error = m_complaint;
        return std::nullopt;
    }

private:
    QJsonValue field(const char *key) const { return m_json.value(QLatin1String(key)); }

    const QJsonObject &m_json;
    QString m_complaint;
};

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
        {QStringLiteral("token"), token},
        {QStringLiteral("protocol"), protocol},
        {QStringLiteral("version"), version},
        {QStringLiteral("pid"), pid},
        {QStringLiteral("program"), program},
        {QStringLiteral("qtVersion"), qtVersion},
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
    return {
        {QStringLiteral("record"), record},
        {QStringLiteral("debugCompression"), debugCompression},
        {QStringLiteral("classesWithoutCoordinates"), QJsonArray::fromStringList(classesWithoutCoordinates)},
    };
}

std::optional<HelloResult> HelloResult::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    HelloResult result;
    result.record = reader.boolean("record");
    result.debugCompression = static_cast<int>(reader.integer("debugCompression", intMin, intMax));
    result.classesWithoutCoordinates = reader.strings("classesWithoutCoordinates");
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
