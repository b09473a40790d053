#include "wrappers/qt/extensions/qtquickcommon/compression/eventdescription.h"

#include "support/compressionharness.h"
#include "support/syntheticevents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <locale>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class EventDescription : public testing::Test
{
protected:
    HandClock clock{77};
    TestObjectPtr item = makeObject("item", itemClass());
};

const QByteArray tail = " on object of type 'QQuickItem' which is ready";

class LogOfCompression : public testing::Test
{
protected:
    TestLogger logger;
    CompressionHarness harness;
    TestObjectPtr item = makeObject("item", itemClass());
};

} // namespace

TEST_F(EventDescription, newRecordIsInvalidWithTheTail)
{
    EXPECT_EQ(describeEvent(SyntheticEvent()), "@77 invalid event on object of type '' which is not ready");
}

TEST_F(EventDescription, mouse)
{
    EXPECT_EQ(describeEvent(mousePress(item, {100, 200}, 1000)),
              "@1000 mouse event: (press, LeftButton, 100/200) on object of type 'QQuickItem' which is ready");
    EXPECT_EQ(describeEvent(mouseMove(item, {-1, 2}, 1)), "@1 mouse event: (move, -1/2)" + tail);
    EXPECT_EQ(describeEvent(mouseRelease(item, {1, 2}, 1, MouseButton::XButton2)),
              "@1 mouse event: (release, XButton2, 1/2)" + tail);
}

TEST_F(EventDescription, everyButtonHasItsName)
{
    const auto nameOf = [this](MouseButton::Value button) {
        QByteArray text = describeEvent(mousePress(item, {1, 2}, 1, button));
        return text.mid(24, text.indexOf(", 1/2") - 24);
    };
    EXPECT_EQ(nameOf(MouseButton::None), "None");
    EXPECT_EQ(nameOf(MouseButton::LeftButton), "LeftButton");
    EXPECT_EQ(nameOf(MouseButton::MiddleButton), "MiddleButton");
    EXPECT_EQ(nameOf(MouseButton::RightButton), "RightButton");
    EXPECT_EQ(nameOf(MouseButton::Wheel), "Wheel");
    EXPECT_EQ(nameOf(MouseButton::PrimaryButton), "PrimaryButton");
    EXPECT_EQ(nameOf(MouseButton::SecondaryButton), "SecondaryButton");
    EXPECT_EQ(nameOf(MouseButton::XButton1), "XButton1");
    EXPECT_EQ(nameOf(MouseButton::XButton2), "XButton2");
    EXPECT_EQ(nameOf(static_cast<MouseButton::Value>(3)), "");
}

TEST_F(EventDescription, inputMethod)
{
    EXPECT_EQ(describeEvent(inputMethod(item, "\xE3\x81\x82", 1)), "@1 input method event: (\xE3\x81\x82)" + tail);
}

TEST_F(EventDescription, wheelHasDegreeSignsInUtf8)
{
    EXPECT_EQ(describeEvent(wheel(item, {1, 2}, {-15, 120}, 1)),
              "@1 mouse wheel event: (-15\xC2\xB0/120\xC2\xB0)" + tail);
}

TEST_F(EventDescription, keyHasHexadecimalNumbersWithoutLeadingZerosAndGoesBackToDecimal)
{
    SyntheticEvent event = keyPress(item, "a", 1000, Modifier::Control | Modifier::Shift);
    event.key = 0x100001f;
    EXPECT_EQ(describeEvent(event), "@1000 keyboard event: (press, key=0x100001f, modifiers=0x180, text=a)" + tail);
    event.keyEventType = SyntheticEvent::KeyRelease;
    event.key = 0;
    event.modifiers = Modifier::None;
    EXPECT_EQ(describeEvent(event), "@1000 keyboard event: (release, key=0x0, modifiers=0x0, text=a)" + tail);
    event.key = -1;
    EXPECT_EQ(describeEvent(event), "@1000 keyboard event: (release, key=0xffffffff, modifiers=0x0, text=a)" + tail);
}

TEST_F(EventDescription, windows)
{
    EXPECT_EQ(describeEvent(windowClose(item, 1)), "@1 window close event" + tail);
    EXPECT_EQ(describeEvent(windowMove(item, {1, 2}, {3, -4}, 1)), "@1 window move event: (3/-4)" + tail);
    EXPECT_EQ(describeEvent(windowResize(item, {640, 480}, 1)), "@1 window resize event: (640/480)" + tail);
    EXPECT_EQ(describeEvent(windowState(item, 4, 1)), "@1 window state change event: (4)" + tail);
}

TEST_F(EventDescription, flicks)
{
    EXPECT_EQ(describeEvent(flickStarted(item, item, {1, 2}, 1)),
              "@1 flick event: (flick started, contentPos=1/2)" + tail);
    EXPECT_EQ(describeEvent(flickEnded(item, item, {1, -2}, 1)),
              "@1 flick event: (flick ended, contentPos=1/-2)" + tail);
}

