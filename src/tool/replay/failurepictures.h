#pragma once

#include "tool/replay/results.h"

#include <vector>

namespace Vantle::Tool::Replay {

/// Writes the picture of each failure into a directory beside \p junitFile,
/// "results-pictures" for "results.xml", and notes in the steps what the file is
/// called from there. Nothing is written where \p junitFile is no plain file, a
/// pipe for instance. Empty, or which picture can't be written.
QString keepFailurePictures(std::vector<ScriptResult> *results, const QString &junitFile);

} // namespace Vantle::Tool::Replay
