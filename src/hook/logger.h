#pragma once

#include "hook/hookglobal.h"

#include <string>

namespace Vantle {

/// Where a host wants the libraries' messages to go.
///
/// Implemented by the host. The text of a message is UTF-8 and lives only for
/// the call. Called on the thread that logs, which may be any thread that the
/// host lets into the libraries.
class VANTLEHOOK_EXPORT Logger
{
public:
    virtual ~Logger();

    /// Progress.
    virtual void info(const std::string &message) = 0;
    /// Problems.
    virtual void warning(const std::string &message) = 0;
    /// Detail that is of interest to whoever looks into a problem.
    virtual void level3(const std::string &message) = 0;
    /// Detail that is of interest to the developers of the libraries alone.
    virtual void level4(const std::string &message) = 0;
};

} // namespace Vantle
