#include "protocol/linesplitter.h"

#include <gtest/gtest.h>

using Vantle::Protocol::LineSplitter;

namespace {

TEST(LineSplitter, joinsALineFromPieces)
{
    LineSplitter splitter;
    splitter.setLimit(100);
    EXPECT_TRUE(splitter.feed("ab"));
    EXPECT_FALSE(splitter.hasLine());
    EXPECT_TRUE(splitter.hasPartialLine());
    EXPECT_TRUE(splitter.feed("cd\n"));
    ASSERT_TRUE(splitter.hasLine());
    EXPECT_EQ(splitter.takeLine(), "abcd");
    EXPECT_FALSE(splitter.hasLine());
    EXPECT_FALSE(splitter.hasPartialLine());
}

TEST(LineSplitter, cutsSeveralLinesFromOnePiece)
{
    LineSplitter splitter;
    splitter.setLimit(100);
    EXPECT_TRUE(splitter.feed("one\n\ntwo\nthr"));
    EXPECT_EQ(splitter.takeLine(), "one");
    EXPECT_EQ(splitter.takeLine(), "");
    EXPECT_EQ(splitter.takeLine(), "two");
    EXPECT_FALSE(splitter.hasLine());
    EXPECT_TRUE(splitter.hasPartialLine());
}

TEST(LineSplitter, acceptsALineOfExactlyTheLimit)
{
    LineSplitter splitter;
    splitter.setLimit(4);
    EXPECT_TRUE(splitter.feed("ab"));
    EXPECT_TRUE(splitter.feed("cd\n"));
    EXPECT_EQ(splitter.takeLine(), "abcd");
}

TEST(LineSplitter, refusesALongerLineBeforeItsEndIsSeen)
{
    LineSplitter splitter;
    splitter.setLimit(4);
    EXPECT_TRUE(splitter.feed("ok\nabcd"));
    EXPECT_FALSE(splitter.feed("e"));
    EXPECT_FALSE(splitter.hasPartialLine()) << "nothing of the long line is kept";
    EXPECT_EQ(splitter.takeLine(), "ok");
}

TEST(LineSplitter, refusesEverythingBehindALineThatWasTooLong)
{
    LineSplitter splitter;
    splitter.setLimit(4);
    EXPECT_FALSE(splitter.feed("abcde\nxy\n"));
    EXPECT_FALSE(splitter.feed("z\n"));
    EXPECT_FALSE(splitter.hasLine());
}

TEST(LineSplitter, clearForgetsLinesAndPieces)
{
    LineSplitter splitter;
    splitter.setLimit(4);
    EXPECT_TRUE(splitter.feed("a\nb"));
    splitter.clear();
    EXPECT_FALSE(splitter.hasLine());
    EXPECT_TRUE(splitter.feed("c\n"));
    EXPECT_EQ(splitter.takeLine(), "c");
}

} // namespace
