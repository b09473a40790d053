#pragma once

#include "tracelib/tracelibglobal.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace corvaline::tracelib {

class VariableSnapshot;

/// What kind of happening a trace point reports.
struct TracePointType
{
    enum Value : std::uint32_t {
        Failure = 0,
        Problem = 1,
        Progress = 2,
        Detail = 3
    };
};

/// One place in the source that can report its visits.
///
/// Has static storage duration and is initialised statically, so that a
/// visit needs no guard. The texts are not copied; they are string literals.
/// The layout is shared between binaries: fields keep their order and size.
struct TracePoint
{
    constexpr TracePoint(TracePointType::Value pointType, const char *sourceFile, unsigned int sourceLine,
                         const char *enclosingFunction, const char *groupName) noexcept
        : type(pointType)
        , file(sourceFile)
        , line(sourceLine)
        , function(enclosingFunction)
        , group(groupName)
    {
    }

    TracePointType::Value type;
    const char *file;
    unsigned int line;
    const char *function;
    const char *group;

    /// The configuration that `active` was decided for; 0 before the first visit.
    std::atomic<std::uintptr_t> decidedFor = 0;
    /// Whether messages are delivered. Follows the configuration, but may be
    /// cleared to silence this one point until the configuration changes.
    alignas(std::uintptr_t) std::atomic<bool> active = false;
};

static_assert(sizeof(TracePointType::Value) == 4);
static_assert(offsetof(TracePoint, active) == offsetof(TracePoint, decidedFor) + sizeof(std::uintptr_t));
static_assert(sizeof(TracePoint) == offsetof(TracePoint, active) + sizeof(std::uintptr_t));

namespace Internal {

/// Counts the configurations. Starts as undecided, when the environment has not
/// been looked at, and is off while no group is switched on.
inline constexpr std::uintptr_t tracingOff = 0;
inline constexpr std::uintptr_t tracingUndecided = 1;
extern CORVALINE_TRACELIB_EXPORT std::atomic<std::uintptr_t> currentConfiguration;

CORVALINE_TRACELIB_EXPORT bool advanceActiveVisit(TracePoint *point);

} // namespace Internal

/// To be called each time that the place of \p point is reached. True means
/// that the place is to build its message now and to hand it to
/// visitTracePoint(). May be called on every thread.
///
/// With tracing off this is one load and one branch, and \p point isn't touched.
inline bool advanceVisit(TracePoint *point)
{
    if (Internal::currentConfiguration.load(std::memory_order_relaxed) == Internal::tracingOff) [[likely]]
        return false;
    return Internal::advanceActiveVisit(point);
}

/// Delivers one visit with its finished message \p text, in UTF-8, to where
/// traces go. \p snapshot may be null and stays the caller's.
///
/// Nothing is delivered if the point's group has been switched off since, nor
/// for a place that is reached while a visit is being delivered on the same
/// thread. May be called on every thread.
CORVALINE_TRACELIB_EXPORT void visitTracePoint(const TracePoint *point, const char *text, VariableSnapshot *snapshot);

} // namespace corvaline::tracelib
