#include "wrappers/qt/functions/pointerkeeper_p.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QMouseEvent>

#include <utility>

namespace Vantle::QtWrapper {

void PointerKeeper::take()
{
    if (!std::exchange(m_hasMouse, true))
        qApp->installEventFilter(this);
}

bool PointerKeeper::eventFilter(QObject *receiver, QEvent *event)
{
    if (!receiver->isWindowType() || !event->spontaneous())
        return false;
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) {
        const bool isOwn = event->type() == m_expected;
        if (isOwn)
            m_expected = QEvent::None;
        return !isOwn;
    }
    if (isForeignMouse(*event)) {
        m_hasMouse = false;
        qApp->removeEventFilter(this);
    }
    return false;
}

/// Whether \p event is of the window system's mouse, and not made of a touch.
bool PointerKeeper::isForeignMouse(const QEvent &event) const
{
    switch (event.type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return m_ownEvents == 0 && static_cast<const QMouseEvent &>(event).source() == Qt::MouseEventNotSynthesized;
    default: return false;
    }
}

} // namespace Vantle::QtWrapper
