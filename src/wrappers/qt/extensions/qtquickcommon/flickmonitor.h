#pragma once

#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>

class QQuickFlickable;

namespace Vantle::QtWrapper {

/// Is told about the movements of watched flickables, inside the flickable's
/// own signal. It may destroy the flickable, the item and the monitor there.
class FlickObserver
{
public:
    /// \p position is the content position at the press that began the watch,
    /// not that at the start of the movement. \p item is the item that was
    /// pressed, null if it has gone since.
    virtual void flickStarted(QQuickItem *flickable, const QPointF &position, QQuickItem *item) = 0;
    /// \p position is the content position now.
    virtual void flickEnded(QQuickItem *flickable, const QPointF &position, QQuickItem *item) = 0;

protected:
    ~FlickObserver() = default; // nobody deletes an observer as such
};

/// Watches flickables from a press on, since no input event shows whether a
/// press makes one of them move, nor how far it runs on afterwards.
///
/// A watch ends with the release if no movement began by then, and otherwise
/// with the movement. The pointers given must not be null, apart from those of
/// the two operations that walk up from an item. Lives on the thread that owns
/// the flickables.
class FlickMonitor : public QObject
{
    Q_OBJECT

public:
    /// What is known about one flickable. All positions are content positions.
    struct FlickState
    {
        QPointer<QQuickItem> item; ///< the item that was pressed, often below the flickable
        QPointF contentStartPos;   ///< when the watch began
        bool inMovement = false;
    };
    using FlickStates = QMap<QPointer<QQuickFlickable>, FlickState>;

    FlickMonitor();
    ~FlickMonitor() override;

    /// \p newObserver is not owned; null for none.
    void setObserver(FlickObserver *newObserver);

    /// Begins a watch, for a press on \p item. One that is under way begins
    /// anew, and each signal of the flickable then arrives once more.
    void watchFlickable(QQuickFlickable *flickable, QQuickItem *item);
    /// Ends the watch, if there is one.
    void unwatchFlickable(QQuickFlickable *flickable);

    /// Watches all flickables from \p item, which may be null, upward: each of
    /// several nested ones may be the one that moves.
    void watchFlickablesOf(QQuickItem *item);
    /// Ends the watch on all flickables from \p item upward that don't move.
    void unwatchIdleFlickablesOf(QQuickItem *item);

    /// The watches. That of a flickable which has died stays, with a null key,
    /// until the monitor goes.
    const FlickStates &watches() const noexcept { return flickables; }

public Q_SLOTS:
    void flickable_movementStarted();
    void flickable_movementEnded();

private:
    FlickStates::iterator findWatch(const QQuickFlickable *flickable);

    FlickStates flickables;
    FlickObserver *observer = nullptr;
};

} // namespace Vantle::QtWrapper
