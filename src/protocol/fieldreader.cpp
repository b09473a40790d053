#include "protocol/fieldreader.h"

namespace Vantle::Protocol {

QString FieldReader::string(const char *key)
{
    const QJsonValue value = field(key);
    if (!value.isString())
        complain(key, "a string");
    return value.toString();
}

bool FieldReader::boolean(const char *key)
{
    const QJsonValue value = field(key);
    if (!value.isBool())
        complain(key, "true or false");
    return value.toBool();
}

qint64 FieldReader::integer(const char *key, qint64 from, qint64 to)
{
    const QJsonValue value = field(key);
    // Two defaults tell a number with a fraction from every whole one.
    const qint64 number = value.toInteger(0);
    if (!value.isDouble() || number != value.toInteger(1) || number < from || number > to)
        complain(key, "a whole number in its range");
    return number;
}

double FieldReader::number(const char *key)
{
    const QJsonValue value = field(key);
    if (!value.isDouble())
        complain(key, "a number");
    return value.toDouble();
}

QJsonArray FieldReader::array(const char *key)
{
    const QJsonValue value = field(key);
    if (!value.isArray())
        complain(key, "an array");
    return value.toArray();
}

QJsonObject FieldReader::object(const char *key)
{
    const QJsonValue value = field(key);
    if (!value.isObject())
        complain(key, "an object");
    return value.toObject();
}

QStringList FieldReader::strings(const char *key)
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

QJsonValue FieldReader::numberOrString(const char *key)
{
    const QJsonValue value = field(key);
    if (!value.isDouble() && !value.isString())
        complain(key, "a number or a string");
    return value;
}

void FieldReader::complain(const char *key, const char *expected)
{
    complain(QStringLiteral("\"%1\" has to be %2").arg(QLatin1String(key), QLatin1String(expected)));
}

void FieldReader::complain(const QString &complaint)
{
    if (m_complaint.isEmpty())
        m_complaint = complaint;
}

} // namespace Vantle::Protocol
