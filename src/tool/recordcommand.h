#pragma once

#include "tool/command.h"
#include "tool/recordsession.h"

#include <optional>

namespace Vantle::Tool {

/// `vantle record`.
Command recordCommand();

/// What the arguments ask for. Nothing if a value makes no sense; \p error
/// says which one.
std::optional<RecordOptions> recordOptions(const Arguments &arguments, QString *error);

} // namespace Vantle::Tool
