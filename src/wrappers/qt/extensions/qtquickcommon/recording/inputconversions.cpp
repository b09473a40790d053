#include "wrappers/qt/extensions/qtquickcommon/recording/inputconversions.h"

namespace Vantle::QtWrapper {

namespace {

struct ModifierPair
{
    Modifier::Value value;
    Qt::KeyboardModifier qtModifier;
};

constexpr ModifierPair modifierPairs[] = {
    {Modifier::Control, Qt::ControlModifier},
    {Modifier::Shift, Qt::ShiftModifier},
    {Modifier::Alt, Qt::AltModifier},
    {Modifier::Win, Qt::MetaModifier},
};

} // namespace

Qt::MouseButton buttonValueToQtButton(MouseButton::Value button)
{
    switch (button) {
    case MouseButton::LeftButton: return Qt::LeftButton;
    case MouseButton::MiddleButton: return Qt::MiddleButton;
    case MouseButton::RightButton: return Qt::RightButton;
    default: return Qt::NoButton;
    }
}

MouseButton::Value qtButtonToButtonValue(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton: return MouseButton::LeftButton;
    case Qt::MiddleButton: return MouseButton::MiddleButton;
    case Qt::RightButton: return MouseButton::RightButton;
    default: return MouseButton::None;
    }
}

Qt::KeyboardModifiers modifierValueToQtModifiers(Modifier::Value modifiers)
{
    Qt::KeyboardModifiers result;
    for (const ModifierPair &pair : modifierPairs)
        result.setFlag(pair.qtModifier, modifiers & pair.value);
    return result;
}

Modifier::Value qtModifiersToModifierValue(unsigned int modifiers)
{
    Modifier::Value result = Modifier::None;
    for (const ModifierPair &pair : modifierPairs) {
        if (modifiers & pair.qtModifier)
            result |= pair.value;
    }
    return result;
}

} // namespace Vantle::QtWrapper
