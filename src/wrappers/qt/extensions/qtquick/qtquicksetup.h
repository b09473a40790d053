#pragma once

#include <QtCore/qglobal.h>

#ifdef vantleqtquick_objects_EXPORTS
#  define VANTLEQTQUICK_EXPORT Q_DECL_EXPORT
#else
#  define VANTLEQTQUICK_EXPORT Q_DECL_IMPORT
#endif

namespace Vantle::QtWrapper {

/// Makes Qt Quick known to the host: classes, delegates, names and children of
/// items and windows. Called once, on the thread that owns the user interface,
/// after Application was made.
VANTLEQTQUICK_EXPORT void setupQtQuick();

} // namespace Vantle::QtWrapper
