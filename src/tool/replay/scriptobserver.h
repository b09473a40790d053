#pragma once

namespace Vantle::Tool::Replay {

class ProgramSession;

/// Looks on while a script runs. Called on the script's thread, between two of its
/// statements; may ask the program, but has to leave it as it is.
class ScriptObserver
{
public:
    virtual ~ScriptObserver() = default;

    /// What stands in that line of the script has been done.
    virtual void statementDone(ProgramSession *session, int line) = 0;

    /// The script has come to its end, and the program still runs.
    virtual void scriptDone(ProgramSession *session) = 0;
};

} // namespace Vantle::Tool::Replay
