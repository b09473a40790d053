#include "support/compressiontranscript.h"
#include "support/eventscript.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace VantleTest;

namespace {

std::vector<std::filesystem::path> transcripts()
{
    std::vector<std::filesystem::path> paths;
    for (const auto &entry : std::filesystem::directory_iterator(VANTLE_TEST_DATA_DIR "/golden")) {
        if (entry.path().extension() == ".txt")
            paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::string contents(const std::filesystem::path &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// scripts/approve-golden asks for new results to be written rather than compared.
bool isApproving()
{
    const char *value = std::getenv("VANTLE_APPROVE_GOLDEN");
    return value && *value;
}

class Golden : public testing::TestWithParam<std::filesystem::path>
{
};

} // namespace

TEST_P(Golden, eventsMakeTheseStatements)
{
    const std::string expected = contents(GetParam());
    ASSERT_FALSE(expected.empty()) << GetParam();
    const std::string result = runTranscript(expected);
    if (isApproving() && result != expected)
        std::ofstream(GetParam(), std::ios::binary) << result;
    else
        EXPECT_EQ(result, expected) << "scripts/approve-golden takes the new result over";
}

INSTANTIATE_TEST_SUITE_P(Compression, Golden, testing::ValuesIn(transcripts()), [](const auto &test) {
    std::string name = test.param.stem().string();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

TEST(GoldenFiles, haveEveryKindOfStatement)
{
    std::set<std::string> kinds;
    for (const std::filesystem::path &path : transcripts()) {
        std::istringstream in(contents(path));
        for (std::string line; std::getline(in, line);) {
            const EventScript::Words words = EventScript::split(line);
            if (words.size() > 1 && words[0] == "->")
                kinds.insert(words[1]);
        }
    }
    EXPECT_THAT(kinds,
                testing::UnorderedElementsAre("type", "mouseClick", "mouseDrag", "mouseWheel", "doubleClick", "flick",
                                              "closeWindow", "moveWindow", "setWindowSize", "setWindowState",
                                              "tapObject", "touchAndDrag", "doubleTap", "gesture"));
}

TEST(Transcript, saysWhichLineIsWrong)
{
    const auto messageOf = [](const char *text) -> std::string {
        try {
            runTranscript(text);
        } catch (const EventScriptError &error) {
            return error.what();
        }
        return "no error";
    };
    EXPECT_EQ(messageOf("# a comment\n@1000 press item LeftButton 1/2\n"),
              "line 2: expected the name of an object but found `item`");
    EXPECT_EQ(messageOf("object item QQuickItem\n@1000 press item LeftButton 1\n"),
              "line 2: expected two numbers with `/` between them but found `1`");
    EXPECT_EQ(messageOf("object item QQuickItem\n@1000 hop item\n"),
              "line 2: expected a kind of event but found `hop`");
    EXPECT_EQ(messageOf("object item QQuickItem\n@1000 close item now\n"),
              "line 2: expected the end of the line but found `now`");
    EXPECT_EQ(messageOf("wait long\n"), "line 1: expected a number but found `long`");
    EXPECT_EQ(messageOf("object item QQuickItem\n@1000 commit item \"open\n"),
              "line 2: expected a closing quote but found `the end of the line`");
}

TEST(Transcript, leavesOutResultsThatAreNoLongerTrue)
{
    EXPECT_EQ(runTranscript("object item QQuickItem\n@1 commit item \"a\"\n    -> nonsense\n"),
              "object item QQuickItem\n@1 commit item \"a\"\n    -> type item \"a\" @1\n    0 queued\n");
}
