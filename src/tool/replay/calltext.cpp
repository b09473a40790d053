#include "tool/replay/calltext.h"

#include "protocol/messages.h"
#include "tool/enumerators.h"
#include "tool/statementtext.h"
#include "tool/stringliteral.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <algorithm>

namespace Vantle::Tool::Replay {

namespace {

const QString objectKey = QStringLiteral("object");
const QString nameKey = QStringLiteral("name");
const QString argumentsKey = QStringLiteral("arguments");

bool isHandle(const QJsonValue &value)
{
    return value.toObject().contains(objectKey);
}

QString objectText(const QJsonObject &holder, const std::function<QString(int)> &nameOf)
{
    const QString name = holder.contains(nameKey) ? holder.value(nameKey).toString()
                                                  : nameOf(holder.value(objectKey).toInt());
    return stringLiteral(name);
}

QString valueText(const QJsonValue &value, const QString &type, const std::function<QString(int)> &nameOf)
{
    switch (value.type()) {
    case QJsonValue::Null:
    case QJsonValue::Undefined: return QStringLiteral("null");
    case QJsonValue::Bool: return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QJsonValue::Double:
    case QJsonValue::String: return argumentText({QString(), type, value});
    case QJsonValue::Array: return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
    case QJsonValue::Object: break;
    }
    const QJsonObject object = value.toObject();
    if (isHandle(object))
        return objectText(object, nameOf);
    if (object.contains(QLatin1String("text")))
        return stringLiteral(object.value(QLatin1String("text")).toString());
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

/// Whether a number can be meant as an enumerator at all: two coordinates alone
/// would pass for modifiers and a button otherwise.
bool isEnumerator(qint64 number, const QString &type)
{
    const auto isOneOf = [number](const Enumerators::Named &named) { return named.value == number; };
    if (type == QLatin1String("Qt::MouseButton"))
        return std::any_of(Enumerators::buttons.begin(), Enumerators::buttons.end(), isOneOf);
    if (type != QLatin1String("Qt::KeyboardModifiers"))
        return true;
    for (const Enumerators::Named &named : Enumerators::modifiers)
        number &= ~static_cast<qint64>(named.value);
    return number == 0;
}

bool fits(const QJsonValue &value, const QString &type)
{
    const bool isText = type == QLatin1String("QString");
    if (value.isDouble())
        return !isText && isEnumerator(value.toInteger(-1), type);
    return !value.isString() || isText;
}

QString normalised(QString text)
{
    text.replace(QLatin1Char('\''), QLatin1Char('"'));
    text.removeIf([](QChar c) { return c.isSpace(); });
    return text;
}

} // namespace

void CallText::setFunctions(const QList<Protocol::FunctionDescription> &functions)
{
    m_overloads.clear();
    for (const Protocol::FunctionDescription &function : functions)
        m_overloads.insert(function.name, function.overloads);
}

QString CallText::textOf(const QString &method, const QJsonObject &params,
                         const std::function<QString(int)> &nameOf) const
{
    if (method == Protocol::Method::call) {
        const QString function = params.value(QLatin1String("function")).toString();
        const QStringList texts = argumentTexts(function, params.value(argumentsKey).toArray(), nameOf);
        return QStringLiteral("%1(%2)").arg(function, texts.join(QLatin1String(", ")));
    }
    if (method == Protocol::Method::find)
        return QStringLiteral("waitForObject(%1)").arg(objectText(params, nameOf));
    if (method == Protocol::Method::invoke) {
        const QStringList texts = argumentTexts(QString(), params.value(argumentsKey).toArray(), nameOf);
        return QStringLiteral("findObject(%1).%2(%3)")
            .arg(objectText(params, nameOf), params.value(QLatin1String("method")).toString(),
                 texts.join(QLatin1String(", ")));
    }
    if (method == Protocol::Method::setProperty) {
        return QStringLiteral("findObject(%1).%2 = %3")
            .arg(objectText(params, nameOf), params.value(QLatin1String("property")).toString(),
                 valueText(params.value(QLatin1String("value")), QString(), nameOf));
    }
    return QString();
}

bool CallText::holdsHandles(const QJsonObject &params)
{
    const QJsonArray arguments = params.value(argumentsKey).toArray();
    return isHandle(params) || isHandle(params.value(QLatin1String("value")))
        || std::any_of(arguments.cbegin(), arguments.cend(), isHandle);
}

QStringList CallText::argumentTexts(const QString &function, const QJsonArray &arguments,
                                    const std::function<QString(int)> &nameOf) const
{
    const QStringList types = typesFor(function, arguments);
    QStringList texts;
    for (qsizetype i = 0; i < arguments.size(); ++i)
        texts.append(valueText(arguments.at(i), types.value(i), nameOf));
    return texts;
}

/// The types of the parameters of the overload that was most likely called.
QStringList CallText::typesFor(const QString &function, const QJsonArray &arguments) const
{
    const QList<Protocol::FunctionDescription::Overload> overloads = m_overloads.value(function);
    for (const Protocol::FunctionDescription::Overload &overload : overloads) {
        QStringList types;
        for (const Protocol::FunctionDescription::Argument &argument : overload.arguments)
            types.append(argument.type);
        bool isFitting = types.size() == arguments.size();
        for (qsizetype i = 0; isFitting && i < types.size(); ++i)
            isFitting = fits(arguments.at(i), types.at(i));
        if (isFitting)
            return types;
    }
    return {};
}

bool saysTheSame(const QString &source, const QString &call)
{
    // There may be more in the script that makes no difference, such as a limit.
    QString beginning = normalised(call);
    if (beginning.endsWith(QLatin1Char(')')))
        beginning.chop(1);
    return normalised(source).contains(beginning);
}

} // namespace Vantle::Tool::Replay
