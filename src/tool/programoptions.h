#pragma once

#include "protocol/messages.h"
#include "tool/command.h"

#include <chrono>
#include <optional>

namespace Vantle::Tool {

class Arguments;

/// What the commands that start a program have in common: how long its start
/// may take, and what the agent needs to know about it.

/// `--start-timeout SECONDS`
Option startTimeoutOption();

/// `--extensions DIR`, which can be repeated, and `--names FILE`.
QList<Option> agentOptions();

/// Reads the options that agentOptions() gives into \p settings, as full paths.
/// False, and the reason in \p error, if a directory or the file is not there
/// or can't be what it has to be: nothing needs to be started then.
bool readAgentOptions(const Arguments &arguments, Protocol::HelloResult *settings, QString *error);

/// The time that the option \p name gives in seconds, or \p otherwise if it
/// did not come. Nothing, and the reason in \p error, for anything but a
/// number above 0 and up to a day.
std::optional<std::chrono::milliseconds> timeOption(const Arguments &arguments, const QString &name,
                                                    std::chrono::milliseconds otherwise, QString *error);

/// How long the program may take to load the agent; see timeOption().
std::optional<std::chrono::milliseconds> startTimeout(const Arguments &arguments, QString *error);

} // namespace Vantle::Tool
