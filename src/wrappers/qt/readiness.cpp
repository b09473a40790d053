#include "wrappers/qt/readiness.h"

#include <QtGui/QWindow>
#include <QtGui/private/qguiapplication_p.h>

namespace Vantle::QtWrapper {

QString windowNotReadyReason(QWindow *window)
{
    if (!window)
        return QStringLiteral("the window does not exist any more");
    if (!window->isVisible())
        return QStringLiteral("the window is not visible");
    if (!window->isExposed())
        return QStringLiteral("the window is not exposed on the screen");
    QWindow *blocking = nullptr;
    if (QGuiApplicationPrivate *const application = QGuiApplicationPrivate::instance();
        application && application->isWindowBlocked(window, &blocking))
        return QStringLiteral("the window is blocked by the modal window \"%1\"")
            .arg(blocking ? blocking->title() : QString());
    return {};
}

} // namespace Vantle::QtWrapper
