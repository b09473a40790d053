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

void removeFromVariable(const char *variable, char separator, const QByteArray &entry)
{
    const QByteArray rest = withoutEntry(qgetenv(variable), separator, entry);
    if (rest.isEmpty())
        qunsetenv(variable);
    else
        qputenv(variable, rest);
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

std::optional<Invitation> takeInvitation()
{
    namespace Variable = Protocol::Variable;
    const Invitation invitation{QFile::decodeName(qgetenv(Variable::socket)), qgetenv(Variable::token)};
    qunsetenv(Variable::socket);
    qunsetenv(Variable::token);
    removeFromVariable(GenericPlugins, ',', pluginKey().toLatin1());
    removeFromVariable(PluginPath, QDir::listSeparator().toLatin1(), ownPluginDirectory());
    if (invitation.socket.isEmpty() || invitation.token.isEmpty())
        return std::nullopt;
    return invitation;
}

} // namespace Vantle::Agent
