#include "tracelib/configuration.h"
#include "tracelib/tracepoint.h"
#include "tracelib/variables.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace corvaline::tracelib;

namespace {

struct Visit
{
    const TracePoint *point;
    std::string text;
    VariableSnapshot *snapshot;
};

class TracePointTest : public testing::Test
{
protected:
    TracePointTest()
    {
        setSink([this](const TracePoint &visited, const char *text, VariableSnapshot *snapshot) {
            visits.push_back({&visited, text, snapshot});
        });
        setGroups("");
    }
    ~TracePointTest() override
    {
        setGroups("");
        setSink({});
    }

    TracePoint point{TracePointType::Detail, "source.cpp", 12, "void f()", "qtquick"};
    TracePoint otherPoint{TracePointType::Detail, "source.cpp", 13, "void f()", "other"};
    std::vector<Visit> visits;
};

} // namespace

TEST_F(TracePointTest, startsWithClearedRunTimeFields)
{
    EXPECT_EQ(point.type, 3u);
    EXPECT_STREQ(point.file, "source.cpp");
    EXPECT_EQ(point.line, 12u);
    EXPECT_STREQ(point.function, "void f()");
    EXPECT_STREQ(point.group, "qtquick");
    EXPECT_EQ(point.decidedFor, 0u);
    EXPECT_FALSE(point.active);
}

TEST_F(TracePointTest, isNotTouchedByAVisitWhileTracingIsOff)
{
    point.decidedFor = 77;
    point.active = true;
    EXPECT_FALSE(advanceVisit(&point));
    EXPECT_EQ(point.decidedFor, 77u);
    EXPECT_TRUE(point.active);
}

TEST_F(TracePointTest, isActiveFromItsFirstVisitOnIfItsGroupIsOn)
{
    setGroups("qtquick");
    EXPECT_FALSE(point.active);
    EXPECT_TRUE(advanceVisit(&point));
    EXPECT_TRUE(point.active);
    EXPECT_TRUE(advanceVisit(&point));
}

TEST_F(TracePointTest, staysInactiveIfOnlyOtherGroupsAreOn)
{
    setGroups("qtquick");
    EXPECT_FALSE(advanceVisit(&otherPoint));
    EXPECT_FALSE(otherPoint.active);
    EXPECT_FALSE(advanceVisit(&otherPoint));
}

TEST_F(TracePointTest, isActiveIfAnyOfTheListedGroupsIsItsOwn)
{
    setGroups(" first, qtquick ,,last ");
    EXPECT_TRUE(advanceVisit(&point));
    EXPECT_FALSE(advanceVisit(&otherPoint));
}

TEST_F(TracePointTest, isActiveInEveryGroupUnderTheAsterisk)
{
    setGroups("*");
    EXPECT_TRUE(advanceVisit(&point));
    EXPECT_TRUE(advanceVisit(&otherPoint));
}

TEST_F(TracePointTest, isSwitchedOnOnlyByTheWholeNameOfItsGroup)
{
    for (const char *groups : {"qt", "qtquickcommon", "QtQuick", "qt quick", "q*"}) {
        setGroups(groups);
        EXPECT_FALSE(advanceVisit(&point)) << groups;
    }
}

TEST_F(TracePointTest, staysOffWhenTheListNamesNoGroup)
{
    for (const char *groups : {"", " ", ",", " , \t,"}) {
        setGroups(groups);
        EXPECT_FALSE(advanceVisit(&point)) << '"' << groups << '"';
    }
}

TEST_F(TracePointTest, followsEachChangeOfTheGroups)
{
    setGroups("qtquick");
    EXPECT_TRUE(advanceVisit(&point));
    setGroups("other");
    EXPECT_FALSE(advanceVisit(&point));
    EXPECT_FALSE(point.active);
    setGroups("other,qtquick");
    EXPECT_TRUE(advanceVisit(&point));
    setGroups("");
    EXPECT_FALSE(advanceVisit(&point));
    setGroups("qtquick");
    EXPECT_TRUE(advanceVisit(&point));
}

TEST_F(TracePointTest, staysSilencedByItselfUntilTheGroupsChange)
{
    TracePoint neighbour(TracePointType::Detail, "source.cpp", 12, "void f()", "qtquick");
    setGroups("qtquick");
    ASSERT_TRUE(advanceVisit(&point));
    point.active = false;
    EXPECT_FALSE(advanceVisit(&point));
    EXPECT_TRUE(advanceVisit(&neighbour));
    setGroups("qtquick");
    EXPECT_TRUE(advanceVisit(&point));
}

