#pragma once

#include "tool/programundertest.h"
#include "tool/scriptwriter.h"
#include "tool/signalwatcher.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

namespace Vantle::Tool {

/// What `vantle record` was asked to do.
struct RecordOptions
{
    QString file; ///< empty: standard output only
    bool keepRunning = false;
    QString treeFile; ///< empty: the objects at the end are not asked for
    LaunchOptions launch;
};

/// One recording from the start of the program to the last line of the script.
///
/// Without a file the script is all that goes to standard output; what the
/// program prints there goes to standard error then.
class RecordSession : public QObject
{
    Q_OBJECT

public:
    RecordSession(const RecordOptions &options, const Installation &installation, QObject *parent = nullptr);

    /// Records, running the application's event loop; gives the exit code.
    int run();

private:
    enum class State { Starting, Recording, Stopping, Ending };

    void startProgram();
    void beginRecording();
    void takeStatement(const QJsonObject &params);
    void takeLog(const QJsonObject &params);
    void stopRequested();
    void stopRecording();
    void stopOverdue();
    void saveTree();
    void giveTreeUp(const QString &reason);
    void recordingStopped();
    void giveUp(const QString &reason);
    void programEnded(const ProgramEnd &end);
    void reportEndBeforeRecording(const ProgramEnd &end);
    void reportEndOfRecording(const ProgramEnd &end);
    void scheduleSynchronisation();
    void reportWriteFailure();
    void failWith(int exitCode);
    void leave();

    const RecordOptions m_options;
    const Installation m_installation;
    ScriptWriter m_script;
    SignalWatcher m_signals;
    ProgramUnderTest m_program;
    QTimer m_stopTimer;
    State m_state = State::Starting;
    int m_exitCode = 0;
    bool m_began = false;
    bool m_isSavingTree = false;
    bool m_synchronisationScheduled = false;
    bool m_writeFailureReported = false;
};

} // namespace Vantle::Tool
