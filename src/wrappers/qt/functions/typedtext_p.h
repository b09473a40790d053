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
    /// The text where an input method would commit it in one piece, else empty.
    /// The keystrokes write the same where no input method can be used.
    QString commit;
};

/// Reads \p text as the recorder writes it. A text of more than one character
/// that begins with "<" is the name of one key in angle brackets, with its
/// modifiers in front, such as "<Ctrl+S>" or "<NumPad5>". All else is typed as
/// it stands, brackets included. Nothing, and the reason in \p problem, for a
/// name that is no key's and for characters that no key writes.
std::optional<TypedText> parseTypedText(const QString &text, QString *problem);

} // namespace Vantle::QtWrapper
