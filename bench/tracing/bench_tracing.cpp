// What a trace statement costs: off, against a loop that does nothing and one
// that does one load; on, with a sink that takes nothing.

#include "tracelib/configuration.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/tracing.h"

#include <QtCore/QPointF>
#include <QtCore/QString>

#include <benchmark/benchmark.h>

#include <string_view>

namespace {

using corvaline::tracelib::TracePoint;
using corvaline::tracelib::VariableSnapshot;

/// Groups and a sink that takes nothing, for the time of one benchmark.
class TracingWith
{
public:
    explicit TracingWith(std::string_view groups)
    {
        corvaline::tracelib::setSink(
            [](const TracePoint &, const char *text, VariableSnapshot *) { benchmark::DoNotOptimize(text); });
        corvaline::tracelib::setGroups(groups);
    }
    ~TracingWith()
    {
        corvaline::tracelib::setGroups("");
        corvaline::tracelib::setSink({});
    }
    TracingWith(const TracingWith &) = delete;
    TracingWith &operator=(const TracingWith &) = delete;
};

void baselineEmptyLoop(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::ClobberMemory();
}
BENCHMARK(baselineEmptyLoop);

void baselineOneLoad(benchmark::State &state)
{
    volatile std::uintptr_t word = 0;
    for (auto _ : state) {
        if (word != 0)
            state.SkipWithError("the word never changes");
        benchmark::ClobberMemory();
    }
}
BENCHMARK(baselineOneLoad);

void statementWhileTracingIsOff(benchmark::State &state)
{
    const TracingWith tracing("");
    const QString text = QStringLiteral("a text that would have to be converted");
    for (auto _ : state) {
        VANTLE_TRACE("Text " << text << " at " << QPointF(1, 2) << 17);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(statementWhileTracingIsOff);

void statementWhileAnotherGroupIsOn(benchmark::State &state)
{
    const TracingWith tracing("other");
    const QString text = QStringLiteral("a text that would have to be converted");
    for (auto _ : state) {
        VANTLE_TRACE("Text " << text << " at " << QPointF(1, 2) << 17);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(statementWhileAnotherGroupIsOn);

void activeStatementWithoutPieces(benchmark::State &state)
{
    const TracingWith tracing("qtquick");
    for (auto _ : state)
        VANTLE_TRACE();
}
BENCHMARK(activeStatementWithoutPieces);

void activeStatementWithFivePieces(benchmark::State &state)
{
    const TracingWith tracing("qtquick");
    const QString text = QStringLiteral("a text that has to be converted");
    for (auto _ : state)
        VANTLE_TRACE("Text " << text << " at " << QPointF(1, 2) << 17);
}
BENCHMARK(activeStatementWithFivePieces);

} // namespace
