#include "tracelib/traceline_p.h"
#include "tracelib/tracepoint.h"
#include "tracelib/variables.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

using namespace corvaline::tracelib;
using namespace std::chrono_literals;

namespace {

constexpr std::chrono::system_clock::time_point epoch{};

class Variable : public AbstractVariable
{
public:
    Variable(const char *name, VariableValue value) : m_name(name), m_value(value) {}
    const char *name() const override { return m_name; }
    VariableValue value() const override { return m_value; }

private:
    const char *m_name;
    VariableValue m_value;
};

} // namespace

TEST(TraceLine, holdsTimeGroupPlaceFunctionAndMessage)
{
    const TracePoint point(TracePointType::Detail, "flickmonitor.cpp", 42, "void FlickMonitor::watch(QQuickItem *)",
                           "qtquick");
    EXPECT_EQ(traceLine(epoch + 1714564800000ms + 7ms, point, "Watching flickable 0x00000010", nullptr),
              "2024-05-01T12:00:00.007Z\tqtquick\tflickmonitor.cpp:42\tvoid FlickMonitor::watch(QQuickItem *)\t"
              "Watching flickable 0x00000010\n");
}

TEST(TraceLine, cutsTheTimeToWholeMilliseconds)
{
    const TracePoint point(TracePointType::Detail, "f", 1, "g", "h");
    EXPECT_EQ(traceLine(epoch + 999999us, point, "", nullptr), "1970-01-01T00:00:00.999Z\th\tf:1\tg\t\n");
    EXPECT_EQ(traceLine(epoch - 1ms, point, "", nullptr), "1969-12-31T23:59:59.999Z\th\tf:1\tg\t\n");
}

TEST(TraceLine, staysOneLineOfFixedFieldsWhateverTheMessageHolds)
{
    const TracePoint point(TracePointType::Detail, "C:\\f.cpp", 1, "g", "h");
    EXPECT_EQ(traceLine(epoch, point, "a\nb\tc\r\\n", nullptr),
              "1970-01-01T00:00:00.000Z\th\tC:\\\\f.cpp:1\tg\ta\\nb\\tc\\r\\\\n\n");
}

TEST(TraceLine, keepsTextInUtf8)
{
    const TracePoint point(TracePointType::Detail, "f", 1, "g", "h");
    EXPECT_EQ(traceLine(epoch, point, "\xe2\x82\xac", nullptr), "1970-01-01T00:00:00.000Z\th\tf:1\tg\t\xe2\x82\xac\n");
}

TEST(TraceLine, endsInTheVariablesOfTheVisit)
{
    const TracePoint point(TracePointType::Detail, "f", 1, "g", "h");
    Variable count("count", VariableValue::numberValue(3));
    Variable name("name", VariableValue::stringValue("a\tb"));
    VariableSnapshot snapshot;
    EXPECT_EQ(traceLine(epoch, point, "text", &snapshot), "1970-01-01T00:00:00.000Z\th\tf:1\tg\ttext\n");
    snapshot.add(&count);
    snapshot.add(&name);
    EXPECT_EQ(traceLine(epoch, point, "text", &snapshot),
              "1970-01-01T00:00:00.000Z\th\tf:1\tg\ttext\tcount=3 name=a\\tb\n");
}
