#include "agent/host.h"

#include "protocol/connection.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

namespace Vantle::Agent {

namespace {

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

void forward(Protocol::Connection *connection, Protocol::LogMessage::Level level, const QString &message)
{
    connection->notify(Protocol::Method::log, Protocol::LogMessage{level, message}.toJson());
}

QtWrapper::WrapperConfig configFrom(const Protocol::HelloResult &settings)
{
    QtWrapper::WrapperConfig config;
    config.compressionDebugLevel = static_cast<quint32>(qMax(0, settings.debugCompression));
    for (const QString &className : settings.classesWithoutCoordinates)
        config.classesWithoutCoordinates.append(className.toUtf8());
    return config;
}

} // namespace

void LogForwarder::info(const std::string &message)
{
    forward(m_connection, Protocol::LogMessage::Info, QString::fromStdString(message));
}

void LogForwarder::warning(const std::string &message)
{
    forward(m_connection, Protocol::LogMessage::Warning, QString::fromStdString(message));
}

Host::Host(const Protocol::HelloResult &settings, Protocol::Connection *connection, const QString &scratch)
    : m_log(connection)
    , m_application(configFrom(settings))
    , m_isStrict(settings.strict)
{
    QtQuickCommon::setLogger(&m_log);
    QtWrapper::setupQtQuick();
    QtWrapper::setStandardExtensionEnabled(settings.standardExtension);
    m_extensionPath = std::make_unique<ExtensionPath>(settings.extensionDirectories, scratch);
    if (!settings.namesFile.isEmpty())
        readNames(settings.namesFile);
}

Host::~Host()
{
    QtQuickCommon::setLogger(&silence);
}

void Host::readNames(const QString &path)
{
    QString error;
    const QtWrapper::NamesFile names = QtWrapper::NamesFile::read(path, &error);
    if (error.isEmpty())
        m_application.setNames(names);
    else
        m_log.warning(QStringLiteral("no aliases are known: %1").arg(error).toStdString());
}

} // namespace Vantle::Agent
