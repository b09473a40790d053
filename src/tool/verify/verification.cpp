#include "tool/verify/verification.h"

#include "tool/console.h"
#include "tool/exitcode.h"
#include "tool/replay/results.h"
#include "tool/replay/resulttext.h"
#include "tool/replay/scriptrun.h"
#include "tool/signalwatcher.h"
#include "tool/treefile.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <algorithm>

namespace Vantle::Tool::Verify {

using Replay::Answer;
using Replay::ProgramSession;
using Replay::ScriptResult;
using Replay::Verdict;

namespace {

using namespace std::chrono_literals;

// What a statement sets off may take its time in either program. After the first
// difference there is little left to wait for.
constexpr std::chrono::milliseconds digestLimit = 1500ms;
constexpr std::chrono::milliseconds furtherDigestLimit = 100ms;
constexpr std::chrono::milliseconds digestPause = 20ms;

// A cursor that blinks has had both its states in this time, and an animation
// has come to its end.
constexpr std::chrono::milliseconds endLimit = 5s;
constexpr std::chrono::milliseconds endPause = 150ms;

constexpr qsizetype mostLines = 20;

QString endText(const ProgramEnd &end)
{
    return end.crashed ? QStringLiteral("signal %1").arg(end.number) : QStringLiteral("exit code %1").arg(end.number);
}

} // namespace

Verification::Verification(const Evidence &evidence, const Replay::ReplayOptions &options,
                           const Installation &installation)
    : m_evidence(evidence)
    , m_options(options)
    , m_installation(installation)
{
    m_options.launch.settings.record = false;
    m_options.launch.settings.digests = false;
}

int Verification::run()
{
    Console::say(QStringLiteral("verifying: the script is replayed in a fresh instance"));
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("recorded.js"));
    QFile file(path);
    const QByteArray text = m_evidence.script.toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush()) {
        Console::say(QStringLiteral("cannot verify: cannot write \"%1\": %2").arg(path, file.errorString()));
        return Failed;
    }
    m_options.scripts = QStringList{path};
    Replay::ScriptRun script(m_options, m_installation, path, {});
    script.setObserver(this);
    const SignalWatcher signal;
    QObject::connect(&signal, &SignalWatcher::stopRequested, &script, &Replay::ScriptRun::stop);
    return judge(script.run());
}

void Verification::statementDone(ProgramSession *session, int line)
{
    const QList<RecordedStatement> &statements = m_evidence.statements;
    const auto statement = std::find_if(statements.cbegin(), statements.cend(),
                                        [line](const RecordedStatement &one) { return one.line == line; });
    if (statement == statements.cend() || statement->digests.isEmpty() || !session->isRunning())
        return;
    if (digestComesBack(session, statement->digests))
        m_differsSince = -1;
    else if (m_differsSince < 0 && session->isRunning())
        m_differsSince = statement - statements.cbegin();
}

bool Verification::digestComesBack(ProgramSession *session, const QStringList &digests)
{
    const QDeadlineTimer deadline(m_differsSince < 0 ? digestLimit : furtherDigestLimit);
    for (;;) {
        const bool isLast = deadline.hasExpired();
        const Answer answer = session->request(Protocol::Method::digest, {}, treeLimit);
        const auto digest = Protocol::Digest::fromJson(answer.result.toObject());
        if (answer.kind != Answer::Result || !digest || digests.contains(digest->value))
            return true;
        if (isLast || !session->pause(digestPause))
            return false;
    }
}

void Verification::scriptDone(ProgramSession *session)
{
    // What the last statement set off may end it a little later.
    if (m_evidence.end)
        session->waitForEnd(endLimit);
    if (m_evidence.end || m_evidence.snapshot.isEmpty())
        return;
    const QDeadlineTimer deadline(endLimit);
    for (;;) {
        const bool isLast = deadline.hasExpired();
        const Answer answer = session->request(Protocol::Method::snapshot, {}, treeLimit);
        if (answer.kind != Answer::Result) {
            m_problem = answer.error.message;
            return;
        }
        m_differences = compareSnapshots(m_evidence.snapshot, m_evidence.laterSnapshot, answer.result.toObject());
        m_wasCompared = true;
        if (m_differences.isNone() || isLast || !session->pause(endPause))
            return;
    }
}

