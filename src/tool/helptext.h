#pragma once

#include "tool/command.h"

namespace Vantle::Tool {

/// The help of the tool as a whole: its commands, in a line each.
QString generalHelp(const QList<Command> &commands);

/// The help of one command, with its options and examples.
QString commandHelp(const Command &command);

} // namespace Vantle::Tool
