#include "agent/recording/wheelruns.h"

#include <QtGui/QWheelEvent>

namespace Vantle::Agent {

namespace {

// A hand that turns on pauses less, also where the wheel is big and slow.
constexpr qint64 longestPause = 500;

int signOf(int value)
{
    return (value > 0) - (value < 0);
}

} // namespace

bool WheelRuns::beginsAnew(const QWheelEvent &event)
{
    const QPoint angle = event.angleDelta();
    const QPoint direction(signOf(angle.x()), signOf(angle.y()));
    const bool isSame = m_sinceLast.isValid() && m_sinceLast.elapsed() <= longestPause && direction == m_direction;
    m_direction = direction;
    m_sinceLast.start();
    return !isSame;
}

} // namespace Vantle::Agent
