#include "tool/replay/replayrun.h"

#include "tool/console.h"
#include "tool/exitcode.h"
#include "tool/outputfile.h"
#include "tool/replay/failurepictures.h"
#include "tool/replay/htmlreport.h"
#include "tool/replay/junitreport.h"

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <utility>

namespace Vantle::Tool::Replay {

namespace {

bool writeReport(const QString &path, const QByteArray &content)
{
    const QString error = writeOutput(path, content);
    if (!error.isEmpty())
        Console::say(error);
    return error.isEmpty();
}

} // namespace

ReplayRun::ReplayRun(const ReplayOptions &options, const Installation &installation)
    : m_options(options)
    , m_installation(installation)
    , m_view(options.scripts)
    , m_results(static_cast<size_t>(options.scripts.size()))
{
    qRegisterMetaType<ScriptResult>();
    qRegisterMetaType<Progress>();
    qRegisterMetaType<Step>();
    connect(&m_signals, &SignalWatcher::stopRequested, this, &ReplayRun::stopRequested);
}

int ReplayRun::run()
{
    m_clock.start();
    // From the loop, since leaving it has to be possible at once.
    QMetaObject::invokeMethod(this, &ReplayRun::startWorkers, Qt::QueuedConnection);
    const int code = QCoreApplication::exec();
    for (const auto &worker : m_workers)
        worker->wait();
    return code;
}

void ReplayRun::startWorkers()
{
    const auto count = std::min<qsizetype>(m_options.workers, m_options.scripts.size());
    for (qsizetype i = 0; i < count; ++i) {
        auto worker = std::make_unique<ReplayWorker>(m_options, m_installation, &m_nextScript);
        connect(worker.get(), &ReplayWorker::begun, &m_view, &ProgressView::begin);
        connect(worker.get(), &ReplayWorker::progressed, &m_view, &ProgressView::update);
        connect(worker.get(), &ReplayWorker::failed, &m_view, &ProgressView::showFailure);
        connect(worker.get(), &ReplayWorker::ended, this, &ReplayRun::scriptEnded);
        worker->start();
        m_workers.push_back(std::move(worker));
    }
}

void ReplayRun::scriptEnded(int index, const ScriptResult &result)
{
    m_results.at(static_cast<size_t>(index)) = result;
    m_view.end(index, result);
    if (++m_ended == m_options.scripts.size())
        finish();
}

void ReplayRun::stopRequested()
{
    if (!std::exchange(m_stopping, true))
        m_view.showStopping();
    for (const auto &worker : m_workers)
        worker->stop();
}

void ReplayRun::finish()
{
    m_view.finish(m_results, m_clock.elapsed());
    writeReports();
    QCoreApplication::exit(exitCode());
}

void ReplayRun::writeReports()
{
    if (!m_options.junitFile.isEmpty()) {
        const QString error = keepFailurePictures(&m_results, m_options.junitFile);
        if (!error.isEmpty())
            Console::say(error);
        m_reportFailed = !error.isEmpty();
    }
    if (!m_options.junitFile.isEmpty() && !writeReport(m_options.junitFile, junitReport(m_results)))
        m_reportFailed = true;
    if (!m_options.reportFile.isEmpty() && !writeReport(m_options.reportFile, htmlReport(m_results)))
        m_reportFailed = true;
}

int ReplayRun::exitCode() const
{
    return m_reportFailed ? static_cast<int>(Failed) : exitCodeOf(m_results);
}

int exitCodeOf(const std::vector<ScriptResult> &results)
{
    int code = Success;
    for (const ScriptResult &result : results) {
        switch (result.verdict) {
        case Verdict::Passed: break;
        case Verdict::Failed: code = std::max<int>(code, ChecksFailed); break;
        case Verdict::ProgramDied: code = std::max<int>(code, ProgramCrashed); break;
        case Verdict::NotRun: code = std::max<int>(code, Failed); break;
        }
    }
    return code;
}

} // namespace Vantle::Tool::Replay
