#include "agent/recording/recordingsession.h"

#include "agent/host.h"
#include "agent/recording/statementmessages.h"
#include "protocol/connection.h"
#include "protocol/messages.h"

namespace Vantle::Agent {

RecordingSession::RecordingSession(Host *host, Protocol::Connection *connection, bool digests) : m_host(host)
{
    if (digests)
        m_digests = std::make_unique<DigestReporter>(connection);
    m_host->application().setStatementHandler([this, connection](const EventData &statement) {
        connection->notify(Protocol::Method::statement, toMessage(statement).toJson());
        if (m_digests)
            m_digests->statementSent();
    });
    m_watcher.start();
}

RecordingSession::~RecordingSession()
{
    m_watcher.stop();
    m_host->application().setStatementHandler({});
}

} // namespace Vantle::Agent
