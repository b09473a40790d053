#pragma once

#include "tool/installation.h"
#include "tool/replay/replayoptions.h"
#include "tool/replay/results.h"

#include <QtCore/QMap>
#include <QtCore/QMutex>
#include <QtCore/QThread>

#include <atomic>

namespace Vantle::Tool::Replay {

class ScriptRun;

/// A thread that runs one script after the other, on a display of its own
/// where the options want one. The scripts are given out by a counter that
/// all workers share.
class ReplayWorker : public QThread
{
    Q_OBJECT

public:
    ReplayWorker(const ReplayOptions &options, const Installation &installation, std::atomic_int *nextScript);

    /// Ends the script under way and takes no further one. From any thread.
    void stop();

    /// True if each worker has to have a display of its own.
    static bool needsOwnDisplay(const ReplayOptions &options);

Q_SIGNALS:
    /// All of these name a script by its place in the options.
    void begun(int index);
    void progressed(int index, const Vantle::Tool::Replay::Progress &progress);
    void failed(int index, const Vantle::Tool::Replay::Step &step);
    void ended(int index, const Vantle::Tool::Replay::ScriptResult &result);

protected:
    void run() override;

private:
    void runScripts(const QMap<QString, QString> &environment, const QString &displayError);
    ScriptResult runScript(int index, const QMap<QString, QString> &environment);

    const ReplayOptions m_options;
    const Installation m_installation;
    std::atomic_int *const m_nextScript;
    QMutex m_lock; ///< over m_current
    ScriptRun *m_current = nullptr;
    std::atomic_bool m_stopped = false;
};

} // namespace Vantle::Tool::Replay
