#pragma once

#include "tool/replay/results.h"

#include <QtCore/QByteArray>

#include <vector>

namespace Vantle::Tool::Replay {

/// The results in the XML that continuous integration servers read: a test
/// suite for each script, a test case for each check and, if an error ended
/// the script, one for that; the script itself is a case as well, so that one
/// without checks counts.
QByteArray junitReport(const std::vector<ScriptResult> &results);

} // namespace Vantle::Tool::Replay
