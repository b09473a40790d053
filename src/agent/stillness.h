#pragma once

#include "hook/object.h"

#include <QtCore/QAbstractAnimation>
#include <QtCore/QElapsedTimer>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QRectF>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace Vantle::Agent {

/// Counts how often the animations of the program have moved on.
///
/// Is one of them itself, so that a window without other animations would draw
/// all the time: to be started only where others run.
class AnimationTicks final : public QAbstractAnimation
{
public:
    /// How often time has passed for animations since the start, or since restart().
    int count() const { return m_count; }
    void restart() { m_count = 0; }

    /// Whether it is among the animations that run: it takes two turns of the
    /// event loop from the start until it is.
    bool isTicking() const { return state() == Running && m_time > 0; }

    /// Without an end.
    int duration() const override { return -1; }

private:
    void updateCurrentTime(int time) override;

    int m_count = 0;
    int m_time = 0;
};

/// Finds out whether an object has come to rest, by looks at where it is.
///
/// Two looks that find it in the same place mean nothing if the program has
/// drawn nothing between them, or if its animations stood still: on a busy
/// computer that can last longer than any time. So frames and ticks of the
/// animations are counted, and the time passes only where there are none.
///
/// Lives on the thread of the user interface.
class Stillness final : public QObject
{
    Q_OBJECT

public:
    Stillness();
    ~Stillness() override;

    /// One look at \p object, which must be alive. When it is not at rest yet, its
    /// window draws another frame, behind which the next look should come.
    bool isAtRest(const SharedPtr<Object> &object);
    /// The next look is the first again.
    void forget();

    /// The innermost flickable that was carrying the object along at the last
    /// look; null if there was none, or it is gone.
    QQuickItem *carrier() const { return m_carrier; }

private:
    /// Where the object is, with fractions: a slow item moves by less than a
    /// pixel a frame. And the content positions of the flickables around
    /// it, as what a flickable holds in its place is under way as well.
    struct Place
    {
        QRectF rect;
        QList<QPointF> contents;
        /// What it consists of, inside of it: a delegate that slides back rests
        /// itself while its content moves.
        QList<QRectF> parts;

        bool isSameWhole(const Place &other) const { return rect == other.rect && contents == other.contents; }
    };

    Place placeOf(const SharedPtr<Object> &object);
    bool hasHadItsChance() const;
    bool areOthersAnimated() const;
    void watch(QQuickWindow *window);

    Place m_place;
    QPointer<QObject> m_object;
    QPointer<QQuickItem> m_carrier;
    QPointer<QQuickWindow> m_window;
    QElapsedTimer m_sinceChange;
    QElapsedTimer m_sinceWholeMoved;
    AnimationTicks m_ticks;
    int m_frames = 0;
};

} // namespace Vantle::Agent
