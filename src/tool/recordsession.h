#pragma once

#include "tool/programundertest.h"
#include "tool/scriptwriter.h"
#include "tool/signalwatcher.h"
#include "tool/verify/evidence.h"

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>

#include <functional>
#include <optional>

namespace Vantle::Tool {

/// What `vantle record` was asked to do.
struct RecordOptions
{
    QString file; ///< empty: standard output only
    bool keepRunning = false;
    QString treeFile;    ///< empty: the objects at the end are not asked for
    bool verify = false; ///< gather what the script's replay is to be held against
    bool freshSettings = false;
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

    /// What to hold a replay of the script against; nothing if there was no
    /// recording, or nobody knows what it ended with.
    const std::optional<Verify::Evidence> &evidence() const { return m_evidence; }

private:
    enum class State {
        Starting,
        Recording,
        Stopping,
        Ending
    };

    void startProgram();
    void beginRecording();
    void takeStatement(const QJsonObject &params);
    void takeComment(const QJsonObject &params);
    void takePending(const QJsonObject &params);
    void takeLog(const QJsonObject &params);
    void addStatement(const Protocol::Statement &statement);
    void addPending();
    void stopRequested();
    void stopRecording();
    void stopOverdue();
    void takeDigest(const QJsonObject &params);
    void saveTree();
    void takeSnapshots();
    void askForSnapshot(const std::function<void(const QJsonObject &)> &take);
    void gatherEvidence();
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
    QList<Protocol::Statement> m_pending; ///< what a program that dies leaves to be written
    SignalWatcher m_signals;
    ProgramUnderTest m_program;
    QTemporaryDir m_settings; ///< of the program, where it has its own
    QTimer m_stopTimer;
    QList<Verify::RecordedStatement> m_statements;
    QJsonObject m_snapshot;
    QJsonObject m_laterSnapshot;
    std::optional<ProgramEnd> m_ownEnd;
    std::optional<Verify::Evidence> m_evidence;
    State m_state = State::Starting;
    int m_exitCode = 0;
    bool m_began = false;
    bool m_isSavingTree = false;
    bool m_isTakingSnapshot = false;
    bool m_synchronisationScheduled = false;
    bool m_writeFailureReported = false;
};

} // namespace Vantle::Tool
