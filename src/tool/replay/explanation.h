#pragma once

#include "protocol/connection.h"
#include "tool/replay/results.h"

#include <QtCore/QStringList>

namespace Vantle::Tool::Replay {

/// What the agent's error tells about an object that was not found or not
/// ready. Empty for other errors.
Explanation explanationOf(const Protocol::Error &error);

/// An explanation in words, a line each, the closest candidate only.
QStringList explanationLines(const Explanation &explanation);

/// The properties that differ, a line each, in columns:
/// `text  expected "Save", found "Save as…"`.
QStringList differenceLines(const QList<Protocol::Difference> &differences);

} // namespace Vantle::Tool::Replay
