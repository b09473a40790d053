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

TEST(LineSplitter, countsWhatItHoldsAndNotOnlyTheBytesOfLongLines)
{
    LineSplitter splitter;
    splitter.setLimit(10000);
    EXPECT_EQ(splitter.backlog(), 0);
    splitter.feed(QByteArray(5000, 'x') + "\n" + QByteArray(1000, '\n') + "part");
    EXPECT_GE(splitter.backlog(), 5000 + 1000 * qsizetype(sizeof(QByteArray)));
    while (splitter.hasLine())
        splitter.takeLine();
    EXPECT_EQ(splitter.backlog(), 0);
    splitter.feed("a\nb\n");
    splitter.clear();
    EXPECT_EQ(splitter.backlog(), 0);
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
