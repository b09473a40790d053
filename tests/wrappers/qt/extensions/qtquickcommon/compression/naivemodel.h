#pragma once

#include "support/compressionharness.h"
#include "support/syntheticevents.h"

#include <array>
#include <vector>

namespace VantleTest {

/// The rules of compression written down a second time, as plainly as can be
/// and without any of the code that they are to be held against. Slow.
class NaiveModel
{
public:
    explicit NaiveModel(const TestSettings &settings, bool hasClock);

    void eat(const SyntheticEvent &event);
    void ring(qint32 id, quint64 now);
    void finish();
    void reset();

    std::vector<SyntheticEvent> queue;
    int modifiers = 0;
    std::vector<Statement> statements;
    std::vector<TestAlarmClock::Call> alarmCalls;
    qint32 alarmId = 0;
    /// Set when a pattern consumed nothing, which would go on forever.
    bool stuck = false;

private:
    enum Verdict {
        Complete,
        No,
        Partial,
        PartialWithAlarm
    };

    /// What a pattern says, and what it would do.
    struct Answer
    {
        Verdict verdict = No;
        std::size_t consumed = 0;
        std::vector<Statement> written;
    };

    static constexpr int patternCount = 17;

    Answer ask(int pattern, quint64 now) const;
    Answer touchFlick(bool last) const;
    Answer touchGesture(bool last) const;
    Answer doubleTap(bool last) const;
    Answer tapOrDrag(bool last) const;
    Answer mouseFlick(bool last) const;
    Answer doubleClick(bool last, quint64 now) const;
    Answer mouseDrag(bool last, bool itemsOnly) const;
    Answer mouseClick(bool last, bool itemsOnly) const;
    Answer inputMethod() const;
    Answer textInput(bool last) const;
    Answer wheel(bool last) const;
    Answer windowClose(bool last) const;
    Answer windowMove(bool last) const;
    Answer windowResize(bool last) const;
    Answer windowState() const;

    void run(quint64 now);
    void take(const Answer &answer);
    void drop(std::size_t count);

    const TestSettings &m_settings;
    bool m_hasClock;
    qint32 m_lastAlarm = 0;
    std::array<bool, patternCount> m_finishing{};
};

} // namespace VantleTest
