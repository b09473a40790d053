#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <chrono>

namespace Vantle::Tool {

/// How long the agent may take to answer `tree`: every object is given its
/// name, which takes its time in a large scene.
inline constexpr std::chrono::seconds treeLimit(120);

/// Writes the agent's answer to `tree` into \p file, in place of what is there,
/// in the form of `vantle inspect --json`. Empty, or why it could not.
QString writeTreeFile(const QString &file, const QJsonObject &tree);

} // namespace Vantle::Tool
