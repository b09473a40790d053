#pragma once

#include "tool/command.h"

namespace Vantle::Tool {

/// The commands of the tool, in the order in which the help lists them. To add
/// one, write its file and name it here.
const QList<Command> &commands();

/// Does what a command line asks for; \p words are those behind the name of
/// the tool. Gives the exit code. Needs a QCoreApplication.
int runTool(const QStringList &words);

} // namespace Vantle::Tool
