#pragma once

#include "tool/replay/results.h"

#include <QtCore/QByteArray>

#include <vector>

namespace Vantle::Tool::Replay {

/// The results as one HTML file for people, with everything in it: style,
/// behaviour and pictures. It is well-formed XML as well.
QByteArray htmlReport(const std::vector<ScriptResult> &results);

} // namespace Vantle::Tool::Replay
