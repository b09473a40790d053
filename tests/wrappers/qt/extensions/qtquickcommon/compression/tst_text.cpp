#include "support/compressionharness.h"
#include "support/syntheticevents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Vantle;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Text : public testing::Test
{
protected:
    void type(const QByteArray &text, Modifier::Value modifiers = Modifier::None)
    {
        harness.eat(keyPress(edit, text, time++, modifiers));
        harness.eat(keyRelease(edit, text, time++, modifiers));
    }

    CompressionHarness harness;
    TestObjectPtr edit = makeObject("edit", itemClass());
    TestObjectPtr other = makeObject("other", itemClass());
    quint64 time = 1000;
};

} // namespace

TEST_F(Text, charactersBeforeAMousePressAreOneStatementAndThePressGoesOn)
{
    type("a");
    type("b");
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.eat(mousePress(other, {10, 20}, 2000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"ab\" @1000"));
    EXPECT_EQ(harness.queued(), 1u);
    harness.eat(mouseRelease(other, {10, 20}, 2050));
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("mouseClick other (QQuickItem) 10/20 LeftButton None @2000"));
}

TEST_F(Text, specialKeyBehindACharacterMakesTwoStatementsAtItsRelease)
{
    type("a");
    harness.eat(keyPress(edit, "<Return>", 1010));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.eat(keyRelease(edit, "<Return>", 1020));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"a\" @1000", "type edit \"<Return>\" @1010"));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(Text, openingBracketAtTheStartIsAStatementOfItsOwn)
{
    harness.eat(keyPress(edit, "<", 1000));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.eat(keyRelease(edit, "<", 1010));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"<\" @1000"));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(Text, openingBracketBehindACharacterIsJoined)
{
    type("a");
    type("<");
    type("b");
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"a<b\" @1000"));
}

TEST_F(Text, openingBracketBehindAKeyWithoutTextIsJoinedOnlyWithWhatFollows)
{
    // The release of the silent key was the first, so the bracket's doesn't decide;
    // nothing was typed yet, so it stands alone all the same.
    type("");
    type("<");
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"<\" @1002"));
}

TEST_F(Text, characterOutsideAsciiIsSpecial)
{
    type("a");
    type("\xC3\xA9");
    type("b");
    harness.flush();
    EXPECT_THAT(harness.takeStatements(),
                ElementsAre("type edit \"a\" @1000", "type edit \"\xC3\xA9\" @1002", "type edit \"b\" @1004"));
}

TEST_F(Text, modifierAloneWritesNothingInAFlush)
{
    harness.eat(keyPress(edit, "", 1000, Modifier::Shift));
    harness.eat(keyRelease(edit, "", 1010, Modifier::Shift));
    EXPECT_EQ(harness.queued(), 2u);
    harness.compressor.finishCompression();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    EXPECT_EQ(harness.queued(), 0u);
    harness.compressor.resetInput();
}

TEST_F(Text, changeOfTheTargetEndsTheTyping)
{
    type("a");
    harness.eat(keyPress(other, "b", 1010));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"a\" @1000"));
    EXPECT_EQ(harness.queued(), 1u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type other \"b\" @1010"));
}

TEST_F(Text, anotherWrapperOfTheTargetContinuesTheTyping)
{
    const TestObjectPtr alias = makeObject("alias", itemClass());
    alias->wrapSameAs(edit.get());
    type("a");
    harness.eat(keyPress(alias, "b", 1010));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"ab\" @1000"));
}

TEST_F(Text, loneReleaseIsDroppedAtOnce)
{
    harness.eat(keyRelease(edit, "a", 1000));
    EXPECT_EQ(harness.queued(), 0u);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
}

TEST_F(Text, characterRolledOverASpecialKeyIsWrittenAtTheReleaseOfThatKey)
{
    harness.eat(keyPress(edit, "<Tab>", 1000));
    harness.eat(keyPress(edit, "a", 1010));
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.eat(keyRelease(edit, "<Tab>", 1020));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"<Tab>\" @1000", "type edit \"a\" @1010"));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(Text, shiftedCharactersAreJoined)
{
    harness.eat(keyPress(edit, "", 1000, Modifier::Shift));
    harness.eat(keyPress(edit, "A", 1010, Modifier::Shift));
    harness.eat(keyRelease(edit, "A", 1020, Modifier::Shift));
    harness.eat(keyRelease(edit, "", 1030, Modifier::Shift));
    type("b");
    EXPECT_THAT(harness.takeStatements(), IsEmpty());
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"Ab\" @1000"));
}

TEST_F(Text, readinessIsNotAskedFor)
{
    harness.eat(notReady(keyPress(edit, "a", 1000)));
    harness.eat(notReady(inputMethod(edit, "b", 1010)));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"a\" @1000", "type edit \"b\" @1010"));
}

TEST_F(Text, committedTextIsWrittenAtOnceAndEndsTheTyping)
{
    type("a");
    harness.eat(inputMethod(edit, "\xE3\x81\x82", 1010));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"a\" @1000", "type edit \"\xE3\x81\x82\" @1010"));
    EXPECT_EQ(harness.queued(), 0u);
}

TEST_F(Text, emptyCommittedTextIsWrittenToo)
{
    harness.eat(inputMethod(edit, "", 1000));
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"\" @1000"));
}

TEST_F(Text, typingIsHeldWithoutAnAlarm)
{
    type("a");
    harness.pass(1'000'000);
    EXPECT_EQ(harness.queued(), 2u);
    EXPECT_THAT(harness.alarmClock.calls, IsEmpty());
}

TEST_F(Text, specialKeyAtTheHeadStandsAlone)
{
    type("<Ctrl+a>", Modifier::Control);
    type("x");
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"<Ctrl+a>\" @1000", "type edit \"x\" @1002"));
}

TEST_F(Text, keysWithoutAnObjectAreWrittenOneByOne)
{
    SyntheticEvent press = keyPress(edit, "a", 1000);
    press.object = SharedPtr<Object>();
    harness.eat(press);
    press.timestamp = 1010;
    harness.eat(press);
    harness.flush();
    EXPECT_THAT(harness.takeStatements(), ElementsAre("type edit \"a\" @1000", "type edit \"a\" @1010"));
}
