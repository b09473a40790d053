#pragma once

#include "tracelib/configuration.h"

#include <memory>

namespace corvaline::tracelib {

/// Sets the run-time fields of \p point as the current configuration has it.
void decide(TracePoint &point);

/// Where a visit of \p point goes now; null if its group is off.
std::shared_ptr<const Sink> sinkFor(const TracePoint &point);

} // namespace corvaline::tracelib
