#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"

#include "hook/logger.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace Vantle::QtQuickCommon;
using testing::ElementsAre;
using testing::Pair;

namespace {

class RecordingLogger : public Vantle::Logger
{
public:
    void info(const std::string &message) override { record("info", message); }
    void warning(const std::string &message) override { record("warning", message); }
    void level3(const std::string &message) override { record("level3", message); }
    void level4(const std::string &message) override { record("level4", message); }

    std::vector<std::pair<std::string, std::string>> messages;

private:
    void record(const char *level, const std::string &message)
    {
        const std::lock_guard lock(m_mutex);
        messages.emplace_back(level, message);
    }

    std::mutex m_mutex;
};

class Logging : public testing::Test
{
protected:
    Logging() { setLogger(&logger); }
    ~Logging() override { setLogger(nullptr); }

    std::string logged(const std::string &text)
    {
        logger.messages.clear();
        logInfo("%s", text.c_str());
        return logger.messages.at(0).second;
    }

    RecordingLogger logger;
};

using LoggingDeathTest = Logging;

} // namespace

TEST_F(Logging, handsEachLevelToTheOperationOfItsName)
{
    logInfo("a");
    logWarning("b");
    logLevel3("c");
    logLevel4("d");
    EXPECT_THAT(logger.messages,
                ElementsAre(Pair("info", "a"), Pair("warning", "b"), Pair("level3", "c"), Pair("level4", "d")));
}

TEST_F(Logging, formatsLikePrintfAtEveryLevel)
{
    logInfo("%s: Considering %d events", "queue", 3);
    logWarning("%s (%s:%d)", "error", "a.qml", -7);
    logLevel3("%5.2f|%-4s|%%", 1.5, "x");
    logLevel4("%lld %zu", -9223372036854775807LL, sizeof(char));
    EXPECT_THAT(logger.messages,
                ElementsAre(Pair("info", "queue: Considering 3 events"), Pair("warning", "error (a.qml:-7)"),
                            Pair("level3", " 1.50|x   |%"), Pair("level4", "-9223372036854775807 1")));
}

TEST_F(Logging, deliversAnEmptyMessage)
{
    logInfo("%s", "");
    EXPECT_THAT(logger.messages, ElementsAre(Pair("info", "")));
}

TEST_F(Logging, deliversMessagesOfUpTo1023BytesWhole)
{
    for (const std::size_t length : {1u, 1022u, 1023u})
        EXPECT_EQ(logged(std::string(length - 1, 'x') + 'y'), std::string(length - 1, 'x') + 'y');
}

TEST_F(Logging, cutsLongerMessagesAt1023Bytes)
{
    EXPECT_EQ(logged(std::string(1023, 'x') + 'y'), std::string(1023, 'x'));
    EXPECT_EQ(logged(std::string(5000, 'x')), std::string(1023, 'x'));
}

TEST_F(Logging, cutsAMessageThatIsMadeOfSeveralArguments)
{
    const std::string first(1000, 'a');
    const std::string second(100, 'b');
    logWarning("%s%s%d", first.c_str(), second.c_str(), 1);
    EXPECT_THAT(logger.messages, ElementsAre(Pair("warning", first + std::string(23, 'b'))));
}

TEST_F(Logging, keepsUtf8AsItIs)
{
    EXPECT_EQ(logged("gr\xc3\xbc\xc3\x9f \xe2\x82\xac \xf0\x9f\x98\x80"),
              "gr\xc3\xbc\xc3\x9f \xe2\x82\xac \xf0\x9f\x98\x80");
}

TEST_F(Logging, countsBytesWhenItCutsAndNotCharacters)
{
    // 1022 bytes, and a character of three of which one fits.
    EXPECT_EQ(logged(std::string(1022, 'x') + "\xe2\x82\xac"), std::string(1022, 'x') + '\xe2');
    EXPECT_EQ(logged(std::string(1020, 'x') + "\xe2\x82\xac"), std::string(1020, 'x') + "\xe2\x82\xac");
}

TEST_F(Logging, endsAMessageAtAZeroByte)
{
    logInfo("before%cafter", 0);
    EXPECT_THAT(logger.messages, ElementsAre(Pair("info", "before")));
}

TEST_F(Logging, goesToTheLoggerThatWasSetLast)
{
    RecordingLogger second;
    logInfo("1");
    setLogger(&second);
    logInfo("2");
    setLogger(&logger);
    logInfo("3");
    EXPECT_THAT(logger.messages, ElementsAre(Pair("info", "1"), Pair("info", "3")));
    EXPECT_THAT(second.messages, ElementsAre(Pair("info", "2")));
}

TEST_F(Logging, toleratesALoggerThatLogsAndReplacesItself)
{
    class Nested : public RecordingLogger
    {
    public:
        explicit Nested(Logger *nextLogger) : m_next(nextLogger) {}
        void info(const std::string &message) override
        {
            setLogger(m_next);
            logWarning("within %s", message.c_str());
            RecordingLogger::info(message);
        }

    private:
        Logger *m_next;
    };
    Nested nested(&logger);
    setLogger(&nested);
    logInfo("outer");
    EXPECT_THAT(nested.messages, ElementsAre(Pair("info", "outer")));
    EXPECT_THAT(logger.messages, ElementsAre(Pair("warning", "within outer")));
}

TEST_F(Logging, passesOnWhatTheLoggerThrows)
{
    class Throwing : public RecordingLogger
    {
    public:
        void warning(const std::string &message) override { throw std::runtime_error(message); }
    };
    Throwing throwing;
    setLogger(&throwing);
    EXPECT_THROW(logWarning("%d", 1), std::runtime_error);
    logInfo("next");
    EXPECT_THAT(throwing.messages, ElementsAre(Pair("info", "next")));
}

TEST_F(Logging, keepsMessagesOfDifferentThreadsApart)
{
    std::vector<std::thread> threads;
    for (const char letter : {'a', 'b', 'c', 'd'}) {
        threads.emplace_back([letter] {
            const std::string text(1500, letter);
            for (int i = 0; i < 100; ++i)
                logInfo("%s", text.c_str());
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    ASSERT_EQ(logger.messages.size(), 400u);
    for (const char letter : {'a', 'b', 'c', 'd'}) {
        const std::pair<std::string, std::string> expected("info", std::string(1023, letter));
        EXPECT_EQ(std::count(logger.messages.begin(), logger.messages.end(), expected), 100);
    }
}

TEST_F(LoggingDeathTest, diesWithoutALogger)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    setLogger(nullptr);
    EXPECT_DEATH(logInfo("lost"), "");
    EXPECT_DEATH(logWarning("lost"), "");
    EXPECT_DEATH(logLevel3("lost"), "");
    EXPECT_DEATH(logLevel4("lost"), "");
}
