#include "agent/recordingsession.h"

#include "agent/statementmessages.h"
#include "protocol/connection.h"
#include "protocol/messages.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

namespace Vantle::Agent {

namespace {

void forward(Protocol::Connection *connection, Protocol::LogMessage::Level level, const std::string &message)
{
    connection->notify(Protocol::Method::log, Protocol::LogMessage{level, QString::fromStdString(message)}.toJson());
}

// Where messages go once there is no tool to show them to: the libraries must
// always have a logger.
class SilentLogger final : public Logger
{
public:
    void info(const std::string &) override {}
    void warning(const std::string &) override {}
    void level3(const std::string &) override {}
    void level4(const std::string &) override {}
};

SilentLogger silence;

} // namespace

void LogForwarder::info(const std::string &message)
{
    forward(m_connection, Protocol::LogMessage::Info, message);
}

void LogForwarder::warning(const std::string &message)
{
    forward(m_connection, Protocol::LogMessage::Warning, message);
}

RecordingSession::RecordingSession(const QtWrapper::WrapperConfig &config, Protocol::Connection *connection)
    : m_log(connection)
    , m_application(config)
{
    QtQuickCommon::setLogger(&m_log);
    QtWrapper::setupQtQuick();
    m_application.setStatementHandler([connection](const EventData &statement) {
        connection->notify(Protocol::Method::statement, toMessage(statement).toJson());
    });
    m_watcher.start();
}

RecordingSession::~RecordingSession()
{
    m_watcher.stop();
    QtQuickCommon::setLogger(&silence);
}

} // namespace Vantle::Agent
