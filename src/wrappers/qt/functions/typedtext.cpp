#include "wrappers/qt/functions/typedtext_p.h"

#include <QtGui/QKeySequence>

#include <algorithm>

namespace Vantle::QtWrapper {

namespace {

const QLatin1String KeypadPrefix("NumPad");

constexpr Qt::KeyboardModifiers ModifiersOfNames = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier
    | Qt::MetaModifier;

bool isPrintableAscii(int key)
{
    return key >= 0x20 && key < 0x7f;
}

/// What a key that has a name writes when it is pressed.
QString textOfKey(int key, Qt::KeyboardModifiers modifiers)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return QStringLiteral("\r");
    case Qt::Key_Tab: return QStringLiteral("\t");
    case Qt::Key_Backspace: return QStringLiteral("\b");
    case Qt::Key_Escape: return QStringLiteral("\x1b");
    case Qt::Key_Delete: return QStringLiteral("\x7f");
    default: break;
    }
    if (!isPrintableAscii(key))
        return {};
    constexpr int controlBits = 0x1f;
    if (modifiers.testFlag(Qt::ControlModifier))
        return key >= Qt::Key_At && key <= Qt::Key_Underscore ? QString(QChar(key & controlBits)) : QString();
    const QChar character(key);
    return modifiers.testFlag(Qt::ShiftModifier) ? character : character.toLower();
}

/// The key that writes one character, given in UTF-32.
std::optional<Keystroke> keyWriting(char32_t character)
{
    switch (character) {
    case U'\n':
    case U'\r': return Keystroke{Qt::Key_Return, {}, QStringLiteral("\r")};
    case U'\t': return Keystroke{Qt::Key_Tab, {}, QStringLiteral("\t")};
    default: break;
    }
    if (!QChar::isPrint(character))
        return std::nullopt;
    // Qt calls the keys of letters by the capital letter.
    const char32_t key = QChar::toUpper(character);
    const bool isCapital = key == character && QChar::toLower(character) != character;
    return Keystroke{static_cast<int>(key), isCapital ? Qt::ShiftModifier : Qt::NoModifier,
                     QString::fromUcs4(&character, 1)};
}

/// The key of a name without its brackets.
std::optional<Keystroke> namedKey(QString name)
{
    // The recorder takes the halves of a character beyond 16 bits for unprintable.
    if (name.size() == 2 && name.front().isHighSurrogate())
        return keyWriting(name.toUcs4().first());
    Qt::KeyboardModifiers keypad;
    if (name.startsWith(KeypadPrefix)) {
        keypad = Qt::KeypadModifier;
        name.remove(0, KeypadPrefix.size());
    }
    const QKeySequence sequence = QKeySequence::fromString(name, QKeySequence::PortableText);
    if (sequence.count() != 1)
        return std::nullopt;
    const Qt::Key key = sequence[0].key();
    if (key == Qt::Key_unknown || static_cast<int>(key) == 0)
        return std::nullopt;
    const Qt::KeyboardModifiers modifiers = sequence[0].keyboardModifiers();
    return Keystroke{key, (modifiers & ModifiersOfNames) | keypad, textOfKey(key, modifiers)};
}

std::optional<Keystroke> keyInBrackets(const QString &text)
{
    const bool hasBrackets = text.size() > 2 && text.startsWith(u'<') && text.endsWith(u'>');
    return hasBrackets ? namedKey(text.mid(1, text.size() - 2)) : std::nullopt;
}

std::optional<Keystroke> modifierInBrackets(const QString &text)
{
    struct Name
    {
        const char *text;
        Qt::KeyboardModifier modifier;
    };
    constexpr Name names[]{{"<Ctrl>", Qt::ControlModifier},
                           {"<Shift>", Qt::ShiftModifier},
                           {"<Alt>", Qt::AltModifier},
                           {"<Meta>", Qt::MetaModifier}};
    for (const Name &name : names) {
        if (text == QLatin1String(name.text))
            return Keystroke{0, name.modifier, {}};
    }
    return std::nullopt;
}

} // namespace

std::optional<TypedText> parseTypedText(const QString &text, QString *problem)
{
    if (text.size() <= 1 || !text.startsWith(u'<'))
        return literalText(text, problem);
    const std::optional<Keystroke> key = keyInBrackets(text);
    if (!key) {
        *problem = QStringLiteral(
                       "\"%1\" is not the name of a key. To type a text that begins with \"<\", use typeText")
                       .arg(text);
        return std::nullopt;
    }
    return TypedText{{*key}};
}

std::optional<TypedText> literalText(const QString &text, QString *problem)
{
    TypedText result;
    const QList<uint> characters = text.toUcs4();
    for (const uint character : characters) {
        const std::optional<Keystroke> key = keyWriting(character);
        if (!key) {
            *problem = QStringLiteral("no key writes the character U+%1").arg(character, 4, 16, QLatin1Char('0'));
            return std::nullopt;
        }
        result.keystrokes.append(*key);
    }
    return result;
}

std::optional<Keystroke> parseKey(const QString &text, QString *problem)
{
    if (const std::optional<Keystroke> modifier = modifierInBrackets(text))
        return modifier;
    const bool isCharacter = text.toUcs4().size() == 1;
    const std::optional<Keystroke> key = isCharacter ? keyWriting(text.toUcs4().first()) : keyInBrackets(text);
    if (!key) {
        *problem = QStringLiteral("\"%1\" is no key: expected one character, or the name of a key such as \"<Shift>\"")
                       .arg(text);
    }
    return key;
}

} // namespace Vantle::QtWrapper
