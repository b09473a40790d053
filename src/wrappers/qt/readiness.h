#pragma once

#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QString>

class QWindow;

namespace Vantle::QtWrapper {

/// Why a user could not act on \p window now, in words; empty when one could.
/// A null window is a reason.
VANTLEQTWRAPPER_EXPORT QString windowNotReadyReason(QWindow *window);

} // namespace Vantle::QtWrapper
