#pragma once

#include "agent/digestreporter.h"
#include "agent/recording/eventwatcher.h"

#include <memory>

namespace Vantle::Protocol {
class Connection;
}

namespace Vantle::Agent {

class Host;

/// Recording, from first to last: as long as this lives, what the user does
/// goes to the tool as statements. Its end sends what is still pending.
class RecordingSession
{
public:
    /// Both must outlive the session. With \p digests the tool learns what there
    /// is behind each statement, too.
    RecordingSession(Host *host, Protocol::Connection *connection, bool digests = false);
    ~RecordingSession();

private:
    Q_DISABLE_COPY_MOVE(RecordingSession)

    void send(const EventData &statement);
    void sendOutlook(const QList<EventData> &statements);

    Host *m_host;
    Protocol::Connection *m_connection;
    std::unique_ptr<DigestReporter> m_digests; ///< null without
    EventWatcher m_watcher;
};

} // namespace Vantle::Agent
