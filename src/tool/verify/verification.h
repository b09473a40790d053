#pragma once

#include "tool/installation.h"
#include "tool/replay/replayoptions.h"
#include "tool/replay/results.h"
#include "tool/replay/scriptobserver.h"
#include "tool/verify/evidence.h"
#include "tool/verify/snapshotcomparison.h"

namespace Vantle::Tool::Verify {

/// Replays a script that was just recorded in a fresh instance of its program, and
/// holds what comes of it against the recording: after each statement in short, at
/// the end object by object and picture by picture.
///
/// Says on the terminal how it went. Runs event loops while it waits, and a SIGINT
/// ends it.
class Verification : private Replay::ScriptObserver
{
public:
    /// \p options say how the program is started; their scripts are of no account.
    Verification(const Evidence &evidence, const Replay::ReplayOptions &options, const Installation &installation);

    /// Replays and compares; gives the exit code of the command.
    int run();

private:
    void statementDone(Replay::ProgramSession *session, int line) override;
    void scriptDone(Replay::ProgramSession *session) override;

    bool digestComesBack(Replay::ProgramSession *session, const QStringList &digests);
    int judge(const Replay::ScriptResult &result);
    int sayDifferent(const QStringList &lines, const QString &where) const;
    QString firstDifference() const;
    bool endedAsRecorded(const Replay::ScriptResult &result, const Replay::Step &failure) const;
    QString endDifference(const Replay::ScriptResult &result) const;

    const Evidence m_evidence;
    Replay::ReplayOptions m_options;
    const Installation m_installation;
    SnapshotDifferences m_differences;
    bool m_wasCompared = false;
    QString m_problem;             ///< why nothing could be compared at the end
    qsizetype m_differsSince = -1; ///< index of the statement since which the digests have differed
};

} // namespace Vantle::Tool::Verify
