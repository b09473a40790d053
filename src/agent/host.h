#pragma once

#include "agent/extensionpath.h"
#include "hook/logger.h"
#include "protocol/messages.h"
#include "wrappers/qt/application.h"

#include <memory>

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

/// What the libraries need around them: their configuration, the names of the
/// user's names file, and a way out for messages. Objects can be named, found
/// and acted on as long as this lives, whether or not anything is recorded.
class Host
{
public:
    /// \p connection must outlive the host. Files that are needed meanwhile are
    /// made in the directory \p scratch.
    Host(const Protocol::HelloResult &settings, Protocol::Connection *connection, const QString &scratch);
    ~Host();

    QtWrapper::Application &application() { return m_application; }

    /// Whether a name has to mean one object only.
    bool isStrict() const { return m_isStrict; }

private:
    Q_DISABLE_COPY_MOVE(Host)

    void readNames(const QString &path);

    // In this order: what the application says goes to the log.
    LogForwarder m_log;
    QtWrapper::Application m_application;
    std::unique_ptr<ExtensionPath> m_extensionPath;
    const bool m_isStrict;
};

} // namespace Vantle::Agent
