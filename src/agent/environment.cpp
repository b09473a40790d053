#include "agent/environment.h"

#include "protocol/endpoint.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QList>

#include <dlfcn.h>

namespace Vantle::Agent {

namespace {

constexpr char GenericPlugins[] = "QT_QPA_GENERIC_PLUGINS";
constexpr char PluginPath[] = "QT_PLUGIN_PATH";

// The directory that stands in QT_PLUGIN_PATH for us: the one above "generic".
QByteArray ownPluginDirectory()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void *>(&ownPluginDirectory), &info) || !info.dli_fname)
        return {};
    const QDir generic = QFileInfo(QFile::decodeName(info.dli_fname)).dir();
    return QFile::encodeName(QDir::cleanPath(generic.filePath(QStringLiteral(".."))));
}

void setOrUnset(const char *variable, const QByteArray &value)
{
    if (value.isEmpty())
        qunsetenv(variable);
    else
        qputenv(variable, value);
}

QString canonicalPath(const QByteArray &path)
{
    return path.isEmpty() ? QString() : QFileInfo(QFile::decodeName(path)).canonicalFilePath();
}

} // namespace

QString pluginKey()
{
    return QStringLiteral("vantle");
}

QByteArray withoutEntry(const QByteArray &list, char separator, const QByteArray &entry)
{
    QList<QByteArray> entries = list.split(separator);
    entries.removeAll(entry);
    return entries.join(separator);
}

QByteArray withoutDirectory(const QByteArray &list, char separator, const QByteArray &directory)
{
    const QString unwanted = canonicalPath(directory);
    QList<QByteArray> entries = list.split(separator);
    entries.removeIf([&](const QByteArray &entry) {
        return entry == directory || (!unwanted.isEmpty() && canonicalPath(entry) == unwanted);
    });
    return entries.join(separator);
}

std::optional<Invitation> takeInvitation()
{
    namespace Variable = Protocol::Variable;
    const Invitation invitation{QFile::decodeName(qgetenv(Variable::socket)), qgetenv(Variable::token)};
    qunsetenv(Variable::socket);
    qunsetenv(Variable::token);
    setOrUnset(GenericPlugins, withoutEntry(qgetenv(GenericPlugins), ',', pluginKey().toLatin1()));
    setOrUnset(PluginPath, withoutDirectory(qgetenv(PluginPath), QDir::listSeparator().toLatin1(),
                                            ownPluginDirectory()));
    if (invitation.socket.isEmpty() || invitation.token.isEmpty())
        return std::nullopt;
    return invitation;
}

} // namespace Vantle::Agent
