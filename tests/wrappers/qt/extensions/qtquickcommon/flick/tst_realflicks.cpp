#include "flickscene.h"

#include <gmock/gmock.h>

#include <QtCore/QPointer>

using namespace VantleTest;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

const QByteArray oneFlickable = R"(
    Flickable {
        objectName: "sheet"; anchors.fill: parent; flickDeceleration: 15000; contentWidth: 3000; contentHeight: 3000
        Rectangle { objectName: "page"; width: 3000; height: 3000; color: "lightgray" }
    })";

const QByteArray oneList = R"(
    ListView {
        objectName: "list"; anchors.fill: parent; flickDeceleration: 15000; model: 500
        delegate: Rectangle { width: 300; height: 40 }
    })";

/// The outer one moves up and down, the inner one left and right.
const QByteArray nestedFlickables = R"(
    Flickable {
        objectName: "outer"; anchors.fill: parent; flickDeceleration: 15000; contentHeight: 3000
        flickableDirection: Flickable.VerticalFlick
        Flickable {
            objectName: "inner"; flickDeceleration: 15000; width: 300; height: 300; contentWidth: 3000
            flickableDirection: Flickable.HorizontalFlick
            Rectangle { width: 3000; height: 300; color: "lightgray" }
        }
    })";

std::string flickText(const QQuickFlickable *flickable, QPoint distance)
{
    return "flick \"Window " + flickable->objectName().toStdString() + "\" " + std::to_string(distance.x()) + ' '
        + std::to_string(distance.y());
}

QPoint contentPosition(const QQuickFlickable *flickable)
{
    return {static_cast<int>(flickable->contentX()), static_cast<int>(flickable->contentY())};
}

class RealFlicks : public FlickScene
{
protected:
    /// The statements, with the names of objects cut down to their objectName.
    std::vector<std::string> finishShort()
    {
        std::vector<std::string> texts = finish();
        for (std::string &text : texts)
            shorten(&text);
        return texts;
    }

private:
    static void shorten(std::string *text)
    {
        const std::string key = "objectName=\"";
        const std::size_t name = text->find(key);
        const std::size_t start = text->find('"');
        if (name == std::string::npos)
            return;
        const std::size_t end = text->find('"', name + key.size());
        const std::size_t rest = text->rfind('"');
        *text = text->substr(0, start + 1) + "Window " + text->substr(name + key.size(), end - name - key.size())
            + text->substr(rest);
    }
};

class RealFlicksByPointer
    : public RealFlicks
    , public testing::WithParamInterface<bool>
{
protected:
    RealFlicksByPointer() { pointer = GetParam() ? Pointer::Finger : Pointer::Mouse; }
};

} // namespace

TEST_P(RealFlicksByPointer, FlickOfAFlickableIsOneStatementWithTheDistanceThatItWent)
{
    show(oneFlickable);
    auto *const sheet = find("sheet");
    sheet->setContentX(500);
    sheet->setContentY(500);
    drag({200, 250}, {150, 50});
    ASSERT_TRUE(waitForRest(sheet));
    const QPoint distance = contentPosition(sheet) - QPoint(500, 500);
    EXPECT_GT(distance.y(), 150);
    EXPECT_THAT(finishShort(), ElementsAre(flickText(sheet, distance)));
}

TEST_P(RealFlicksByPointer, FlickDownHasANegativeDistance)
{
    show(oneList);
    auto *const list = find("list");
    list->setContentY(4000);
    drag({100, 60}, {100, 260});
    ASSERT_TRUE(waitForRest(list));
    const QPoint distance = contentPosition(list) - QPoint(0, 4000);
    EXPECT_LT(distance.y(), -150);
    EXPECT_THAT(finishShort(), ElementsAre(flickText(list, distance)));
}

TEST_P(RealFlicksByPointer, FlickIsRecordedAlthoughTheListDestroysThePressedRow)
{
    show(R"(
        ListView {
            objectName: "list"; anchors.fill: parent; flickDeceleration: 3000; model: 500; cacheBuffer: 0
            delegate: Rectangle { objectName: "row" + index; width: 300; height: 40 }
        })");
    auto *const list = find("list");
    const QPointer<QQuickItem> row = list->childAt(100, 110)->childAt(100, 110); // the current row, the first, stays
    ASSERT_TRUE(row);
    drag({100, 110}, {100, 10});
    ASSERT_TRUE(waitForRest(list));
    ASSERT_FALSE(row);
    EXPECT_THAT(finishShort(), ElementsAre(flickText(list, contentPosition(list))));
}

