#pragma once

#include "tool/installation.h"
#include "tool/replay/programsession.h"
#include "tool/replay/replayoptions.h"
#include "tool/replay/scriptengine.h"
#include "tool/replay/scriptobserver.h"
#include "tool/replay/steprecorder.h"
#include "tool/scriptwriter.h"

#include <QtCore/QMap>
#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtCore/QTemporaryDir>

#include <atomic>
#include <memory>

namespace Vantle::Tool::Replay {

/// One script from the start of its program to the end of it. Lives on one
/// thread, which run() blocks; stop() may come from any other.
class ScriptRun : public QObject
{
    Q_OBJECT

public:
    /// \p environment is what the program gets on top of the tool's own.
    ScriptRun(const ReplayOptions &options, const Installation &installation, const QString &file,
              const QMap<QString, QString> &environment);
    ~ScriptRun() override;

    /// \p observer looks on while the script runs; it must outlive the run. Ahead of run().
    void setObserver(ScriptObserver *observer) { m_observer = observer; }

    /// Runs the script and gives everything that is known about it.
    ScriptResult run();

    /// Ends the script and its program; run() returns soon. A second call
    /// kills the program at once.
    void stop();

Q_SIGNALS:
    void progressed(const Vantle::Tool::Replay::Progress &progress);
    void failed(const Vantle::Tool::Replay::Step &step);

private:
    /// Everything ahead of the script; empty or what is in the way.
    QString setUp(const ScriptSource &source);
    QString prepareDirectories();
    void separateRuntime();
    QString startProgram(const QStringList &words);
    void runScript(const ScriptSource &source);
    void finishProgram();
    void saveTree();
    void endByError(const ScriptError &error);
    void judge();
    QString programOutput() const;

    const ReplayOptions m_options;
    const QString m_file;
    const QString m_path;
    QMap<QString, QString> m_environment;
    QTemporaryDir m_directory;
    ScriptObserver *m_observer = nullptr;
    ProgramSession m_session;
    ScriptWriter m_recording;
    std::unique_ptr<StepRecorder> m_recorder;
    std::unique_ptr<ScriptEngine> m_engine;
    QMutex m_engineLock; ///< over m_engine, for stop()
    std::atomic_bool m_stopped = false;
    QString m_startFailure;
    QString m_lastWords;
    bool m_programEnded = false;
    bool m_errorEnded = false;
};

} // namespace Vantle::Tool::Replay
