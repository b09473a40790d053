#pragma once

#include "wrappers/qt/extensions/qtquickcommon/compression/eventcompressor.h"

#include <QtCore/QObject>

namespace Vantle::QtWrapper {

/// An alarm clock made of Qt's timers. Rings on the thread that made it, from
/// that thread's event loop.
///
/// An alarm that isn't stopped rings again and again, as Qt's timers do; it is
/// the observer who knows which of them it still waits for.
class QtAlarmClock final
    : public QObject
    , public AlarmClock
{
public:
    /// \p observer is not owned, is told of every ring, and must not be null.
    QtAlarmClock(QObject *parent, AlarmClockObserver *observer);
    ~QtAlarmClock() override;

    qint32 start(quint32 milliseconds) override;
    void stop(qint32 id) override;

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    AlarmClockObserver *observer;
};

} // namespace Vantle::QtWrapper
