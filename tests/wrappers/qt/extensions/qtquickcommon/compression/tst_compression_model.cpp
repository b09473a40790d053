#include "eventstreams.h"
#include "naivemodel.h"

#include "support/compressionharness.h"
#include "support/compressiontranscript.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

using namespace Vantle;
using namespace VantleTest;

namespace {

/// Keeps objects dead for as long as it lives itself.
class Deaths
{
public:
    Deaths() = default;
    ~Deaths()
    {
        for (const TestObjectPtr &object : m_dead)
            object->setAlive(true);
    }

    void add(const TestObjectPtr &object)
    {
        object->setAlive(false);
        m_dead.push_back(object);
    }

private:
    Q_DISABLE_COPY_MOVE(Deaths)

    std::vector<TestObjectPtr> m_dead;
};

/// Runs a stream through the compressor and the model side by side.
class Comparison
{
public:
    explicit Comparison(const EventStream &stream) : m_model(m_harness.settings, stream.hasClock)
    {
        m_harness.settings = stream.settings;
        if (!stream.hasClock)
            m_harness.compressor.setAlarmClock(nullptr);
    }

    /// What differs behind the step; empty if nothing.
    std::string perform(const StreamStep &step)
    {
        const qint32 running = m_model.alarmId;
        switch (step.kind) {
        case StreamStep::Eat:
            m_harness.compressor.eatEvent(step.event);
            m_model.eat(step.event);
            break;
        case StreamStep::Ring:
        case StreamStep::RingOther: {
            const qint32 id = step.kind == StreamStep::Ring ? running : running + 7;
            m_harness.clock.setNow(step.time);
            m_harness.compressor.alarm(id);
            m_model.ring(id, step.time);
            break;
        }
        case StreamStep::Finish:
            m_harness.compressor.finishCompression();
            m_model.finish();
            break;
        case StreamStep::Reset:
            m_harness.compressor.resetInput();
            m_model.reset();
            break;
        case StreamStep::Die: m_deaths.add(step.object); break;
        }
        return difference();
    }

    std::size_t statementCount() const { return m_count; }

private:
    std::string difference()
    {
        const std::vector<Statement> statements = m_harness.takeStatementValues();
        const std::vector<Statement> expected = std::exchange(m_model.statements, {});
        m_count += expected.size();
        if (m_model.stuck)
            return "a pattern consumed nothing";
        if (statements != expected)
            return "statements:\n" + text(statements) + "but the rules say:\n" + text(expected);
        if (m_harness.queued() != m_model.queue.size()) {
            return std::to_string(m_harness.queued()) + " queued, but the rules say "
                + std::to_string(m_model.queue.size());
        }
        if (m_harness.compressor.modifiersBeforeQueue() != m_model.modifiers)
            return "modifiers, which the rules say are " + std::to_string(m_model.modifiers);
        if (m_harness.alarmClock.calls != m_model.alarmCalls)
            return "calls of the alarm clock";
        m_harness.alarmClock.calls.clear();
        m_model.alarmCalls.clear();
        return {};
    }

    static std::string text(const std::vector<Statement> &statements)
    {
        std::string lines;
        for (const Statement &statement : statements)
            lines += "    " + statement.toText().toStdString() + '\n';
        return lines;
    }

