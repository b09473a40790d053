#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>

namespace Vantle::Tool {

/// Makes settings directories in \p directory, which are empty, and gives the
/// environment in which a program uses them in place of the user's own.
QMap<QString, QString> freshSettings(const QString &directory);

} // namespace Vantle::Tool
