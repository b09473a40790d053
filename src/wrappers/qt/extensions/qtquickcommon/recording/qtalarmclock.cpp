#include "wrappers/qt/extensions/qtquickcommon/recording/qtalarmclock.h"

#include <QtCore/QTimerEvent>

namespace Vantle::QtWrapper {

QtAlarmClock::QtAlarmClock(QObject *parent, AlarmClockObserver *alarmObserver)
    : QObject(parent)
    , observer(alarmObserver)
{
}

QtAlarmClock::~QtAlarmClock() = default;

qint32 QtAlarmClock::start(quint32 milliseconds)
{
    return startTimer(static_cast<int>(milliseconds), Qt::CoarseTimer);
}

void QtAlarmClock::stop(qint32 id)
{
    killTimer(id);
}

void QtAlarmClock::timerEvent(QTimerEvent *event)
{
    observer->alarm(event->timerId());
}

} // namespace Vantle::QtWrapper
