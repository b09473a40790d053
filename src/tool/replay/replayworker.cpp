#include "tool/replay/replayworker.h"

#include "tool/replay/scriptrun.h"
#include "tool/replay/virtualdisplay.h"

namespace Vantle::Tool::Replay {

namespace {

QMap<QString, QString> offscreenEnvironment()
{
    QMap<QString, QString> environment{{QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen")}};
    // There is no GPU to be relied on there.
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    return environment;
}

bool hasDisplay()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
        || qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

} // namespace

ReplayWorker::ReplayWorker(const ReplayOptions &options, const Installation &installation, std::atomic_int *nextScript)
    : m_options(options)
    , m_installation(installation)
    , m_nextScript(nextScript)
{
}

bool ReplayWorker::needsOwnDisplay(const ReplayOptions &options)
{
    if (options.offscreen || options.shareDisplay)
        return false;
    return options.workers > 1 || (!hasDisplay() && VirtualDisplay::isAvailable());
}

void ReplayWorker::stop()
{
    m_stopped = true;
    const QMutexLocker locker(&m_lock);
    if (m_current)
        m_current->stop();
}

void ReplayWorker::run()
{
    if (m_options.offscreen) {
        runScripts(offscreenEnvironment(), QString());
    } else if (needsOwnDisplay(m_options)) {
        VirtualDisplay display;
        const QString error = display.start();
        runScripts(display.environment(), error);
    } else {
        runScripts({}, QString());
    }
}

void ReplayWorker::runScripts(const QMap<QString, QString> &environment, const QString &displayError)
{
    const auto count = static_cast<int>(m_options.scripts.size());
    for (int index = (*m_nextScript)++; index < count; index = (*m_nextScript)++) {
        Q_EMIT begun(index);
        ScriptResult result;
        result.file = m_options.scripts.at(index);
        result.startedAt = QDateTime::currentDateTime();
        result.message = m_stopped ? QStringLiteral("stopped by the user") : displayError;
        if (result.message.isEmpty())
            result = runScript(index, environment);
        Q_EMIT ended(index, result);
    }
}

ScriptResult ReplayWorker::runScript(int index, const QMap<QString, QString> &environment)
{
    ScriptRun script(m_options, m_installation, m_options.scripts.at(index), environment);
    // Receivers that live elsewhere get copies from their own event loops.
    connect(&script, &ScriptRun::progressed, &script,
            [this, index](const Progress &progress) { Q_EMIT progressed(index, progress); });
    connect(&script, &ScriptRun::failed, &script, [this, index](const Step &step) { Q_EMIT failed(index, step); });
    {
        const QMutexLocker locker(&m_lock);
        m_current = &script;
        if (m_stopped)
            script.stop();
    }
    ScriptResult result = script.run();
    const QMutexLocker locker(&m_lock);
    m_current = nullptr;
    return result;
}

} // namespace Vantle::Tool::Replay
