#pragma once

#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

namespace Vantle {
class Logger;
}

namespace Vantle::QtQuickCommon {

/// Sends the library's messages to \p logger from now on.
///
/// The logger stays the caller's and must outlive the last message. The host
/// calls this before any event or window reaches the library, and before other
/// threads could log: the pointer is a plain variable. There is no default
/// logger; a message without one, or after \p logger was null, dereferences null.
VANTLEQTQUICKCOMMON_EXPORT void setLogger(Vantle::Logger *logger);

/// Each of these hands one message to the operation of the logger that has its
/// name. \p format and what follows are those of printf; text is UTF-8.
///
/// A message longer than 1023 bytes is cut there, without regard to where a
/// character ends. May be called on every thread that the logger tolerates. What
/// the logger throws passes through.
[[gnu::format(printf, 1, 2)]] void logInfo(const char *format, ...);
[[gnu::format(printf, 1, 2)]] void logWarning(const char *format, ...);
[[gnu::format(printf, 1, 2)]] void logLevel3(const char *format, ...);
[[gnu::format(printf, 1, 2)]] void logLevel4(const char *format, ...);

} // namespace Vantle::QtQuickCommon