int Verification::judge(const ScriptResult &result)
{
    if (result.verdict == Verdict::NotRun) {
        Console::say(QStringLiteral("could not verify: %1").arg(result.message));
        return Failed;
    }
    const QList<Replay::Step> failures = result.failures();
    if (!failures.isEmpty() && !endedAsRecorded(result, failures.first())) {
        QStringList lines = Replay::failureLines(failures.first());
        lines.removeFirst(); // the place, in a file that is gone
        return sayDifferent(lines, QStringLiteral("the replay ended at line %1").arg(failures.first().position.line));
    }
    const QString end = endDifference(result);
    if (!end.isEmpty())
        return sayDifferent({end}, firstDifference());
    if (!m_evidence.snapshot.isEmpty() && !m_wasCompared)
        return sayDifferent({QStringLiteral("nothing could be compared at the end: %1").arg(m_problem)},
                            firstDifference());
    if (!m_differences.isNone())
        return sayDifferent(m_differences.lines, firstDifference());
    Console::say(m_wasCompared ? QStringLiteral("came back: %1, %2 and %3 are as recorded")
                                     .arg(Replay::counted(m_evidence.statements.size(), QStringLiteral("statement")),
                                          Replay::counted(m_differences.objects, QStringLiteral("object")),
                                          Replay::counted(m_differences.pictures, QStringLiteral("picture")))
                               : QStringLiteral("came back: %1, and the program ended as recorded")
                                     .arg(Replay::counted(m_evidence.statements.size(), QStringLiteral("statement"))));
    return Success;
}

/// Whether the error that ended the script is just that its last statement ended
/// the program, as it did before.
bool Verification::endedAsRecorded(const ScriptResult &result, const Replay::Step &failure) const
{
    const bool isAtTheLast = !m_evidence.statements.isEmpty()
        && failure.position.line >= m_evidence.statements.last().line;
    return isAtTheLast && m_evidence.end && result.programEnd
        && endText(*result.programEnd) == endText(*m_evidence.end);
}

/// How the end of the program differs from that which was recorded; empty if it does not.
QString Verification::endDifference(const ScriptResult &result) const
{
    const std::optional<ProgramEnd> &replayed = result.programEnd;
    const QString recorded = m_evidence.end ? QStringLiteral("the program ended with %1").arg(endText(*m_evidence.end))
                                            : QStringLiteral("the program ran to the end of the recording");
    if (!m_evidence.end && result.verdict == Verdict::ProgramDied)
        return QStringLiteral("%1; replayed, %2").arg(recorded, result.message);
    if (!m_evidence.end)
        return QString();
    if (!replayed)
        return QStringLiteral("%1; replayed, it did not end").arg(recorded);
    if (endText(*replayed) != endText(*m_evidence.end))
        return QStringLiteral("%1; replayed, it ended with %2").arg(recorded, endText(*replayed));
    return QString();
}

QString Verification::firstDifference() const
{
    if (m_differsSince < 0)
        return QStringLiteral("nothing of it showed after any of the statements");
    return QStringLiteral("it first differed after statement %1, %2")
        .arg(m_differsSince + 1)
        .arg(m_evidence.statements.at(m_differsSince).text);
}

int Verification::sayDifferent(const QStringList &lines, const QString &where) const
{
    Console::say(QStringLiteral("did not come back: %1; %2")
                     .arg(Replay::counted(lines.size(), QStringLiteral("difference")), where));
    const QStringList shown = lines.mid(0, mostLines);
    for (const QString &line : shown)
        Console::say(QStringLiteral("  ") + line);
    if (lines.size() > mostLines)
        Console::say(QStringLiteral("  and %1 more").arg(lines.size() - mostLines));
    return ChecksFailed;
}

} // namespace Vantle::Tool::Verify