TEST_F(EventDescription, touchHasTwoDecimalsAndATrailingSeparator)
{
    EXPECT_EQ(describeEvent(touchBegin(item, {finger(1, 10, 20.5), finger(2, 1.0 / 3, 1234567.891)}, 1)),
              "@1 touch event: (begin, points={1:10.00/20.50, 2:0.33/1234567.89, } primary=1)" + tail);
    EXPECT_EQ(describeEvent(touchUpdate(item, {finger(7, 1, 2)}, 1)),
              "@1 touch event: (update, points={7:1.00/2.00, } primary=7)" + tail);
}

TEST_F(EventDescription, touchWithoutPointsHasNoPrimaryFinger)
{
    EXPECT_EQ(describeEvent(touchEnd(item, {}, 1)), "@1 touch event: (end, points={} primary=NONE)" + tail);
}

TEST_F(EventDescription, primaryFingerOutOfRangeIsNone)
{
    SyntheticEvent event = touchEnd(item, {finger(7, 1, 2)}, 1);
    event.touch.primaryIndex = 1;
    EXPECT_EQ(describeEvent(event), "@1 touch event: (end, points={7:1.00/2.00, } primary=NONE)" + tail);
}

TEST_F(EventDescription, typeOutsideTheKnownOnesWritesNothingInItsPlace)
{
    EXPECT_EQ(describeEvent(makeEvent(static_cast<SyntheticEvent::Type>(10), item, 1)), "@1 " + tail);
}

TEST_F(EventDescription, notReadyIsSaid)
{
    EXPECT_EQ(describeEvent(notReady(windowClose(item, 1))),
              "@1 window close event on object of type 'QQuickItem' which is not ready");
}

