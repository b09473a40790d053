#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace Vantle::Agent {

/// Where the tool that started the program waits for the agent.
struct Invitation
{
    QString socket;
    QByteArray token;
};

/// The name under which Qt finds the plugin.
QString pluginKey();

/// Reads what the tool left in the environment and takes it out again, along
/// with the settings that made Qt load the plugin, so that the programs that
/// this one starts are left alone. Nothing if no tool waits.
///
/// Changes the process's environment: to be called before other threads run.
std::optional<Invitation> takeInvitation();

/// \p list without the entries equal to \p entry, which \p separator parts.
QByteArray withoutEntry(const QByteArray &list, char separator, const QByteArray &entry);

/// \p list, whose entries are paths, without those that lead to \p directory,
/// however they are written.
QByteArray withoutDirectory(const QByteArray &list, char separator, const QByteArray &directory);

} // namespace Vantle::Agent
