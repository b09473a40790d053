#include "hook/objectnameprinter_p.h"

#include <optional>

namespace Vantle {

namespace {

bool hasValue(const PropertyValue &value, const QString &text)
{
    return value.modifiers() == PropertyValue::Equals && value.stringValue() == text;
}

bool isPlain(const PropertyValue &value)
{
    return value.modifiers() == PropertyValue::Equals && isPlainIdentifier(value.stringValue());
}

bool isPlainOccurrence(const PropertyValue &value)
{
    const int number = value.stringValue().toInt();
    return number >= 1 && hasValue(value, QString::number(number));
}

bool isAlias(const ObjectName::Properties &step)
{
    if (step.size() != 1 || step.firstKey() != NameKeys::alias)
        return false;
    const PropertyValue &value = step.first();
    return value.modifiers() == PropertyValue::Equals && isPlainAlias(value.stringValue());
}

QString quoted(const QString &text)
{
    QString result = QStringLiteral("\"");
    for (const QChar c : text) {
        if (c == u'\n') {
            result += QLatin1String("\\n");
            continue;
        }
        if (c == u'"' || c == u'\\')
            result += u'\\';
        result += c;
    }
    return result + u'"';
}

/// The pattern between slashes. Nothing for the few that can't be written so:
/// those with a line feed, with a slash that is escaped already, and with a
/// backslash at the end that escapes nothing.
std::optional<QString> inSlashes(const QString &pattern)
{
    QString result = QStringLiteral("/");
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        if (c == u'\n')
            return std::nullopt;
        if (c == u'/') {
            result += u'\\';
        } else if (c == u'\\') {
            ++i;
            if (i == pattern.size() || pattern[i] == u'/' || pattern[i] == u'\n')
                return std::nullopt;
            result += c;
        }
        result += pattern[i];
    }
    return result + u'/';
}

QString regularExpression(const QString &pattern)
{
    if (const std::optional<QString> text = inSlashes(pattern))
        return u'=' + *text;
    return QLatin1String("~=") + quoted(pattern);
}

QString comparison(const PropertyValue &value)
{
    const QString &text = value.stringValue();
    switch (value.modifiers()) {
    case PropertyValue::Equals: break;
    case PropertyValue::Contains: return QLatin1String("*=") + quoted(text);
    case PropertyValue::BeginsWith: return QLatin1String("^=") + quoted(text);
    case PropertyValue::EndsWith: return QLatin1String("$=") + quoted(text);
    case PropertyValue::MatchesRegularExpression: return regularExpression(text);
    case PropertyValue::MatchesRegularExpressionCaseInsensitively: return regularExpression(text) + u'i';
    }
    return u'=' + quoted(text);
}

QString inBrackets(const QString &key, const PropertyValue &value)
{
    return u'[' + (isPlainIdentifier(key) ? key : quoted(key)) + comparison(value) + u']';
}

/// Each property in its short form where it has one, else in brackets.
QString stepText(const ObjectName::Properties &step)
{
    QString type, id, others, visible, occurrence;
    // Whoever speaks of a cell says the row first.
    const bool isCell = step.contains(NameKeys::row) && step.contains(NameKeys::column);
    for (auto it = step.cbegin(); it != step.cend(); ++it) {
        const QString &key = it.key();
        const PropertyValue &value = it.value();
        if (key == NameKeys::type && isPlain(value))
            type = value.stringValue();
        else if (key == NameKeys::id && isPlain(value))
            id = u'#' + value.stringValue();
        else if (key == NameKeys::visible && hasValue(value, NameValues::yes))
            visible = QStringLiteral(":visible");
        else if (key == NameKeys::visible && hasValue(value, NameValues::no))
            visible = QStringLiteral(":hidden");
        else if (key == NameKeys::occurrence && isPlainOccurrence(value))
            occurrence = QStringLiteral(":nth(%1)").arg(value.stringValue());
        else if (isCell && key == NameKeys::column)
            others += inBrackets(NameKeys::row, step.value(NameKeys::row)) + inBrackets(key, value);
        else if (!isCell || key != NameKeys::row)
            others += inBrackets(key, value);
    }
    return type + id + others + visible + occurrence;
}

bool isCanonicalObjectName(const QString &text)
{
    ObjectName::ParseError error;
    const ObjectNameSteps steps = readObjectNameSteps(text, &error);
    return !steps.empty() && canonicalObjectName(steps) == text;
}

} // namespace

QString canonicalObjectName(const ObjectName::Properties &name)
{
    if (isAlias(name))
        return u'@' + name.first().stringValue();
    const auto container = name.constFind(NameKeys::container);
    // Something must stand behind the container, and what stands ahead must
    // be read as exactly this text again.
    if (container == name.cend() || name.size() == 1 || container->modifiers() != PropertyValue::Equals
        || !isCanonicalObjectName(container->stringValue()))
        return stepText(name);
    ObjectName::Properties step = name;
    step.remove(NameKeys::container);
    return container->stringValue() + u' ' + stepText(step);
}

// Goes over the steps without recursion, as there may be any number of them.
QString canonicalObjectName(const ObjectNameSteps &steps)
{
    QString text;
    for (const ObjectName::Properties &step : steps)
        text += text.isEmpty() ? canonicalObjectName(step) : u' ' + stepText(step);
    return text;
}

} // namespace Vantle
