#include "wrappers/qt/readiness.h"

#include "hook/delegates.h"
#include "hook/inspector.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QWindow>
#include <QtGui/private/qguiapplication_p.h>

namespace Vantle::QtWrapper {

namespace {

QString describeTarget(const SharedPtr<Object> &object, int x, int y)
{
    const QString name = object->scriptName();
    const QString target = name.isEmpty() ? QStringLiteral("an object of type %1").arg(object->className()) : name;
    return x < 0 && y < 0 ? target
                          : QStringLiteral("%1 at (%2, %3)").arg(target, QString::number(x), QString::number(y));
}

/// False as long as there is no application whose windows could be modal.
bool isBlocked(QWindow *window, QWindow **blocking)
{
    QGuiApplicationPrivate *const application = QGuiApplicationPrivate::instance();
    return application && window && application->isWindowBlocked(window, blocking);
}

/// Why \p operation can't be done, as a sentence for the script; empty when it can.
QString refusal(const SharedPtr<Object> &object, int x, int y, const QString &operation,
                const InteractionDelegate *delegate)
{
    if (!object)
        return QStringLiteral("Cannot %1: no object was given").arg(operation);
    if (object->isNull())
        return QStringLiteral("Cannot %1: the object of type %2 does not exist any more")
            .arg(operation, object->className());
    if (!delegate)
        return QStringLiteral("Cannot %1: nobody can act on an object of type %2").arg(operation, object->className());
    const QString reason = delegate->notReadyReason(object);
    return reason.isEmpty()
        ? QString()
        : QStringLiteral("Cannot %1 on %2: %3").arg(operation, describeTarget(object, x, y), reason);
}

} // namespace

QString windowNotReadyReason(QWindow *window)
{
    if (!window)
        return QStringLiteral("the window does not exist any more");
    if (!window->isVisible())
        return QStringLiteral("the window is not visible");
    if (!window->isExposed())
        return QStringLiteral("the window is not exposed on the screen");
    QWindow *blocking = nullptr;
    if (!isBlocked(window, &blocking))
        return {};
    const QString title = blocking ? blocking->title() : QString();
    return title.isEmpty() ? QStringLiteral("the window is blocked by a modal window without a title")
                           : QStringLiteral("the window is blocked by the modal window \"%1\"").arg(title);
}

SharedPtr<Object> modalWindowOver(QWindow *window)
{
    QWindow *blocking = nullptr;
    return isBlocked(window, &blocking) && blocking ? wrapAndRegisterQObject(blocking) : nullptr;
}

bool ensureValidVisibleAndReady(const SharedPtr<Object> &object, int x, int y, const QString &operation,
                                const InteractionDelegate **delegate)
{
    const InteractionDelegate *const found = object
        ? DelegateFactory::self()->interactionDelegate(object->objectClass())
        : nullptr;
    if (const QString message = refusal(object, x, y, operation, found); !message.isEmpty()) {
        Inspector::self()->raiseError(message);
        return false;
    }
    if (delegate)
        *delegate = found;
    return true;
}

} // namespace Vantle::QtWrapper
