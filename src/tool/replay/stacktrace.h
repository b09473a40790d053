#pragma once

#include "tool/replay/results.h"

#include <QtCore/QList>
#include <QtCore/QString>

namespace Vantle::Tool::Replay {

/// Under this name the engine knows what comes before every script.
inline constexpr char preludeName[] = "vantle:prelude";

/// The places of a JavaScript stack, innermost first, without our own. Columns
/// are not known to the engine. \p text is the `stack` of an Error.
QList<Position> positionsOfStack(const QString &text);

/// A file's name as people know it: relative to the current directory where
/// that is shorter.
QString shownFile(const QString &path);

/// `login.js:12:5`; without column or line where these are not known.
QString positionText(const Position &position);

} // namespace Vantle::Tool::Replay
