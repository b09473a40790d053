#pragma once

#include "tool/replay/progressview.h"
#include "tool/replay/replayoptions.h"
#include "tool/replay/replayworker.h"
#include "tool/replay/results.h"
#include "tool/signalwatcher.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>

#include <atomic>
#include <memory>
#include <vector>

namespace Vantle::Tool::Replay {

/// A whole `vantle replay`: gives the scripts to workers, shows what happens,
/// writes the reports. Lives on the main thread, which stays free for signals
/// and the terminal.
class ReplayRun : public QObject
{
    Q_OBJECT

public:
    ReplayRun(const ReplayOptions &options, const Installation &installation);

    /// Runs the application's event loop until all is done; gives the exit code.
    int run();

private:
    void startWorkers();
    void scriptEnded(int index, const ScriptResult &result);
    void stopRequested();
    void finish();
    void writeReports();
    int exitCode() const;

    const ReplayOptions m_options;
    const Installation m_installation;
    SignalWatcher m_signals;
    ProgressView m_view;
    QElapsedTimer m_clock;
    std::vector<ScriptResult> m_results;
    std::vector<std::unique_ptr<ReplayWorker>> m_workers;
    std::atomic_int m_nextScript = 0;
    qsizetype m_ended = 0;
    bool m_stopping = false;
    bool m_reportFailed = false;
};

/// The exit code for what came of the scripts.
int exitCodeOf(const std::vector<ScriptResult> &results);

} // namespace Vantle::Tool::Replay
