#pragma once

#include "tool/command.h"
#include "tool/replay/replayoptions.h"

#include <optional>

namespace Vantle::Tool::Replay {

/// `vantle replay`.
Command replayCommand();

/// What the arguments ask for. Nothing if a value makes no sense; \p error
/// says which one.
std::optional<ReplayOptions> replayOptions(const Arguments &arguments, QString *error);

} // namespace Vantle::Tool::Replay
