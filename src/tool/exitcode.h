#pragma once

namespace Vantle::Tool {

/// What the command's exit codes mean.
enum ExitCode : int {
    Success = 0,
    /// A check of a script failed, or an error ended a script.
    ChecksFailed = 1,
    /// The program under test crashed, or ended when it was still needed.
    ProgramCrashed = 2,
    /// The command could not do what it was asked to: wrong usage, a file
    /// that can't be written, a program that can't be started or reached.
    Failed = 3,
};

} // namespace Vantle::Tool
