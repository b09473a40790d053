#include "tool/statementtext.h"

#include "tool/stringliteral.h"

#include <QtCore/QLocale>
#include <QtCore/QStringList>

#include <algorithm>
#include <array>
#include <span>

namespace Vantle::Tool {

namespace {

struct NamedValue
{
    quint32 value;
    const char *name;
};

// Those that Qt names after what they do; its other buttons are numbered.
constexpr std::array<NamedValue, 6> buttons{{
    {0x01, "Qt.LeftButton"},
    {0x02, "Qt.RightButton"},
    {0x04, "Qt.MiddleButton"},
    {0x08, "Qt.BackButton"},
    {0x10, "Qt.ForwardButton"},
    {0x20, "Qt.TaskButton"},
}};

constexpr std::array<NamedValue, 6> modifiers{{
    {0x04000000, "Qt.ControlModifier"},
    {0x02000000, "Qt.ShiftModifier"},
    {0x08000000, "Qt.AltModifier"},
    {0x10000000, "Qt.MetaModifier"},
    {0x20000000, "Qt.KeypadModifier"},
    {0x40000000, "Qt.GroupSwitchModifier"},
}};

constexpr std::array<const char *, 5> windowStates{
    "WindowState.None", "WindowState.Normal", "WindowState.Maximize", "WindowState.Minimize", "WindowState.Fullscreen",
};

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

QString flagsText(quint32 bits, std::span<const NamedValue> names, const char *nameOfNone)
{
    if (bits == 0)
        return QLatin1String(nameOfNone);
    QStringList parts;
    for (const NamedValue &named : names) {
        if (bits & named.value) {
            parts.append(QLatin1String(named.name));
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
    return state && *state < windowStates.size() ? QString(QLatin1String(windowStates.at(*state))) : numberText(value);
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
        return flagsText(*bits, buttons, "Qt.NoButton");
    if (argument.type == QLatin1String("Qt::KeyboardModifiers") && bits)
        return flagsText(*bits, modifiers, "Qt.NoModifier");
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
