#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/qnamespace.h>

#include <optional>

/// What the texts of `type` statements mean.
namespace Vantle::QtWrapper {

/// One key going down and up.
struct Keystroke
{
    int key = 0;
    Qt::KeyboardModifiers modifiers; ///< held meanwhile
    QString text;                    ///< what the key writes

    bool operator==(const Keystroke &) const = default;
};

/// What is to be typed.
struct TypedText
{
    QList<Keystroke> keystrokes;
};

/// Reads \p text as the recorder writes it. A text of more than one character
/// that begins with "<" is the name of one key in angle brackets, with its
/// modifiers in front, such as "<Ctrl+S>" or "<NumPad5>". All else is typed as
/// it stands, brackets included. Nothing, and the reason in \p problem, for a
/// name that is no key's and for characters that no key writes.
std::optional<TypedText> parseTypedText(const QString &text, QString *problem);

/// Reads \p text as it stands: whatever begins with "<" is no name of a key.
/// Nothing, and the reason in \p problem, for characters that no key writes.
std::optional<TypedText> literalText(const QString &text, QString *problem);

/// The one key that is to be held or let go: a character, or the name of a key
/// in angle brackets, those of modifiers among them, such as "<Shift>". A
/// modifier has no key of its own here, it is all in Keystroke::modifiers.
/// Nothing, and the reason in \p problem, for any other text.
std::optional<Keystroke> parseKey(const QString &text, QString *problem);

} // namespace Vantle::QtWrapper
