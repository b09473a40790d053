#pragma once

#include "tool/command.h"
#include "tool/doctorchecks.h"

namespace Vantle::Tool {

/// `vantle doctor`.
Command doctorCommand();

/// One check as a line for the terminal, with the way out behind a failure.
QString checkLine(const Check &check);

} // namespace Vantle::Tool
