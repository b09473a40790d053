#pragma once

#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

namespace Vantle::QtWrapper {

/// Registers with the Inspector what scripts can call for Qt Quick: the
/// overloads of the interaction functions for items, `flick`, and `grabWidget`
/// for items and windows.
///
/// Called once, on the thread of the user interface, when the Inspector knows
/// "QQuickItem", "QQuickWindow", "QWindow" and "QPixmap". A second call would
/// register everything again.
VANTLEQTQUICKCOMMON_EXPORT void setupQuickFunctions();

} // namespace Vantle::QtWrapper
