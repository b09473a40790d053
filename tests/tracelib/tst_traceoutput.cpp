#include "tracelib/configuration.h"
#include "tracelib/tracepoint.h"
#include "tracelib/variables.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace corvaline::tracelib;

namespace {

TracePoint point(TracePointType::Detail, "place.cpp", 5, "void f()", "qtquick");
TracePoint otherPoint(TracePointType::Detail, "place.cpp", 6, "void f()", "other");

void visit(TracePoint &place, const char *text)
{
    if (advanceVisit(&place))
        visitTracePoint(&place, text, nullptr);
}

std::vector<std::string> linesOf(const std::filesystem::path &path)
{
    std::ifstream stream(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// What stands behind the time, which changes from run to run.
std::string behindTime(const std::string &line)
{
    return line.substr(line.find('\t') + 1);
}

class TraceOutput : public testing::Test
{
protected:
    TraceOutput()
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        std::filesystem::create_directories(folder);
        unsetenv("VANTLE_TRACE");
        unsetenv("VANTLE_TRACE_FILE");
    }
    ~TraceOutput() override
    {
        setGroups("");
        std::filesystem::remove_all(folder);
    }

    const std::filesystem::path folder = std::filesystem::path(testing::TempDir())
        / ("vantle-trace-" + std::to_string(getpid()));
    const std::filesystem::path file = folder / "trace.txt";
};

using TraceOutputDeathTest = TraceOutput;

} // namespace

// Each of these runs in a process of its own, in which nothing was visited yet.

TEST_F(TraceOutputDeathTest, goesToStandardErrorIfTheEnvironmentNamesTheGroup)
{
    EXPECT_EXIT(
        {
            setenv("VANTLE_TRACE", "qtquick", 1);
            visit(otherPoint, "not this");
            visit(point, "hello");
            std::exit(point.active && !otherPoint.active ? 0 : 1);
        },
        testing::ExitedWithCode(0),
        "^[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}\\.[0-9]{3}Z\tqtquick\tplace\\.cpp:5\tvoid f\\(\\)\thello\n$");
}

TEST_F(TraceOutputDeathTest, isSilentWithoutTheVariableAndWithAnEmptyOne)
{
    EXPECT_EXIT(
        {
            visit(point, "hello");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^$");
    EXPECT_EXIT(
        {
            setenv("VANTLE_TRACE", "", 1);
            visit(point, "hello");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST_F(TraceOutputDeathTest, followsGroupsThatWereSetBeforeTheFirstVisit)
{
    EXPECT_EXIT(
        {
            setenv("VANTLE_TRACE", "qtquick", 1);
            setGroups("other");
            visit(point, "not this");
            visit(otherPoint, "hello");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^[^\t]*\tother\t[^\n]*\thello\n$");
}

TEST_F(TraceOutputDeathTest, reachesASinkThatWasSetBeforeTheEnvironmentWasLookedAt)
{
    EXPECT_EXIT(
        {
            setenv("VANTLE_TRACE", "qtquick", 1);
            std::string text;
            setSink([&text](const TracePoint &, const char *message, VariableSnapshot *) { text = message; });
            visit(point, "hello");
            std::exit(text == "hello" ? 0 : 1);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST_F(TraceOutputDeathTest, fallsBackToStandardErrorIfTheFileCannotBeOpened)
{
    EXPECT_EXIT(
        {
            setenv("VANTLE_TRACE", "qtquick", 1);
            setenv("VANTLE_TRACE_FILE", (folder / "missing" / "trace.txt").c_str(), 1);
            visit(point, "first");
            visit(point, "second");
            std::exit(0);
        },
        testing::ExitedWithCode(0),
        "^Cannot open trace file \"[^\"]*missing/trace.txt\" [^\n]*\n[^\n]*\tfirst\n[^\n]*\tsecond\n$");
}

TEST_F(TraceOutputDeathTest, isNotDestroyedBeforeTheLastVisitDuringExit)
{
    EXPECT_EXIT(
        {
            setenv("VANTLE_TRACE", "qtquick", 1);
            std::atexit([] { visit(point, "at exit"); });
            visit(point, "hello");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "\thello\n[^\n]*\tat exit\n$");
}

TEST_F(TraceOutput, isAppendedToTheFile)
{
    std::ofstream(file) << "former\n";
    setenv("VANTLE_TRACE", "*", 1);
    setenv("VANTLE_TRACE_FILE", file.c_str(), 1);
    configureFromEnvironment();
    visit(point, "one\nline");
    visit(otherPoint, "second");
    const std::vector<std::string> lines = linesOf(file);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "former");
    EXPECT_EQ(behindTime(lines[1]), "qtquick\tplace.cpp:5\tvoid f()\tone\\nline");
    EXPECT_EQ(behindTime(lines[2]), "other\tplace.cpp:6\tvoid f()\tsecond");
}

TEST_F(TraceOutput, makesNoFileWhileNothingIsDelivered)
{
    setenv("VANTLE_TRACE", "other", 1);
    setenv("VANTLE_TRACE_FILE", file.c_str(), 1);
    configureFromEnvironment();
    visit(point, "not this");
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(TraceOutput, goesOnInTheFileAfterASinkWasTakenAway)
{
    setenv("VANTLE_TRACE", "*", 1);
    setenv("VANTLE_TRACE_FILE", file.c_str(), 1);
    configureFromEnvironment();
    setSink([](const TracePoint &, const char *, VariableSnapshot *) {});
    visit(point, "for the sink");
    setSink({});
    visit(point, "for the file");
    const std::vector<std::string> lines = linesOf(file);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_TRUE(lines[0].ends_with("\tfor the file"));
}

TEST_F(TraceOutput, keepsLinesOfDifferentThreadsApart)
{
    setenv("VANTLE_TRACE", "*", 1);
    setenv("VANTLE_TRACE_FILE", file.c_str(), 1);
    configureFromEnvironment();
    const std::string text(5000, 'x');
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&text] {
            for (int n = 0; n < 50; ++n)
                visit(point, text.c_str());
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    const std::vector<std::string> lines = linesOf(file);
    EXPECT_EQ(lines.size(), 200u);
    for (const std::string &line : lines)
        ASSERT_EQ(behindTime(line), "qtquick\tplace.cpp:5\tvoid f()\t" + text);
}
