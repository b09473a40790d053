#pragma once

#include "tracelib/tracelibglobal.h"

#include <functional>
#include <string_view>

namespace corvaline::tracelib {

struct TracePoint;
class VariableSnapshot;

/// Takes the visits. The arguments live only for the call; the message is
/// UTF-8 and not null, the snapshot may be. Called on the thread of the visit,
/// several at a time if several threads trace.
using Sink = std::function<void(const TracePoint &point, const char *text, VariableSnapshot *snapshot)>;

/// Switches on the groups named in \p groups, separated by commas, and all
/// others off; "*" stands for all groups. An empty text switches tracing off.
///
/// Holds from the next visit of each point on. Groups that were set here before
/// the first visit take the place of those in the environment. Like the other
/// functions of this header it may be called on every thread.
CORVALINE_TRACELIB_EXPORT void setGroups(std::string_view groups);

/// Sends the visits to \p sink instead of writing them as lines. An empty
/// function goes back to lines. A visit that is under way on another thread may
/// still reach the former sink.
CORVALINE_TRACELIB_EXPORT void setSink(Sink sink);

/// Takes groups and file from the environment as it is now: VANTLE_TRACE holds
/// the groups as for setGroups(), and VANTLE_TRACE_FILE the file that lines are
/// appended to. Without a file, or if it can't be opened, lines go to standard
/// error. A sink that was set stays.
CORVALINE_TRACELIB_EXPORT void configureFromEnvironment();

} // namespace corvaline::tracelib
