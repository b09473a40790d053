#pragma once

#include "tool/replay/calltext.h"
#include "tool/replay/camera.h"
#include "tool/replay/programsession.h"
#include "tool/replay/replayoptions.h"
#include "tool/replay/scriptobserver.h"
#include "tool/replay/steprecorder.h"

#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/QJSValue>

#include <functional>

class QJSEngine;

namespace Vantle::Tool::Replay {

/// What the prelude (prelude.js) can ask of the tool: everything that reaches
/// beyond the engine. Values go through as JSON text. What can fail answers
/// `{"result": …}` or `{"error": message, "name": kind, "failure": number}`,
/// and the prelude throws.
///
/// Every \p stack is that of the script at the call; it says where in the
/// script the step is.
class ScriptHost : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int waitLimit READ waitLimit CONSTANT)

public:
    /// Starts the program with these words (those of the command line if there
    /// are none); empty or why that failed.
    using Starter = std::function<QString(const QStringList &words)>;

    ScriptHost(QJSEngine *engine, ProgramSession *session, StepRecorder *recorder, const ReplayOptions &options,
               Starter starter);

    /// \p observer, which may be null, looks on; it must outlive the script.
    void setObserver(ScriptObserver *observer) { m_observer = observer; }

    int waitLimit() const;

    /// Names of the functions that the agent offers; or nothing and the reason.
    QJsonValue functionNames(QString *error);

    /// True if the script itself waited for the program's end, and it may end
    /// as it likes.
    bool isEndExpected() const { return m_endExpected; }

    /// How a program died before the script started another one; empty if none did.
    QString earlierDeath() const { return m_earlierDeath; }

    /// Name of the error that a program which has ended gives.
    static QString programEndedName();
    static QString startFailedName();
    /// Name of the error of a script that needs a program and has started none.
    static QString noProgramName();

    /// Sends a request, as a step of the script if \p kind isn't empty.
    Q_INVOKABLE QString perform(const QString &kind, const QString &function, const QString &method,
                                const QString &params, const QString &stack);
    Q_INVOKABLE int begin(const QString &kind, const QString &function, const QString &stack);
    Q_INVOKABLE void end(int step);
    Q_INVOKABLE int fail(int step, const QString &message, int cause);
    Q_INVOKABLE double now() const;
    Q_INVOKABLE void pause(int milliseconds);
    Q_INVOKABLE QString snooze(double seconds, const QString &stack);
    Q_INVOKABLE void check(bool passed, const QString &function, const QString &message, const QString &differences,
                           const QString &stack);
    Q_INVOKABLE void log(const QString &function, const QString &text, bool isWarning, const QString &stack);
    Q_INVOKABLE QString screenshot(const QString &target, const QString &file, const QString &stack);
    Q_INVOKABLE QString compareImage(const QString &target, const QString &file, int tolerance, double pixels,
                                     const QString &stack);
    Q_INVOKABLE QString start(const QString &words, const QString &stack);
    Q_INVOKABLE QString close(const QString &stack);
    Q_INVOKABLE QString waitForExit(int milliseconds, const QString &stack);
    /// \p line is that of the `import` in the script itself; modules have their
    /// imports from the engine.
    Q_INVOKABLE QJSValue importModule(const QString &file, int line, const QString &stack);
    /// All that the statement asked for is there.
    Q_INVOKABLE void endImport();

private:
    Answer requestWithin(const QString &method, const QJsonObject &params);
    Answer findAtRest(const QJsonObject &target);
    Answer notReady(const QJsonObject &described, const QString &reason) const;
    Picture pictureFor(int step, const QString &target, QString *problem);
    QString reply(int step, const Answer &answer, const QJsonObject &target);
    QString failure(int step, const QString &name, const QString &message, const Explanation &explanation = {},
                    const QJsonObject &target = {});
    void endProgram();
    void tellObserver(int step);
    void noteCall(int step, const QString &method, const QJsonObject &request, bool failed);
    QString nameOf(int handle);
    QString exitReply(int step);
    void showBefore(int step, const QJsonObject &target);
    void showAfter(int step, const QJsonObject &result);
    QString pathOf(const QString &file) const;
    /// Empty, or why the script may not use that file.
    QString pathError(const QString &file) const;

    QJSEngine *m_engine;
    ProgramSession *m_session;
    StepRecorder *m_recorder;
    const ReplayOptions m_options;
    const Starter m_starter;
    const Camera m_camera;
    CallText m_callText;
    ScriptObserver *m_observer = nullptr;
    QString m_earlierDeath;
    bool m_endExpected = false;
};

} // namespace Vantle::Tool::Replay
