#pragma once

#include "support/compressionharness.h"
#include "support/eventscript.h"

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace VantleTest {

/// One thing that happens to a compressor.
struct StreamStep
{
    enum Kind {
        Eat,
        Ring,      ///< the running alarm, or id 0 if none runs
        RingOther, ///< an alarm that doesn't run
        Finish,
        Reset,
        Die, ///< the object is gone, until the next stream
    };

    Kind kind = Eat;
    quint64 time = 0; ///< of the clock when an alarm rings
    SyntheticEvent event{};
    TestObjectPtr object{}; ///< that dies
};

/// What happens to a compressor, and its surroundings.
struct EventStream
{
    TestSettings settings;
    bool hasClock = true;
    std::vector<StreamStep> steps;
};

/// Makes streams at random, rich in what patterns are made of and in times
/// and distances at the boundaries of the rules. The same seed gives the same
/// stream. Keeps the objects that its events are on.
class StreamGenerator
{
public:
    StreamGenerator();

    EventStream make(std::uint64_t seed);
    /// The objects, declared as in a transcript.
    std::string declarations() const;
    const TestObjectPtr &nothing() const noexcept { return m_nothing; }
    const EventScript &script() const noexcept { return m_script; }

private:
    template<typename T>
    T oneOf(std::initializer_list<T> values)
    {
        return values.begin()[pick(values.size())];
    }
    std::size_t pick(std::size_t count);
    bool chance(int percent) { return pick(100) < static_cast<std::size_t>(percent); }

    quint64 laterTime();
    QPoint near();
    TestObjectPtr anyObject();
    Vantle::MouseButton::Value anyButton();
    Vantle::Modifier::Value anyModifiers();
    QByteArray anyText();
    std::vector<SyntheticEvent::TouchPoint> anyFingers();

    void add(SyntheticEvent event);
    void addRandomEvent();
    void addMouseEvent();
    void addKeyEvent();
    void addTouchEvent();
    void addWindowEvent();
    void addFlickEvent(SyntheticEvent::FlickState state);
    void addClick();
    void addPhrase();
    void addMousePhrase();
    void addTouchPhrase();
    void addTyping();
    void addRun();
    void addNoise();
    void addControl();
    void addDeath();

    // Cheap to seed, which happens for every stream; pick() takes the high bits, the good ones.
    std::linear_congruential_engine<std::uint64_t, 6364136223846793005u, 1442695040888963407u, 0> m_random;
    std::vector<TestObjectPtr> m_objects;
    TestObjectPtr m_nothing; ///< what wraps an object that never lives
    EventScript m_script;
    EventStream m_stream;
    quint64 m_time = 0;
    TestObjectPtr m_focus; ///< what the events of a phrase are on
    QPoint m_place;
};

} // namespace VantleTest
