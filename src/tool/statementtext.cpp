#include "tool/statementtext.h"

#include "tool/enumerators.h"
#include "tool/stringliteral.h"

#include <QtCore/QLocale>
#include <QtCore/QStringList>

#include <algorithm>
#include <span>

namespace Vantle::Tool {

namespace {

QString numberText(const QJsonValue &value)
{
    const QVariant number = value.toVariant();
    if (number.typeId() == QMetaType::LongLong)
        return QString::number(number.toLongLong());
    return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
}

/// The value as a whole number of 32 bits, signed or not; nothing for others.
std::optional<quint32> bitsOf(const QJsonValue &value)
{
    const qint64 number = value.toInteger(0);
    if (!value.isDouble() || number != value.toInteger(1) || number < -0x80000000LL || number > 0xffffffffLL)
        return std::nullopt;
    return static_cast<quint32>(number);
}

/// An enumerator of `Qt` as it is written.
QString qtName(const Enumerators::Named &named)
{
    return QStringLiteral("Qt.") + QLatin1String(named.name);
}

QString flagsText(quint32 bits, std::span<const Enumerators::Named> names, const Enumerators::Named &none)
{
    if (bits == 0)
        return qtName(none);
    QStringList parts;
    for (const Enumerators::Named &named : names) {
        if (bits & named.value) {
            parts.append(qtName(named));
            bits &= ~named.value;
        }
    }
    if (bits != 0)
        parts.append(QStringLiteral("0x") + QString::number(bits, 16));
    return parts.join(QLatin1Char('|'));
}

QString windowStateText(const QJsonValue &value)
{
    const auto state = bitsOf(value);
    if (!state || *state >= Enumerators::windowStates.size())
        return numberText(value);
    return QStringLiteral("WindowState.") + QLatin1String(Enumerators::windowStates.at(*state));
}

bool isIdentifier(const QString &name)
{
    const auto isPart = [](QChar c) {
        return c == QLatin1Char('_') || c == QLatin1Char('$') || (c.unicode() < 0x80 && c.isLetterOrNumber());
    };
    return !name.isEmpty() && !name.at(0).isDigit() && std::all_of(name.cbegin(), name.cend(), isPart);
}

} // namespace

QString argumentText(const Protocol::StatementArgument &argument)
{
    if (argument.value.isString())
        return stringLiteral(argument.value.toString());
    const auto bits = bitsOf(argument.value);
    if (argument.type == QLatin1String("Qt::MouseButton") && bits)
        return flagsText(*bits, Enumerators::buttons, Enumerators::noButton);
    if (argument.type == QLatin1String("Qt::KeyboardModifiers") && bits)
        return flagsText(*bits, Enumerators::modifiers, Enumerators::noModifier);
    if (argument.type == QLatin1String("WindowState"))
        return windowStateText(argument.value);
    return numberText(argument.value);
}

std::optional<QString> statementText(const Protocol::Statement &statement)
{
    if (!isIdentifier(statement.function))
        return std::nullopt;
    QStringList parts;
    if (!statement.object.isEmpty())
        parts.append(stringLiteral(statement.object));
    for (const Protocol::StatementArgument &argument : statement.arguments)
        parts.append(argumentText(argument));
    return statement.function + QLatin1Char('(') + parts.join(QStringLiteral(", ")) + QStringLiteral(");");
}

} // namespace Vantle::Tool
