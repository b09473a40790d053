#pragma once

#include "tool/inspect/inspectoptions.h"
#include "tool/signalwatcher.h"

#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>

namespace Vantle::Tool::Inspect {

/// One look at a program, from its start to its end. What was asked for is all
/// that goes to standard output.
class InspectSession : public QObject
{
    Q_OBJECT

public:
    InspectSession(const InspectOptions &options, const Installation &installation, QObject *parent = nullptr);

    /// Looks, running the application's event loop; gives the exit code.
    int run();

private:
    enum class State {
        Starting,
        Looking,
        Ending
    };
    using ResultHandler = std::function<void(const QJsonObject &result)>;

    void startProgram();
    void beginLooking();
    void waitForWindow();
    void look();
    void lookAtTree();
    void lookAtObject();
    void lookAtProperties(int handle, const QJsonObject &description);
    void lookAtFunctions();
    void lookAtNames();

    void request(const QString &method, const QJsonObject &params, ResultHandler handler);
    void objectNotFound(const Protocol::Error &error);
    void requestFailed(const QString &method, const Protocol::Error &error);
    void print(const QString &text, const QJsonObject &json);
    void takeLog(const QJsonObject &params);

    void stopRequested();
    void giveUp(const QString &reason);
    void endProgram();
    void programEnded(const ProgramEnd &end);
    void failWith(int exitCode);
    void leave();

    const InspectOptions m_options;
    const Installation m_installation;
    SignalWatcher m_signals;
    ProgramUnderTest m_program;
    QTimer m_quitTimer;
    State m_state = State::Starting;
    int m_exitCode = 0;
};

} // namespace Vantle::Tool::Inspect
