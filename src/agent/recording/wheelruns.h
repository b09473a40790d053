#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QPoint>

class QWheelEvent;

namespace Vantle::Agent {

/// Knows where one run of turns of the wheel ends and another begins.
///
/// The pattern adds up all turns over one object, however long they take: up and
/// down again would be nothing, though what scrolls may have been stopped by its
/// end, and turns with pauses would be played as one that sets off a flick.
class WheelRuns
{
public:
    /// Whether \p event begins a new run behind the one before.
    bool beginsAnew(const QWheelEvent &event);

private:
    QPoint m_last;
    QElapsedTimer m_sinceLast;
};

} // namespace Vantle::Agent
