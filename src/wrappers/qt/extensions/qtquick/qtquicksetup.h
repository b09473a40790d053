#pragma once

#include "wrappers/qt/extensions/qtquick/qtquickglobal.h"

namespace Vantle::QtWrapper {

/// Makes Qt Quick known to the host: classes, delegates, names and children of
/// items and windows. Called once, on the thread that owns the user interface,
/// after Application was made.
VANTLEQTQUICK_EXPORT void setupQtQuick();

/// Whether the extension that comes with the library answers, as it does at
/// first, or leaves every question to others.
VANTLEQTQUICK_EXPORT void setStandardExtensionEnabled(bool isEnabled);

} // namespace Vantle::QtWrapper
