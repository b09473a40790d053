#pragma once

#include "tool/replay/programsession.h"
#include "tool/replay/replayoptions.h"
#include "tool/replay/scripthost.h"
#include "tool/replay/scriptsource.h"
#include "tool/replay/steprecorder.h"

#include <QtCore/QString>
#include <QtQml/QJSEngine>
#include <QtQml/QJSValue>

#include <optional>

namespace Vantle::Tool::Replay {

/// An error that the script did not catch.
struct ScriptError
{
    QString name;
    QString message;
    QString stack;
    int failure = 0; ///< what StepRecorder knows about it
    QString hint;    ///< what may help against it; may be empty
};

/// A JavaScript engine with everything that scripts can call. For one script,
/// on the thread of its session.
class ScriptEngine
{
public:
    ScriptEngine(ProgramSession *session, StepRecorder *recorder, const ReplayOptions &options,
                 ScriptHost::Starter starter);

    /// Lets scripts call what the agent of the running program offers. Empty,
    /// or why that can't be found out.
    QString defineFunctions();

    /// Runs a script to its end. Nothing if all went well.
    std::optional<ScriptError> run(const ScriptSource &source, const QString &path);

    const ScriptHost &host() const { return m_host; }
    ScriptHost &host() { return m_host; }

    /// Makes a script that runs end at once. May be called from any thread.
    void interrupt() { m_engine.setInterrupted(true); }

private:
    ScriptError errorFrom(const QJSValue &value, const QStringList &trace) const;
    QString hintFor(const QString &message) const;

    QJSEngine m_engine;
    ScriptHost m_host;
    QJSValue m_prelude;
};

} // namespace Vantle::Tool::Replay