TEST_F(EventDescription, numbersAreFreeOfTheGlobalLocale)
{
    struct Grouping : std::numpunct<char>
    {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
        char do_decimal_point() const override { return ','; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    const QByteArray text = describeEvent(touchEnd(item, {finger(7, 1234.5, 2)}, 1000000));
    std::locale::global(before);
    EXPECT_EQ(text, "@1000000 touch event: (end, points={7:1234.50/2.00, } primary=7)" + tail);
}

TEST_F(EventDescription, modifiersAreNamedInTheOrderOfTheirBits)
{
    EXPECT_EQ(describeModifiers(Modifier::None), "None");
    EXPECT_EQ(describeModifiers(Modifier::Shift), "[Shift]");
    EXPECT_EQ(describeModifiers(static_cast<Modifier::Value>(0x180)), "[Control,Shift]");
    EXPECT_EQ(describeModifiers(static_cast<Modifier::Value>(0xF80)), "[Control,Shift,Alt,Win,Command]");
    EXPECT_EQ(describeModifiers(static_cast<Modifier::Value>(1)), "[]");
    EXPECT_EQ(describeModifiers(static_cast<Modifier::Value>(0x201)), "[Alt]");
}

TEST_F(LogOfCompression, isSilentAtLevel0)
{
    harness.eat(inputMethod(item, "a", 1000));
    harness.eat(mouseRelease(item, {1, 2}, 1010));
    harness.flush();
    EXPECT_THAT(logger.lines, IsEmpty());
}

TEST_F(LogOfCompression, hasEachEatenEventAtLevel1)
{
    harness.compressor.setDebugLevel(1);
    harness.eat(inputMethod(item, "a", 1000));
    harness.eat(mouseRelease(item, {1, 2}, 1010));
    harness.flush();
    EXPECT_THAT(logger.lines,
                ElementsAre("EventCompressor::eatEvent: @1000 input method event: (a)" + tail.toStdString(),
                            "EventCompressor::eatEvent: @1010 mouse event: (release, LeftButton, 1/2)"
                                + tail.toStdString()));
}

TEST_F(LogOfCompression, tracesCompressionAtLevel2)
{
    harness.compressor.setDebugLevel(2);
    const std::string press = "@900 keyboard event: (press, key=0x0, modifiers=0x100, text=)" + tail.toStdString();
    const std::string commit = "@1000 input method event: (a)" + tail.toStdString();
    harness.eat(keyPress(item, "", 900, Modifier::Shift));
    harness.eat(inputMethod(item, "a", 1000));
    EXPECT_THAT(logger.lines,
                ElementsAre("EventCompressor::eatEvent: " + press, "EventCompressor::eatEvent: " + commit,
                            "TextInputCompressor: Considering 2 events (initial modifiers = 'None'):",
                            "TextInputCompressor: #0: " + press, "TextInputCompressor: #1: " + commit,
                            "TextInputCompressor: 1 events left after compression",
                            "InputMethodCompressor: Considering 1 events (initial modifiers = '[Shift]'):",
                            "InputMethodCompressor: #0: " + commit,
                            "InputMethodCompressor: 0 events left after compression"));
}

TEST_F(LogOfCompression, tracesWhatIsThrownAwayAtLevel2)
{
    harness.compressor.setDebugLevel(2);
    harness.eat(mouseRelease(item, {1, 2}, 1010));
    const std::string release = "@1010 mouse event: (release, LeftButton, 1/2)" + tail.toStdString();
    EXPECT_THAT(logger.lines,
                ElementsAre("EventCompressor::eatEvent: " + release,
                            "<None>: Considering 1 events (initial modifiers = 'None'):", "<None>: #0: " + release));
}

TEST_F(LogOfCompression, tracesAFlushAtLevel2)
{
    harness.eat(mousePress(item, {1, 2}, 1000));
    harness.compressor.setDebugLevel(2);
    harness.flush();
    const std::string press = "@1000 mouse event: (press, LeftButton, 1/2)" + tail.toStdString();
    EXPECT_THAT(logger.lines,
                ElementsAre("Finishing event compression with 1 events in queue",
                            "Clearing event compression queue which still holds 1 events", "resetInput: #0: " + press));
}

TEST_F(LogOfCompression, tracesTheOnePatternOfAFlushAtLevel2)
{
    harness.eat(wheel(item, {1, 2}, {0, 15}, 1000));
    harness.compressor.setDebugLevel(2);
    harness.flush();
    const std::string turn = "@1000 mouse wheel event: (0\xC2\xB0/15\xC2\xB0)" + tail.toStdString();
    EXPECT_THAT(logger.lines,
                ElementsAre("Finishing event compression with 1 events in queue",
                            "WheelCompressor: Considering 1 events (initial modifiers = 'None'):",
                            "WheelCompressor: #0: " + turn, "WheelCompressor: 0 events left after compression",
                            "Clearing event compression queue which still holds 0 events"));
}

TEST_F(LogOfCompression, hasNoDumpOfAnEmptyQueue)
{
    harness.compressor.setDebugLevel(2);
    harness.compressor.alarm(0);
    EXPECT_THAT(logger.lines, IsEmpty());
}

TEST_F(LogOfCompression, namesEveryPatternByItsClass)
{
    const TestObjectPtr widget = makeObject("widget", widgetClass());
    const auto firstName = [this](std::initializer_list<SyntheticEvent> events) {
        harness.flush();
        harness.compressor.setDebugLevel(2);
        logger.lines.clear();
        for (const SyntheticEvent &event : events)
            harness.eat(event);
        harness.compressor.finishCompression();
        harness.compressor.setDebugLevel(0);
        for (const std::string &line : logger.lines) {
            const std::size_t colon = line.find(": Considering");
            if (colon != std::string::npos)
                return line.substr(0, colon);
        }
        return std::string("nothing");
    };
    const auto begin = [this](quint64 time) { return touchBegin(item, {finger(1, 1, 1)}, time); };
    const auto end = [this](quint64 time) { return touchEnd(item, {finger(1, 1, 1)}, time); };
    EXPECT_EQ(firstName({begin(1), flickStarted(item, item, {}, 2), end(3), flickEnded(item, item, {}, 4)}),
              "TouchFlickCompressor");
    EXPECT_EQ(firstName({touchBegin(item, {finger(1, 1, 1), finger(2, 2, 2)}, 1), end(3)}), "TouchGestureCompressor");
    EXPECT_EQ(firstName({begin(1), end(2), begin(3), end(4)}), "DoubleTapCompressor");
    EXPECT_EQ(firstName({begin(1), end(2)}), "TapOrDragCompressor");
    const SyntheticEvent press = mousePress(item, {1, 1}, 1);
    const SyntheticEvent release = mouseRelease(item, {1, 1}, 2);
    EXPECT_EQ(firstName({press, flickStarted(item, item, {}, 2), release, flickEnded(item, item, {}, 4)}),
              "MouseFlickCompressor");
    EXPECT_EQ(firstName({press, release, press}), "DoubleClickCompressor");
    EXPECT_EQ(firstName({press, mouseRelease(item, {9, 9}, 2)}), "MouseDragCompressor");
    EXPECT_EQ(firstName({mousePress(widget, {1, 1}, 1), mouseRelease(widget, {9, 9}, 2)}), "MouseDragCompressor");
    EXPECT_EQ(firstName({inputMethod(item, "a", 1)}), "InputMethodCompressor");
    EXPECT_EQ(firstName({keyPress(item, "a", 1)}), "TextInputCompressor");
    EXPECT_EQ(firstName({press, release}), "MouseClickCompressor");
    EXPECT_EQ(firstName({wheel(item, {1, 1}, {1, 1}, 1)}), "WheelCompressor");
    EXPECT_EQ(firstName({windowClose(item, 1)}), "WindowCloseCompressor");
    EXPECT_EQ(firstName({windowMove(item, {1, 1}, {2, 2}, 1), windowMove(item, {1, 1}, {2, 2}, 1)}),
              "WindowMoveCompressor");
    EXPECT_EQ(firstName({windowResize(item, {1, 1}, 1)}), "WindowResizeCompressor");
    EXPECT_EQ(firstName({windowState(item, 1, 1)}), "WindowStateChangeCompressor");
}
