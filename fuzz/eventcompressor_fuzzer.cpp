// Streams of events from bytes, through the way in of EventCompressor. There
// is no second opinion here, only what must hold for every stream: nothing
// that the sanitizers object to, an end to every loop, no more statements
// than events, and no reference to an object that outlives its event.

#include "support/compressionharness.h"
#include "support/syntheticevents.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

using namespace Vantle;
using namespace VantleTest;

namespace {

void require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

/// Hands out the bytes of an input; zeros once they are used up.
class Input
{
public:
    Input(const std::uint8_t *data, std::size_t size) : m_data(data), m_size(size) {}

    bool isEmpty() const { return m_size == 0; }

    std::uint8_t byte()
    {
        if (m_size == 0)
            return 0;
        --m_size;
        return *m_data++;
    }

    std::size_t below(std::size_t limit) { return byte() % limit; }

    /// Mostly small, but any value that fits can come.
    qint32 coordinate()
    {
        const auto small = static_cast<std::int8_t>(byte());
        if (small == 127)
            return std::numeric_limits<qint32>::max();
        if (small == -128)
            return std::numeric_limits<qint32>::min();
        return small;
    }

    /// Where in doubt, a number that no screen has.
    double position()
    {
        const std::uint8_t kind = byte();
        if (kind < 250)
            return (kind - 125) / 4.0;
        std::uint64_t bits = 0;
        for (int i = 0; i < 8; ++i)
            bits = bits << 8 | byte();
        double value = 0;
        static_assert(sizeof value == sizeof bits);
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    quint64 step()
    {
        static constexpr quint64 steps[] = {0, 1, 10, 50, 399, 400, 401, 799, 800, 801, 805, 5000, quint64(1) << 32};
        const std::uint8_t choice = byte();
        if (choice == 255)
            return ~quint64(0); // one back
        return steps[choice % std::size(steps)];
    }

private:
    const std::uint8_t *m_data;
    std::size_t m_size;
};

/// What the events of all streams are on.
struct Scene
{
    Scene()
    {
        objects[1]->wrapSameAs(objects[0].get());
        for (const TestObjectPtr &object : objects)
            references += object->referenceCount();
    }

    void revive() const
    {
        for (const TestObjectPtr &object : objects)
            object->setAlive(true);
    }

    qint32 currentReferences() const
    {
        qint32 count = 0;
        for (const TestObjectPtr &object : objects)
            count += object->referenceCount();
        return count;
    }

    TestObjectPtr objects[5] = {makeObject("item", itemClass()), makeObject("alias", itemClass()),
                                makeObject("button", buttonClass()), makeObject("widget", widgetClass()),
                                makeObject("page", classNamed("HTML_Object"))};
    qint32 references = 0;
};

const Scene &scene()
{
    static const Scene theScene;
    return theScene;
}

QByteArray readText(Input &input)
{
    static constexpr const char *texts[] = {"", "a", "b", "<", "\xC3\xA9", "<Return>"};
    return texts[input.below(std::size(texts))];
}

std::vector<SyntheticEvent::TouchPoint> readFingers(Input &input)
{
    std::vector<SyntheticEvent::TouchPoint> fingers(input.below(4));
    for (SyntheticEvent::TouchPoint &point : fingers) {
        point = finger(static_cast<int>(input.below(3)), input.position(), input.position());
        if (input.below(8) == 0) {
            point.width = input.position();
            point.height = input.position();
            point.pressure = input.position();
        }
    }
    return fingers;
}

SyntheticEvent readEvent(Input &input, quint64 time)
{
    const TestObjectPtr &object = scene().objects[input.below(std::size(scene().objects))];
    const auto point = [&input] {
        const qint32 x = input.coordinate();
        return QPoint(x, input.coordinate());
    };
    const auto button = [&input] { return static_cast<MouseButton::Value>(input.below(3)); };
    const auto modifiers = [&input] { return static_cast<Modifier::Value>(input.byte() << 7); };
    switch (input.below(16)) {
    case 0: return mousePress(object, point(), time, button());
    case 1: return mouseRelease(object, point(), time, button());
    case 2: return mouseMove(object, point(), time);
    case 3: return wheel(object, point(), point(), time);
    case 4: return keyPress(object, readText(input), time, modifiers());
    case 5: return keyRelease(object, readText(input), time, modifiers());
    case 6: return inputMethod(object, readText(input), time);
    case 7: return windowClose(object, time);
    case 8: return windowMove(object, point(), point(), time);
    case 9: return windowResize(object, QSize(input.coordinate(), input.coordinate()), time);
    case 10: return windowState(object, input.coordinate(), time);
    case 11: return flickStarted(object, scene().objects[input.below(4)], point(), time);
    case 12: return flickEnded(object, scene().objects[input.below(4)], point(), time);
    case 13:
    case 14: {
        const auto type = static_cast<SyntheticEvent::TouchEventType>(input.below(3));
        SyntheticEvent event = touch(type, object, readFingers(input), time);
        if (input.below(8) == 0)
            event.touch.primaryIndex = input.below(4) ? input.below(4) : noPrimaryFinger;
        return event;
    }
    default: return makeEvent(SyntheticEvent::Invalid, object, time);
    }
}

void runStream(Input &input)
{
    TestLogger logger;
    CompressionHarness harness;
    harness.settings.distance = static_cast<qint32>(input.below(8));
    harness.settings.time = input.below(8) == 0 ? 0x80000001u : 400;
    harness.compressor.setDebugLevel(static_cast<unsigned>(input.below(4)));
    if (input.below(8) == 0)
        harness.compressor.setAlarmClock(nullptr);

    quint64 time = 1000;
    std::size_t eaten = 0;
    std::size_t written = 0;
    while (!input.isEmpty()) {
        logger.lines.clear();
        time += input.step();
        const std::size_t before = harness.queued();
        switch (input.below(16)) {
        case 0:
            harness.clock.setNow(time);
            harness.compressor.alarm(harness.alarmClock.runningId());
            require(harness.queued() <= before, "an alarm makes the queue no longer");
            break;
        case 1:
            harness.compressor.finishCompression();
            require(harness.queued() <= before, "finishing makes the queue no longer");
            break;
        case 2:
            harness.compressor.resetInput();
            require(harness.queued() == 0, "nothing is queued behind a reset");
            require(harness.compressor.modifiersBeforeQueue() == Modifier::None, "no modifier survives a reset");
            break;
        case 3: scene().objects[input.below(4)]->setAlive(false); break;
        default: {
            SyntheticEvent event = readEvent(input, time);
            event.ready = input.below(8) != 0;
            ++eaten;
            harness.compressor.eatEvent(event);
            require(harness.queued() <= before + 1, "an event makes the queue longer by one at most");
            break;
        }
        }
        written += harness.takeStatements().size();
        require(written <= eaten, "there are no more statements than events");
        require(harness.sink->statements.empty(), "delivered statements are not kept");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const Scene &objects = scene();
    Input input(data, size);
    runStream(input);
    objects.revive();
    require(objects.currentReferences() == objects.references, "no event outlives its compressor");
    return 0;
}
