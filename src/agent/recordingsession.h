#pragma once

#include "agent/eventwatcher.h"
#include "hook/logger.h"
#include "wrappers/qt/application.h"

namespace Vantle::Protocol {
class Connection;
}

namespace Vantle::Agent {

/// Sends the libraries' messages to the tool.
class LogForwarder final : public Logger
{
public:
    explicit LogForwarder(Protocol::Connection *connection) : m_connection(connection) {}

    void info(const std::string &message) override;
    void warning(const std::string &message) override;
    /// Details stay inside the program.
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}

private:
    Protocol::Connection *m_connection;
};

/// Recording, from first to last: as long as this lives, what the user does
/// goes to the tool as statements. Its end sends what is still pending.
class RecordingSession
{
public:
    /// \p connection must outlive the session.
    RecordingSession(const QtWrapper::WrapperConfig &config, Protocol::Connection *connection);
    ~RecordingSession();

private:
    Q_DISABLE_COPY_MOVE(RecordingSession)

    // In this order: the watcher feeds a recorder, which needs the application.
    LogForwarder m_log;
    QtWrapper::Application m_application;
    EventWatcher m_watcher;
};

} // namespace Vantle::Agent
