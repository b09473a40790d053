#pragma once

#include "agent/recording/eventwatcher.h"

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
    /// Both must outlive the session.
    RecordingSession(Host *host, Protocol::Connection *connection);
    ~RecordingSession();

private:
    Q_DISABLE_COPY_MOVE(RecordingSession)

    Host *m_host;
    EventWatcher m_watcher;
};

} // namespace Vantle::Agent
