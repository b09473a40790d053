#include "agent/recording/wheelruns.h"

#include <QtGui/QWheelEvent>

namespace Vantle::Agent {

namespace {

// A hand that turns on pauses less, also where the wheel is big and slow.
constexpr qint64 longestPause = 500;

bool isOpposite(int one, int other)
{
    return (one > 0 && other < 0) || (one < 0 && other > 0);
}

} // namespace

bool WheelRuns::beginsAnew(const QWheelEvent &event)
{
    const QPoint angle = event.angleDelta();
    const bool goesOn = m_sinceLast.isValid() && m_sinceLast.elapsed() <= longestPause
        && !isOpposite(angle.x(), m_last.x()) && !isOpposite(angle.y(), m_last.y());
    m_last = angle;
    m_sinceLast.start();
    return !goesOn;
}

} // namespace Vantle::Agent
