#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace Vantle::Tool {

/// Writes the agent's answer to `tree` into \p file, in place of what is there,
/// in the form of `vantle inspect --json`. Empty, or why it could not.
QString writeTreeFile(const QString &file, const QJsonObject &tree);

} // namespace Vantle::Tool
