#pragma once

#include "hook/inputvalues.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

#include <QtCore/qnamespace.h>

/// Between Qt's values for buttons and modifiers and the tool's own. What has
/// no counterpart becomes none; of a set of modifiers the rest is kept.
namespace Vantle::QtWrapper {

VANTLEQTQUICKCOMMON_EXPORT Qt::MouseButton buttonValueToQtButton(MouseButton::Value button);
VANTLEQTQUICKCOMMON_EXPORT MouseButton::Value qtButtonToButtonValue(Qt::MouseButton button);

VANTLEQTQUICKCOMMON_EXPORT Qt::KeyboardModifiers modifierValueToQtModifiers(Modifier::Value modifiers);
/// \p modifiers is a set of Qt::KeyboardModifier.
VANTLEQTQUICKCOMMON_EXPORT Modifier::Value qtModifiersToModifierValue(unsigned int modifiers);

} // namespace Vantle::QtWrapper