    CompressionHarness m_harness;
    NaiveModel m_model;
    Deaths m_deaths;
    std::size_t m_count = 0;
};

std::string firstDifference(const EventStream &stream, std::size_t *statementCount = nullptr)
{
    Comparison comparison(stream);
    for (const StreamStep &step : stream.steps) {
        std::string difference = comparison.perform(step);
        if (!difference.empty())
            return difference;
    }
    if (statementCount)
        *statementCount += comparison.statementCount();
    return {};
}

/// Leaves out steps for as long as there still is a difference.
EventStream shrunk(EventStream stream)
{
    for (std::size_t size = stream.steps.size(); size > 0; size /= 2) {
        for (std::size_t at = 0; at + size <= stream.steps.size();) {
            EventStream shorter = stream;
            const auto first = shorter.steps.begin() + static_cast<std::ptrdiff_t>(at);
            shorter.steps.erase(first, first + static_cast<std::ptrdiff_t>(size));
            if (firstDifference(shorter).empty())
                ++at;
            else
                stream = std::move(shorter);
        }
    }
    return stream;
}

/// The stream as the input lines of a golden file.
std::string transcript(const StreamGenerator &generator, const EventStream &stream)
{
    std::string text = generator.declarations();
    text += "settings drag-distance=" + std::to_string(stream.settings.distance) + " double-click-time="
        + std::to_string(stream.settings.time) + (stream.hasClock ? "" : " no-alarm-clock") + '\n';
    NaiveModel model(stream.settings, stream.hasClock);
    Deaths deaths;
    for (const StreamStep &step : stream.steps) {
        const std::string alarm = '@' + std::to_string(step.time) + " alarm ";
        switch (step.kind) {
        case StreamStep::Eat:
            text += generator.script().write(step.event);
            model.eat(step.event);
            break;
        case StreamStep::Ring:
            text += alarm + std::to_string(model.alarmId);
            model.ring(model.alarmId, step.time);
            break;
        case StreamStep::RingOther: text += alarm + std::to_string(model.alarmId + 7); break;
        case StreamStep::Finish:
            text += "finish";
            model.finish();
            break;
        case StreamStep::Reset:
            text += "reset";
            model.reset();
            break;
        case StreamStep::Die:
            text += "dies " + step.object->name().toStdString();
            deaths.add(step.object);
            break;
        }
        text += '\n';
    }
    return text;
}

std::uint64_t numberFromEnvironment(const char *name, std::uint64_t otherwise)
{
    const char *value = std::getenv(name);
    return value && *value ? std::strtoull(value, nullptr, 10) : otherwise;
}

} // namespace

// VANTLE_MODEL_STREAMS sets how many streams are tried, VANTLE_MODEL_SEED where to begin.
TEST(CompressionModel, agreesWithTheRulesOnRandomStreams)
{
    const std::uint64_t count = numberFromEnvironment("VANTLE_MODEL_STREAMS", 100'000);
    const std::uint64_t first = numberFromEnvironment("VANTLE_MODEL_SEED", 1);
    StreamGenerator generator;
    std::size_t statements = 0;
    for (std::uint64_t seed = first; seed < first + count; ++seed) {
        const EventStream stream = generator.make(seed);
        if (firstDifference(stream, &statements).empty())
            continue;
        const EventStream smallest = shrunk(stream);
        FAIL() << "seed " << seed << ": " << firstDifference(smallest) << "\n" << transcript(generator, smallest);
    }
    // Streams that make no statements would agree on anything.
    EXPECT_GT(statements, count);
    std::printf("%llu streams made %zu statements\n", static_cast<unsigned long long>(count), statements);
}

TEST(CompressionModel, streamsReadAsTranscriptsThatDoTheSame)
{
    StreamGenerator generator;
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        const EventStream stream = generator.make(seed);
        const std::string text = transcript(generator, stream);
        std::string expected;
        Comparison direct(stream);
        for (const StreamStep &step : stream.steps)
            ASSERT_EQ(direct.perform(step), "");
        const std::string result = runTranscript(text);
        std::size_t arrows = 0;
        for (std::size_t at = 0; (at = result.find("\n    -> ", at)) != std::string::npos; ++at)
            ++arrows;
        ASSERT_EQ(arrows, direct.statementCount()) << text;
    }
}

TEST(CompressionModel, findsAWrongAnswer)
{
    // A model that measures with other settings must be told apart, or the comparison is blind.
    const TestObjectPtr item = makeObject("item", itemClass());
    CompressionHarness harness;
    TestSettings other;
    other.distance = 5;
    NaiveModel model(other, true);
    for (const SyntheticEvent &event : {mousePress(item, {10, 20}, 1000), mouseRelease(item, {14, 20}, 1050)}) {
        harness.eat(event);
        model.eat(event);
    }
    EXPECT_EQ(harness.takeStatementValues().size(), 1u);
    EXPECT_TRUE(model.statements.empty());
}
