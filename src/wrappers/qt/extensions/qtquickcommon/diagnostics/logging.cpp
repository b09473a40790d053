#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

#include "hook/logger.h"

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <string>

namespace Vantle::QtQuickCommon {

namespace {

Logger *currentLogger = nullptr;

constexpr std::size_t bufferSize = 1024;

std::string formatMessage(const char *format, std::va_list arguments)
{
    // From the heap, since messages also come from deep inside the program
    // under test, whose stacks may be small. Zero-filled, so that it holds a
    // terminated text whatever the formatting makes of a faulty argument.
    const auto buffer = std::make_unique<char[]>(bufferSize);
    std::vsnprintf(buffer.get(), bufferSize, format, arguments);
    return std::string(buffer.get());
}

} // namespace

// A variadic function can't hand its arguments on, only a va_list. The pointer
// isn't tested: a host that forgot the logger is to notice at the first message.
#define VANTLE_LOG_WITH(operation) \
    std::va_list arguments; \
    va_start(arguments, format); \
    const std::string message = formatMessage(format, arguments); \
    va_end(arguments); \
    currentLogger->operation(message)

void setLogger(Logger *logger)
{
    currentLogger = logger;
}

void logInfo(const char *format, ...)
{
    VANTLE_LOG_WITH(info);
}

void logWarning(const char *format, ...)
{
    VANTLE_LOG_WITH(warning);
}

void logLevel3(const char *format, ...)
{
    VANTLE_LOG_WITH(level3);
}

void logLevel4(const char *format, ...)
{
    VANTLE_LOG_WITH(level4);
}

#undef VANTLE_LOG_WITH

} // namespace Vantle::QtQuickCommon
