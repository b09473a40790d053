#pragma once

#include "wrappers/qt/extensions/qtquick/qtquickglobal.h"

namespace Vantle::QtWrapper {

/// Makes Qt Quick known to the host: classes, delegates, names and children of
/// items and windows. Called once, on the thread that owns the user interface,
/// after Application was made.
VANTLEQTQUICK_EXPORT void setupQtQuick();

} // namespace Vantle::QtWrapper
