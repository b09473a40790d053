#include "agent/recording/recordingsession.h"

#include "agent/host.h"
#include "agent/recording/statementmessages.h"
#include "protocol/connection.h"
#include "protocol/messages.h"

namespace Vantle::Agent {

RecordingSession::RecordingSession(Host *host, Protocol::Connection *connection) : m_host(host)
{
    m_host->application().setStatementHandler([connection](const EventData &statement) {
        connection->notify(Protocol::Method::statement, toMessage(statement).toJson());
    });
    m_watcher.start();
}

RecordingSession::~RecordingSession()
{
    m_watcher.stop();
    m_host->application().setStatementHandler({});
}

} // namespace Vantle::Agent