TEST_P(RealFlicksByPointer, DragThatHaltsBeforeTheReleaseIsAFlickToo)
{
    show(oneList);
    auto *const list = find("list");
    dragAndHalt({100, 250}, {100, 150});
    ASSERT_TRUE(waitForRest(list));
    const QPoint distance = contentPosition(list);
    EXPECT_GT(distance.y(), 50);
    EXPECT_THAT(finishShort(), ElementsAre(flickText(list, distance)));
}

TEST_P(RealFlicksByPointer, OfTwoNestedFlickablesTheOneThatMovesIsFlicked)
{
    show(nestedFlickables);
    auto *const outer = find("outer");
    auto *const inner = find("inner");
    drag({150, 250}, {150, 80});
    ASSERT_TRUE(waitForRest(outer));
    EXPECT_EQ(contentPosition(inner), QPoint(0, 0));
    const QPoint distance = contentPosition(outer);
    EXPECT_GT(distance.y(), 100);
    outer->setContentY(0);

    drag({250, 150}, {80, 150});
    ASSERT_TRUE(waitForRest(inner));
    const QPoint innerDistance = contentPosition(inner);
    EXPECT_GT(innerDistance.x(), 100);
    EXPECT_THAT(finishShort(), ElementsAre(flickText(outer, distance), flickText(inner, innerDistance)));
}

TEST_P(RealFlicksByPointer, QueueHoldsPressStartReleaseEndInThatOrder)
{
    show(oneList);
    drag({100, 250}, {100, 80});
    ASSERT_TRUE(waitForRest(find("list")));
    if (pointer == Pointer::Mouse)
        EXPECT_THAT(recordedKinds(), ElementsAre("press", "flick started", "release", "flick ended"));
    else
        EXPECT_THAT(recordedKinds(), ElementsAre("begin", "flick started", "end", "flick ended"));
}

TEST_P(RealFlicksByPointer, PressWithoutMovementLeavesNothingBehind)
{
    TraceLog trace;
    show(nestedFlickables);
    press({150, 150});
    release({150, 150});
    std::vector<std::string> traces = trace.takeTexts();
    std::erase_if(traces, [](const std::string &text) { return text.find("flickable") == std::string::npos; });
    ASSERT_EQ(traces.size(), 4U);
    EXPECT_THAT(traces.back(), testing::EndsWith(", 0 flickables left to watch"));
    EXPECT_THAT(finishShort(), ElementsAre(StartsWith(pointer == Pointer::Mouse ? "mouseClick" : "tapObject")));
    EXPECT_THAT(log.warnings, IsEmpty());
}

TEST_P(RealFlicksByPointer, FlicksFollowEachOther)
{
    show(oneList);
    auto *const list = find("list");
    std::vector<std::string> expected;
    for (int i = 0; i < 3; ++i) {
        const QPoint before = contentPosition(list);
        drag({100, 250}, {100, 150});
        ASSERT_TRUE(waitForRest(list));
        expected.push_back(flickText(list, contentPosition(list) - before));
    }
    EXPECT_EQ(finishShort(), expected);
}

TEST_P(RealFlicksByPointer, FlickThatMovesNothingIsNone)
{
    show(R"(Flickable { objectName: "still"; anchors.fill: parent; contentWidth: 300; contentHeight: 300
                        interactive: false; Rectangle { width: 300; height: 300 } })");
    drag({100, 250}, {100, 80});
    EXPECT_THAT(finishShort(), ElementsAre(StartsWith(pointer == Pointer::Mouse ? "mouseDrag" : "touchAndDrag")));
}

INSTANTIATE_TEST_SUITE_P(Pointers, RealFlicksByPointer, testing::Bool(),
                         [](const auto &pointerInfo) { return pointerInfo.param ? "Finger" : "Mouse"; });
