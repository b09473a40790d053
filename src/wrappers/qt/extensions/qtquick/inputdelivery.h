#pragma once

#include "wrappers/qt/extensions/qtquick/qtquickglobal.h"

#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtCore/Qt>

class QQuickItem;
class QQuickWindow;

namespace Vantle::QtWrapper {

/// The topmost item at \p scenePoint of \p window that does something with the
/// wheel; null where there is none, and for a null window. One that can't
/// scroll any further lets the wheel through, which only trying tells.
VANTLEQTQUICK_EXPORT QQuickItem *wheelTakerAt(const QQuickWindow *window, QPointF scenePoint);
/// Whether \p item does something with the wheel at all.
VANTLEQTQUICK_EXPORT bool isWheelTaker(const QQuickItem *item);

/// The topmost item at \p scenePoint of \p window that takes what is dropped;
/// null where there is none, and for a null window.
VANTLEQTQUICK_EXPORT QQuickItem *dropTakerAt(const QQuickWindow *window, QPointF scenePoint);

/// The control that a user means who acts on \p taker at \p scenePoint: the spin
/// box or combo box whose text it edits, the layer of popups for what it dims
/// the rest with, else \p taker itself. Null for null.
VANTLEQTQUICK_EXPORT QQuickItem *answererFor(QQuickItem *taker, QPointF scenePoint);

/// A popup of \p window that is on its way to or from the screen, and takes keys
/// and presses for itself meanwhile; null if there is none, and for a null window.
VANTLEQTQUICK_EXPORT QQuickItem *popupUnderWay(const QQuickWindow *window);

/// As long as one of these lives, the standard extension has the library pass
/// over the items that a certain input does not mean. The innermost one counts.
/// Lives on the thread of the user interface.
class VANTLEQTQUICK_EXPORT InputDelivery
{
public:
    /// Input of the pointer that \p item answers. Null if nothing does: then the
    /// topmost item is meant that is no decoration of another.
    static InputDelivery toItem(QQuickItem *item);
    /// Keys and texts.
    static InputDelivery toFocus();
    ~InputDelivery();

    /// Whether the input that goes on now does not mean \p item; false while
    /// there is none.
    static bool passesOver(const QQuickItem *item);

private:
    enum class Kind { Pointer, Keys };
    InputDelivery(Kind kind, QQuickItem *answerer);
    Q_DISABLE_COPY_MOVE(InputDelivery)

    const InputDelivery *m_outer;
    Kind m_kind;
    QPointer<QQuickItem> m_answerer;
};

} // namespace Vantle::QtWrapper
