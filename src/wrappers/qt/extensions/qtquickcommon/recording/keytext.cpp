#include "wrappers/qt/extensions/qtquickcommon/recording/keytext_p.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QKeySequence>

namespace Vantle::QtWrapper {

namespace {

bool isModifierKey(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_AltGr: return true;
    default: return false;
    }
}

/// Whether the text says all that there is to say about the key. Keypad keys
/// are told apart from their twins, so they always go by their name.
bool isTypedText(const QString &text, Qt::KeyboardModifiers modifiers)
{
    constexpr Qt::KeyboardModifiers harmless = Qt::ShiftModifier | Qt::GroupSwitchModifier;
    return !text.isEmpty() && text.front().isPrint() && !(modifiers & ~harmless);
}

QString keyName(int key, Qt::KeyboardModifiers modifiers)
{
    const int combination = static_cast<int>((modifiers & ~Qt::KeypadModifier).toInt()) + key;
    QString name = QKeySequence(combination).toString(QKeySequence::PortableText);
    if (modifiers & Qt::KeypadModifier)
        name.prepend(QLatin1String("NumPad"));
    return name;
}

} // namespace

QByteArray keyEventText(const QKeyEvent &event)
{
    if (isModifierKey(event.key()))
        return {};
    const QString text = event.text();
    if (isTypedText(text, event.modifiers()))
        return text.toUtf8();
    const QString name = keyName(event.key(), event.modifiers());
    if (name.size() > 1)
        return '<' + name.toUtf8() + '>';
    return name.toUtf8();
}

} // namespace Vantle::QtWrapper
