#pragma once

#include "tool/command.h"
#include "tool/inspect/inspectoptions.h"

#include <optional>

namespace Vantle::Tool::Inspect {

/// `vantle inspect`
Command inspectCommand();

/// What \p arguments ask for; nothing, and the reason in \p error, if their
/// values make no sense or don't go together.
std::optional<InspectOptions> inspectOptions(const Arguments &arguments, QString *error);

} // namespace Vantle::Tool::Inspect
