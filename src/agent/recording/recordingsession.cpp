#include "agent/recording/recordingsession.h"

#include "agent/host.h"
#include "agent/recording/hoststatements.h"
#include "agent/recording/statementmessages.h"
#include "protocol/connection.h"
#include "protocol/messages.h"

#include <QtCore/QDateTime>

#include <chrono>

namespace Vantle::Agent {

namespace {

// A tool that reads takes no time; the program isn't held up for one that doesn't.
constexpr std::chrono::milliseconds sendLimit(50);

} // namespace

RecordingSession::RecordingSession(Host *host, Protocol::Connection *connection, bool digests)
    : m_host(host)
    , m_connection(connection)
{
    if (digests)
        m_digests = std::make_unique<DigestReporter>(connection);
    m_host->application().setStatementHandler([this](const EventData &statement) { send(statement); });
    m_watcher.ledger().setObservers(
        [connection](const QString &text, const QtWrapper::SyntheticEvent &record) {
            const QTime time = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(record.timestamp)).time();
            const Protocol::Comment comment{text, time.toString(QStringLiteral("HH:mm:ss.zzz"))};
            connection->notify(Protocol::Method::comment, comment.toJson());
        },
        [this](const QList<EventData> &statements) { sendOutlook(statements); });
    m_watcher.start();
}

void RecordingSession::send(const EventData &statement)
{
    InputLedger &ledger = m_watcher.ledger();
    const EventData told = HostStatements::withContentPosition(statement, ledger.objectOf(statement));
    // Remarks on what came before stand ahead of it.
    ledger.noteStatement(statement);
    m_connection->notify(Protocol::Method::statement, toMessage(told).toJson());
    if (m_digests)
        m_digests->statementSent();
}

/// Told at once, since what the program does with the input may end it.
void RecordingSession::sendOutlook(const QList<EventData> &statements)
{
    Protocol::Pending pending;
    for (const EventData &statement : statements)
        pending.statements.append(toMessage(statement));
    m_connection->notify(Protocol::Method::pending, pending.toJson());
    m_connection->waitForSent(sendLimit);
}

RecordingSession::~RecordingSession()
{
    m_watcher.stop();
    m_host->application().setStatementHandler({});
}

} // namespace Vantle::Agent
