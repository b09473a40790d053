#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace Vantle::Tool::Replay {

/// Writes a file, and makes the folders that it lies in if they aren't there.
/// Empty, or why that can't be done.
QString writeWithFolders(const QString &path, const QByteArray &content);

} // namespace Vantle::Tool::Replay
