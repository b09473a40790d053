#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace Vantle::Tool {

inline constexpr qint64 longestTextFile = qint64(64) << 20;
inline constexpr qint64 longestPicture = qint64(256) << 20;

/// What the file \p path holds. Nothing, and the reason in \p error without the
/// file's name, for one that can't be read, that is larger than \p limit bytes,
/// or that is no file but a device or a pipe, which may have no end or never
/// begin.
std::optional<QByteArray> readInput(const QString &path, qint64 limit, QString *error);

} // namespace Vantle::Tool
