#include "tracelib/tracepoint.h"

#include "tracelib/configuration_p.h"

namespace corvaline::tracelib {

namespace {

// A sink that reaches a trace statement itself would otherwise be called
// without end.
thread_local bool isDelivering = false;

class Delivery
{
public:
    Delivery() { isDelivering = true; }
    ~Delivery() { isDelivering = false; }
    Delivery(const Delivery &) = delete;
    Delivery &operator=(const Delivery &) = delete;
};

} // namespace

bool Internal::advanceActiveVisit(TracePoint *point)
{
    if (isDelivering)
        return false;
    const std::uintptr_t configuration = currentConfiguration.load(std::memory_order_acquire);
    if (point->decidedFor.load(std::memory_order_acquire) != configuration)
        decide(*point);
    return point->active.load(std::memory_order_relaxed);
}

void visitTracePoint(const TracePoint *point, const char *text, VariableSnapshot *snapshot)
{
    if (isDelivering)
        return;
    const std::shared_ptr<const Sink> sink = sinkFor(*point);
    if (!sink)
        return;
    const Delivery delivery;
    (*sink)(*point, text ? text : "", snapshot);
}

} // namespace corvaline::tracelib
