#pragma once

#include "agent/recording/recordstage.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QPointer>

#include <functional>
#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QEvent;
class QMouseEvent;
class QPointingDevice;
class QQuickItem;
class QTouchEvent;
class QWheelEvent;
class QWindow;
QT_END_NAMESPACE

namespace Vantle::Agent {

/// Makes records of what the pointer does, against the items that answer it.
///
/// What a press will go to is foreseen, since it has to be named before the
/// program does anything with it; but an item may decline it, and whether a
/// flickable still takes the wheel only trying tells. So presses, touches and
/// turns of the wheel are kept back until Qt has delivered them, and corrected.
///
/// A release means the object that was pressed, as that has the pointer until
/// then; and where a move goes nobody looks at. Neither costs a walk over the scene.
///
/// Lives on the thread of the user interface.
class PointerDelivery final : public QObject
{
    Q_OBJECT

public:
    using Observer = std::function<void(const QtWrapper::SyntheticEvent &record)>;
    using ItemObserver = std::function<void(QQuickItem *item)>;

    /// Completed records go to \p line, which must outlive this object; \p foreseen
    /// is shown those of presses, touches and their ends before Qt delivers them.
    /// \p aimedAt is told ahead of a press what it will go to, null included.
    PointerDelivery(RecordStage *line, Observer foreseen, ItemObserver aimedAt);
    ~PointerDelivery() override;

    /// Takes \p event, which Qt is about to deliver to \p window, if it is one of
    /// the pointer.
    bool take(QWindow *window, QEvent *event);

    /// To be told each event that Qt delivers to an item.
    void noteDelivery(QObject *item, const QEvent &event);

    /// Hands on what was kept back: it has been delivered, as far as it will be.
    void complete();

    /// Forgets what is pressed.
    void reset();

private:
    struct Pending
    {
        QPointer<QWindow> window;
        std::unique_ptr<QEvent> event; ///< a copy
        QtWrapper::SyntheticEvent record;
        QPointF scenePoint;
        QPointer<QQuickItem> foreseen;
        const QPointingDevice *device = nullptr;
        int pointId = 0;
        QList<QPointer<QQuickItem>> receivers; ///< in the order of delivery
    };

    /// What is recorded of an object.
    struct Holder
    {
        SharedPtr<Object> object;
        QByteArray name;
        const Class *type = nullptr;
        bool isReady = false;

        explicit Holder(const QtWrapper::SyntheticEvent &record);
        void writeTo(QtWrapper::SyntheticEvent *record) const;
    };

    void takePress(QWindow *window, QMouseEvent *event);
    void takeMove(QMouseEvent *event);
    void takeRelease(QWindow *window, QMouseEvent *event);
    void takeWheel(QWindow *window, QWheelEvent *event);
    void takeTouchBegin(QWindow *window, QTouchEvent *event);
    void takeTouch(QWindow *window, QTouchEvent *event);
    void keepBack(Pending pending);

    void correctPress(Pending *pending) const;
    QQuickItem *pressTakerOf(const Pending &pending) const;
    void correctWheel(Pending *pending);
    QQuickItem *wheelTakerOf(const Pending &pending) const;

    RecordStage *m_line;
    Observer m_foreseen;
    ItemObserver m_aimedAt;
    std::optional<Pending> m_pending;
    QHash<int, Holder> m_pressed; ///< by button
    std::optional<Holder> m_touched;
    QPointer<QQuickItem> m_wheelTaker; ///< of the run of turns that goes on
    QObject m_nobody; ///< the receiver of what is delivered to no object in particular
};

} // namespace Vantle::Agent
