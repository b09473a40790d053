#pragma once

#include "tool/replay/programsession.h"
#include "tool/replay/results.h"

#include <QtCore/QJsonObject>

namespace Vantle::Tool::Replay {

/// Takes pictures of the program.
class Camera
{
public:
    /// \p isOn says whether pictures are wanted that no script asks for.
    Camera(ProgramSession *session, bool isOn) : m_session(session), m_isOn(isOn) {}

    bool isOn() const { return m_isOn && m_session->isRunning(); }

    /// A picture of an object, or of the active window if \p target is empty.
    /// An empty one and the reason in \p error if there can be none.
    Picture take(const QJsonObject &target, QString *error) const;

    /// A picture of the active window, or an empty one.
    Picture glance() const;

private:
    ProgramSession *m_session;
    bool m_isOn;
};

} // namespace Vantle::Tool::Replay
