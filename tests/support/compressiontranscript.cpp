#include "support/compressiontranscript.h"

#include "support/compressionharness.h"
#include "support/eventscript.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventdescription.h"

#include <sstream>
#include <utility>

using namespace Vantle;

namespace VantleTest {

namespace {

constexpr const char *resultIndent = "    ";

unsigned long toNumber(const std::string &word)
{
    std::size_t used = 0;
    unsigned long value = 0;
    try {
        value = std::stoul(word, &used);
    } catch (const std::logic_error &) {
        used = 0;
    }
    if (used == 0 || used != word.size())
        throw EventScriptError("expected a number but found `" + word + "`");
    return value;
}

class Runner
{
public:
    std::string run(const std::string &line)
    {
        const EventScript::Words words = EventScript::split(line);
        if (words.empty() || words.front().front() == '#')
            return {};
        if (words.front() == "object") {
            m_script.declareObject(words);
            return {};
        }
        if (words.front() == "settings") {
            set(words);
            return {};
        }
        m_expectedSize = m_harness.queued();
        perform(words);
        return results();
    }

private:
    void set(const EventScript::Words &words)
    {
        for (std::size_t i = 1; i < words.size(); ++i) {
            const std::size_t equals = words[i].find('=');
            const std::string key = words[i].substr(0, equals);
            const std::string value = equals == std::string::npos ? "" : words[i].substr(equals + 1);
            if (key == "drag-distance")
                m_harness.settings.distance = static_cast<qint32>(toNumber(value));
            else if (key == "double-click-time")
                m_harness.settings.time = static_cast<quint32>(toNumber(value));
            else if (key == "no-alarm-clock")
                m_harness.compressor.setAlarmClock(nullptr);
            else
                throw EventScriptError("unknown setting `" + key + "`");
        }
    }

    void perform(const EventScript::Words &words)
    {
        const std::string &action = words.front();
        if (action == "flush" && words.size() == 1) {
            m_harness.flush();
        } else if (action == "finish" && words.size() == 1) {
            m_harness.compressor.finishCompression();
        } else if (action == "reset" && words.size() == 1) {
            m_harness.compressor.resetInput();
        } else if (action == "dies" && words.size() == 2) {
            m_script.object(words[1])->setAlive(false);
        } else if (action == "wait" && words.size() == 2) {
            m_harness.pass(toNumber(words[1]));
        } else if (words.size() == 3 && words[1] == "alarm") {
            m_harness.clock.setNow(toNumber(action.substr(1)));
            m_harness.compressor.alarm(static_cast<qint32>(toNumber(words[2])));
        } else {
            m_harness.eat(m_script.read(words));
            ++m_expectedSize;
        }
    }

    /// What changed, but for the event that was queued.
    std::string results()
    {
        std::string text;
        const auto add = [&text](const QByteArray &line) { text += resultIndent + line.toStdString() + '\n'; };
        for (const QByteArray &statement : m_harness.takeStatements())
            add("-> " + statement);
        for (const TestAlarmClock::Call &call : std::exchange(m_harness.alarmClock.calls, {}))
            add(call.toText());
        const Modifier::Value modifiers = m_harness.compressor.modifiersBeforeQueue();
        if (m_harness.queued() != m_expectedSize)
            add(QByteArray::number(m_harness.queued()) + " queued");
        if (modifiers != m_modifiers)
            add("modifiers " + QtWrapper::describeModifiers(modifiers));
        m_modifiers = modifiers;
        return text;
    }

    CompressionHarness m_harness;
    EventScript m_script;
    std::size_t m_expectedSize = 0;
    Modifier::Value m_modifiers = Modifier::None;
};

} // namespace

std::string runTranscript(const std::string &transcript)
{
    Runner runner;
    std::string result;
    std::istringstream in(transcript);
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (line.starts_with(resultIndent))
            continue;
        try {
            result += line + '\n' + runner.run(line);
        } catch (const EventScriptError &error) {
            throw EventScriptError("line " + std::to_string(number) + ": " + error.what());
        }
    }
    return result;
}

} // namespace VantleTest
