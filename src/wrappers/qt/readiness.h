#pragma once

#include "hook/object.h"
#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QString>

class QWindow;

namespace Vantle {
class InteractionDelegate;
}

namespace Vantle::QtWrapper {

/// Why a user could not act on \p window now, in words; empty when one could.
/// A null window is a reason.
VANTLEQTWRAPPER_EXPORT QString windowNotReadyReason(QWindow *window);

/// The modal window that takes the input of \p window, which may be null; null
/// if there is none.
VANTLEQTWRAPPER_EXPORT SharedPtr<Object> modalWindowOver(QWindow *window);

/// Whether a script can act on \p object now. If not, the script is told so,
/// in words, by Inspector::raiseError.
///
/// \p operation is the name of the script function, and (\p x, \p y) the point
/// inside the object that it is about; negative where it is about none. Both
/// only serve for the message: what lies at the point is not looked at. If the
/// object can be acted on, \p delegate, which may be null, gets what said so.
VANTLEQTWRAPPER_EXPORT bool ensureValidVisibleAndReady(const SharedPtr<Object> &object, int x, int y,
                                                       const QString &operation, const InteractionDelegate **delegate);

} // namespace Vantle::QtWrapper
