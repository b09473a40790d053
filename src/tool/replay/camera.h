#pragma once

#include "tool/replay/programsession.h"
#include "tool/replay/replayoptions.h"
#include "tool/replay/results.h"

#include <QtCore/QJsonObject>

namespace Vantle::Tool::Replay {

/// Takes pictures of the program.
class Camera
{
public:
    /// The options say which pictures are wanted that no script asks for: those
    /// of each step for the HTML report, those of failures for JUnit.
    Camera(ProgramSession *session, const ReplayOptions &options)
        : m_session(session)
        , m_showsSteps(!options.reportFile.isEmpty())
        , m_showsFailures(m_showsSteps || !options.junitFile.isEmpty())
    {
    }

    /// Whether the windows are shown before and after each step.
    bool showsSteps() const { return m_showsSteps && m_session->isRunning(); }

    /// A picture of an object, or of the active window if \p target is empty.
    /// An empty one and the reason in \p error if there can be none.
    Picture take(const QJsonObject &target, QString *error) const;

    /// A picture of the window that \p target lies in, or of the active one if
    /// there is no such object; an empty one if there is none at all.
    Picture window(const QJsonObject &target) const;

    /// The same for something that went wrong, if it is wanted.
    Picture failure(const QJsonObject &target = {}) const;

private:
    ProgramSession *m_session;
    bool m_showsSteps;
    bool m_showsFailures;
};

} // namespace Vantle::Tool::Replay
