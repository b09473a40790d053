#include "wrappers/qt/functions/replayscene.h"

#include <QtGui/QClipboard>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using testing::HasSubstr;

namespace {

class KeyFunctions : public VantleTest::ReplayScene
{
protected:
    void SetUp() override
    {
        load(R"(
            Window {
                id: main; objectName: "main"; visible: true; width: 400; height: 300
                property bool saved: false
                property string log
                TextInput { objectName: "input"; width: 200; height: 20 }
                TextField { objectName: "field"; y: 30; width: 200 }
                TextArea { objectName: "area"; y: 80; width: 200; height: 100 }
                Item {
                    objectName: "keys"; y: 200; width: 20; height: 20
                    Keys.onPressed: event => main.log += event.key + ":" + event.modifiers + ":" + event.text + ";"
                }
                Shortcut { sequence: "Ctrl+S"; onActivated: main.saved = true }
            })");
    }

    std::string log() { return property("main", "log").toString().toStdString(); }
};

} // namespace

TEST_F(KeyFunctions, TextIsTypedIntoTheObjectAndRecordedAgain)
{
    play("type", "input", {QStringLiteral("hello, world")});
    EXPECT_EQ(text("input"), "hello, world");
    EXPECT_EQ(recorded(), Lines({"type input hello, world"}));
}

TEST_F(KeyFunctions, CapitalLettersStayInOneText)
{
    play("type", "field", {QStringLiteral("Hello World 1!")});
    EXPECT_EQ(text("field"), "Hello World 1!");
    EXPECT_EQ(recorded(), Lines({"type field Hello World 1!"}));
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::NoModifier);
}

TEST_F(KeyFunctions, BracketsBehindOtherCharactersAreText)
{
    play("type", "input", {QStringLiteral("<")});
    play("type", "input", {QStringLiteral("a<Tab>")});
    EXPECT_EQ(text("input"), "<a<Tab>");
    EXPECT_EQ(recorded(), Lines({"type input <", "type input a<Tab>"}));
}

TEST_F(KeyFunctions, KeysAreTypedByTheirNames)
{
    play("type", "input", {QStringLiteral("abc")});
    play("type", "input", {QStringLiteral("<Left>")});
    play("type", "input", {QStringLiteral("<Backspace>")});
    play("type", "input", {QStringLiteral("<Shift+Home>")});
    play("type", "input", {QStringLiteral("x")});
    EXPECT_EQ(text("input"), "xc");
    EXPECT_EQ(recorded(),
              Lines({"type input abc", "type input <Left>", "type input <Backspace>", "type input <Shift+Home>",
                     "type input x"}));
}

TEST_F(KeyFunctions, TabMovesTheFocusOn)
{
    play("type", "field", {QStringLiteral("<Tab>")});
    EXPECT_FALSE(find("field")->hasActiveFocus());
    EXPECT_EQ(recorded(), Lines({"type field <Tab>"}));
}

TEST_F(KeyFunctions, ShortcutsOfTheProgramAreTriggered)
{
    play("type", "main", {QStringLiteral("<Ctrl+S>")});
    EXPECT_TRUE(window()->property("saved").toBool());
    EXPECT_EQ(recorded(), Lines({"type main <Ctrl+S>"}));
}

TEST_F(KeyFunctions, ShortcutsOfAnInputAreTriggered)
{
    play("type", "field", {QStringLiteral("abc")});
    play("type", "field", {QStringLiteral("<Ctrl+A>")});
    play("type", "field", {QStringLiteral("<Del>")});
    EXPECT_EQ(text("field"), "");
    EXPECT_EQ(recorded(), Lines({"type field abc", "type field <Ctrl+A>", "type field <Del>"}));
}

TEST_F(KeyFunctions, KeypadKeysAreToldApart)
{
    play("type", "keys", {QStringLiteral("<NumPad5>")});
    EXPECT_EQ(log(), "53:536870912:5;");
    EXPECT_EQ(recorded(), Lines({"type keys <NumPad5>"}));
}

TEST_F(KeyFunctions, ModifiersGoDownAheadOfTheKeyAndUpBehindIt)
{
    play("type", "keys", {QStringLiteral("<Ctrl+Shift+Z>")});
    EXPECT_EQ(log(), "16777249:67108864:;16777248:100663296:;90:100663296:\x1a;");
    EXPECT_EQ(QGuiApplication::keyboardModifiers(), Qt::NoModifier);
}

TEST_F(KeyFunctions, LettersBeyondAsciiAreTypedOneByOne)
{
    for (const QString &letter : {QStringLiteral("\u00e9"), QStringLiteral("\u4e16"), QStringLiteral("\U0001f600")})
        play("type", "input", {letter});
    EXPECT_EQ(text("input"), "\u00e9\u4e16\U0001f600");
    EXPECT_EQ(recorded(), Lines({"type input \u00e9", "type input \u4e16", "type input \U0001f600"}));
}

TEST_F(KeyFunctions, TextBeyondAsciiIsTypedAndRecordedInOnePiece)
{
    play("type", "area", {QStringLiteral("\u4e16\u754c, hello")});
    EXPECT_EQ(text("area"), "\u4e16\u754c, hello");
    EXPECT_EQ(recorded(), Lines({"type area \u4e16\u754c, hello"}));
}

TEST_F(KeyFunctions, EachCharacterBeyondAsciiIsAKey)
{
    play("type", "keys", {QStringLiteral("\u00e9X")});
    EXPECT_EQ(log(), "201:0:\u00e9;16777248:33554432:;88:33554432:X;");
}

TEST_F(KeyFunctions, LinesAreTypedWithReturn)
{
    play("type", "area", {QStringLiteral("one\ntwo")});
    EXPECT_EQ(text("area"), "one\ntwo");
}

TEST_F(KeyFunctions, ObjectGetsTheFocusUnlessSomethingInItHasIt)
{
    play("type", "field", {QStringLiteral("a")});
    EXPECT_TRUE(find("field")->hasActiveFocus());
    play("type", "input", {QStringLiteral("b")});
    EXPECT_TRUE(find("input")->hasActiveFocus());
    play("type", "main", {QStringLiteral("c")});
    EXPECT_EQ(text("input"), "bc");
}

TEST_F(KeyFunctions, NothingIsTypedForNoText)
{
    play("type", "input", {QString()});
    EXPECT_EQ(recorded(), Lines());
}

TEST_F(KeyFunctions, UnknownKeyNamesAreErrors)
{
    EXPECT_THAT(start("type", nameOf("input"), {QStringLiteral("<Nonsense>")}),
                HasSubstr("Cannot type: \"<Nonsense>\" is not the name of a key"));
    EXPECT_EQ(text("input"), "");
    EXPECT_TRUE(InputPlayer::self()->isIdle());
}

TEST_F(KeyFunctions, InvisibleObjectsAreErrors)
{
    find("input")->setVisible(false);
    EXPECT_THAT(start("type", wrap("input"), {QStringLiteral("a")}), HasSubstr("the item is not visible"));
}