TEST_F(TracePointTest, deliversTheMessageAndTheSnapshotOfAVisit)
{
    setGroups("qtquick");
    ASSERT_TRUE(advanceVisit(&point));
    VariableSnapshot snapshot;
    visitTracePoint(&point, "message", &snapshot);
    ASSERT_EQ(visits.size(), 1u);
    EXPECT_EQ(visits[0].point, &point);
    EXPECT_EQ(visits[0].text, "message");
    EXPECT_EQ(visits[0].snapshot, &snapshot);
}

TEST_F(TracePointTest, deliversTheEmptyTextForANullMessage)
{
    setGroups("qtquick");
    ASSERT_TRUE(advanceVisit(&point));
    visitTracePoint(&point, nullptr, nullptr);
    ASSERT_EQ(visits.size(), 1u);
    EXPECT_EQ(visits[0].text, "");
    EXPECT_EQ(visits[0].snapshot, nullptr);
}

TEST_F(TracePointTest, deliversNothingOnceItsGroupWasSwitchedOffBehindTheVisit)
{
    setGroups("qtquick");
    ASSERT_TRUE(advanceVisit(&point));
    setGroups("other");
    visitTracePoint(&point, "late", nullptr);
    setGroups("");
    visitTracePoint(&point, "later", nullptr);
    EXPECT_TRUE(visits.empty());
}

TEST_F(TracePointTest, reachesTheSinkThatIsSetAtTheTimeOfDelivery)
{
    std::vector<std::string> second;
    setGroups("qtquick");
    ASSERT_TRUE(advanceVisit(&point));
    setSink([&second](const TracePoint &, const char *text, VariableSnapshot *) { second.emplace_back(text); });
    visitTracePoint(&point, "message", nullptr);
    EXPECT_TRUE(visits.empty());
    EXPECT_EQ(second, std::vector<std::string>{"message"});
}

TEST_F(TracePointTest, isNotDeliveredFromWithinASink)
{
    int calls = 0;
    setGroups("*");
    setSink([&](const TracePoint &, const char *, VariableSnapshot *) {
        ++calls;
        EXPECT_FALSE(advanceVisit(&otherPoint));
        visitTracePoint(&otherPoint, "nested", nullptr);
    });
    ASSERT_TRUE(advanceVisit(&point));
    visitTracePoint(&point, "outer", nullptr);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(advanceVisit(&otherPoint)) << "delivery is over";
}

TEST_F(TracePointTest, passesOnWhatASinkThrowsAndGoesOnTracing)
{
    setGroups("qtquick");
    setSink([](const TracePoint &, const char *, VariableSnapshot *) { throw std::runtime_error("disk full"); });
    ASSERT_TRUE(advanceVisit(&point));
    EXPECT_THROW(visitTracePoint(&point, "message", nullptr), std::runtime_error);
    EXPECT_TRUE(advanceVisit(&point));
}

TEST_F(TracePointTest, letsASinkReplaceItselfWhileItRuns)
{
    std::vector<std::string> second;
    const auto owned = std::make_shared<std::string>("still here");
    setGroups("qtquick");
    setSink([&second, owned](const TracePoint &, const char *, VariableSnapshot *) {
        setSink([&second](const TracePoint &, const char *text, VariableSnapshot *) { second.emplace_back(text); });
        second.push_back(*owned);
    });
    ASSERT_TRUE(advanceVisit(&point));
    visitTracePoint(&point, "first", nullptr);
    visitTracePoint(&point, "second", nullptr);
    EXPECT_EQ(second, (std::vector<std::string>{"still here", "second"}));
    EXPECT_EQ(owned.use_count(), 1);
}

TEST_F(TracePointTest, deliversEachVisitOnceWhileThreadsVisitAndGroupsChange)
{
    std::atomic<int> delivered = 0;
    std::atomic<int> started = 0;
    std::atomic<bool> stop = false;
    setSink([&delivered](const TracePoint &, const char *text, VariableSnapshot *) {
        EXPECT_STREQ(text, "message");
        ++delivered;
    });
    setGroups("qtquick");
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            while (!stop) {
                if (advanceVisit(&point) && point.active) {
                    visitTracePoint(&point, "message", nullptr);
                    ++started;
                }
                EXPECT_FALSE(advanceVisit(&otherPoint));
            }
        });
    }
    for (int i = 0; i < 200; ++i)
        setGroups(i % 2 == 0 ? "" : "qtquick");
    while (started == 0)
        std::this_thread::yield();
    stop = true;
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_GT(delivered, 0);
    EXPECT_LE(delivered, started);
}
