// What compression costs: streams of events through EventCompressor::eatEvent,
// and, as the baseline, the same records merely copied into a list.

#include "support/compressionobjects.h"
#include "support/syntheticevents.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventcompressor.h"

#include <benchmark/benchmark.h>

#include <list>
#include <vector>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using namespace VantleTest;

namespace {

struct FixedSettings : public UISettings
{
    qint32 dragDistance() const override { return 10; }
    quint32 doubleClickTime() const override { return 400; }
};

/// Ids, and nothing that rings.
struct SilentClock : public AlarmClock
{
    qint32 start(quint32) override { return ++lastId; }
    void stop(qint32) override {}

    qint32 lastId = 0;
};

using Events = std::vector<SyntheticEvent>;

const TestObjectPtr &item()
{
    static const TestObjectPtr object = makeObject("Window Item#canvas", itemClass());
    return object;
}

const TestObjectPtr &edit()
{
    static const TestObjectPtr object = makeObject("Window TextField#name", itemClass());
    return object;
}

/// A pointer that reports a thousand times a second, held down all the way.
Events drag(int moves)
{
    Events events{mousePress(item(), {0, 0}, 1000)};
    for (int i = 1; i <= moves; ++i)
        events.push_back(mouseMove(item(), {i % 800, i % 600}, 1000 + static_cast<quint64>(i)));
    events.push_back(mouseRelease(item(), {500, 500}, 1001 + static_cast<quint64>(moves)));
    return events;
}

/// A pointer that just moves about, after a turn of the wheel if \p scrolls.
Events moves(int count, bool scrolls)
{
    Events events;
    if (scrolls)
        events.push_back(wheel(item(), {1, 1}, {0, 15}, 1000));
    for (int i = 1; i <= count; ++i)
        events.push_back(mouseMove(item(), {i % 800, i % 600}, 1000 + static_cast<quint64>(i)));
    return events;
}

Events typing(int keys)
{
    Events events;
    for (int i = 0; i < keys; ++i) {
        const quint64 time = 1000 + static_cast<quint64>(i) * 20;
        const QByteArray text(1, static_cast<char>('a' + i % 26));
        events.push_back(keyPress(edit(), text, time));
        events.push_back(keyRelease(edit(), text, time + 10));
    }
    return events;
}

/// The key goes to what has the focus, the drag to what is under the pointer.
Events dragWithModifier(int moves)
{
    Events events{keyPress(edit(), "", 900, Modifier::Control)};
    const Events rest = drag(moves);
    events.insert(events.end(), rest.begin(), rest.end());
    return events;
}

/// What a user does in a minute, over and over.
Events mixed(int rounds)
{
    Events events;
    for (int i = 0; i < rounds; ++i) {
        const quint64 start = 1000 + static_cast<quint64>(i) * 60'000;
        const auto append = [&events, start](const Events &part, quint64 offset) {
            for (SyntheticEvent event : part) {
                event.timestamp += start + offset;
                events.push_back(std::move(event));
            }
        };
        append(moves(200, false), 0);
        append({mousePress(edit(), {5, 5}, 0), mouseRelease(edit(), {5, 5}, 80)}, 2000);
        append(typing(30), 3000);
        append({keyPress(edit(), "<Return>", 0), keyRelease(edit(), "<Return>", 50)}, 6000);
        append(moves(100, true), 7000);
        append(drag(150), 10'000);
        append({touchBegin(item(), {finger(1, 5, 5)}, 0), touchUpdate(item(), {finger(1, 90, 5)}, 10),
                touchUpdate(item(), {finger(1, 95, 5)}, 20), touchEnd(item(), {finger(1, 99, 5)}, 30)},
               20'000);
    }
    return events;
}

void compress(benchmark::State &state, const Events &events)
{
    FixedSettings settings;
    SilentClock clock;
    for (auto _ : state) {
        EventCompressor compressor(new StatementSink, &settings);
        compressor.setAlarmClock(&clock);
        for (const SyntheticEvent &event : events)
            compressor.eatEvent(event);
        compressor.finishCompression();
        compressor.resetInput();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(events.size()));
}

void copy(benchmark::State &state, const Events &events)
{
    for (auto _ : state) {
        std::list<SyntheticEvent> list;
        for (const SyntheticEvent &event : events)
            list.push_back(event);
        benchmark::DoNotOptimize(list);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(events.size()));
}

void compressMixed(benchmark::State &state)
{
    compress(state, mixed(static_cast<int>(state.range(0))));
}
void copyMixed(benchmark::State &state)
{
    copy(state, mixed(static_cast<int>(state.range(0))));
}
void compressDrag(benchmark::State &state)
{
    compress(state, drag(static_cast<int>(state.range(0))));
}
void compressDragWithModifier(benchmark::State &state)
{
    compress(state, dragWithModifier(static_cast<int>(state.range(0))));
}
void copyDrag(benchmark::State &state)
{
    copy(state, drag(static_cast<int>(state.range(0))));
}
void compressMoves(benchmark::State &state)
{
    compress(state, moves(static_cast<int>(state.range(0)), false));
}
void compressMovesBehindWheel(benchmark::State &state)
{
    compress(state, moves(static_cast<int>(state.range(0)), true));
}
void compressTyping(benchmark::State &state)
{
    compress(state, typing(static_cast<int>(state.range(0))));
}
void copyTyping(benchmark::State &state)
{
    copy(state, typing(static_cast<int>(state.range(0))));
}

BENCHMARK(compressMixed)->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(copyMixed)->Arg(20)->Unit(benchmark::kMillisecond);
BENCHMARK(compressDrag)->ArgsProduct({{1000, 2000, 5000, 10'000, 20'000, 60'000}})->Unit(benchmark::kMillisecond);
BENCHMARK(compressDragWithModifier)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(copyDrag)->ArgsProduct({{1000, 2000, 5000, 10'000, 20'000, 60'000}})->Unit(benchmark::kMillisecond);
BENCHMARK(compressMoves)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(compressMovesBehindWheel)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(compressTyping)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(copyTyping)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
