#include "wrappers/qt/functions/replayscene.h"

using namespace Vantle;
using namespace Vantle::QtWrapper;
using testing::HasSubstr;

namespace {

class DragAndDrop : public VantleTest::ReplayScene
{
protected:
    void SetUp() override
    {
        load(R"(
            Window {
                id: main; objectName: "main"; visible: true; x: 50; y: 60; width: 400; height: 300
                property string log
                Rectangle {
                    id: card
                    objectName: "card"; width: 40; height: 40; Drag.active: mouse.drag.active; z: 1
                    MouseArea {
                        id: mouse
                        objectName: "grip"; anchors.fill: parent; drag.target: parent; onReleased: parent.Drag.drop()
                    }
                }
                Rectangle {
                    objectName: "mail"; y: 100; width: 40; height: 40
                    Drag.dragType: Drag.Automatic
                    Drag.mimeData: { "text/plain": "letter" }
                    MouseArea {
                        anchors.fill: parent; preventStealing: true
                        onPositionChanged: if (pressed) parent.Drag.active = true
                    }
                }
                DropArea {
                    objectName: "bin"; x: 200; y: 50; width: 100; height: 100
                    onDropped: drop => main.log += "dropped " + Math.round(drop.x) + " " + Math.round(drop.y) + " "
                               + drop.text + ";"
                    Rectangle { objectName: "lid"; anchors.fill: parent; color: "red" }
                }
            })");
    }

    std::string log() { return property("main", "log").toString().toStdString(); }
};

// Not every platform has one; those that do run an event loop meanwhile.
class DragAndDropOfTheWindowSystem : public DragAndDrop
{
};

} // namespace

TEST_F(DragAndDrop, GoesFromMiddleToMiddle)
{
    ASSERT_EQ(call("dragAndDrop", {nameOf("grip"), nameOf("bin")}), "");
    EXPECT_EQ(finish(), "");
    EXPECT_THAT(log(), testing::StartsWith("dropped "));
}

TEST_F(DragAndDrop, GoesFromPointToPoint)
{
    ASSERT_EQ(call("dragAndDrop", {nameOf("grip"), value(0), value(0), nameOf("lid"), value(70), value(80)}), "");
    EXPECT_EQ(finish(), "");
    EXPECT_THAT(log(), testing::StartsWith("dropped "));
    EXPECT_NEAR(find("card")->x(), 270, 12);
    EXPECT_NEAR(find("card")->y(), 130, 12);
}

TEST_F(DragAndDrop, TakesObjects)
{
    ASSERT_EQ(call("dragAndDrop", {wrap("grip"), wrap("bin")}), "");
    EXPECT_EQ(finish(), "");
    EXPECT_THAT(log(), testing::StartsWith("dropped "));
}

TEST_F(DragAndDropOfTheWindowSystem, IsPlayedFromItsOwnEventLoop)
{
    ASSERT_EQ(call("dragAndDrop", {nameOf("mail"), nameOf("bin")}), "");
    EXPECT_EQ(finish(), "");
    EXPECT_TRUE(VantleTest::waitUntil([this] { return !log().empty(); }));
    EXPECT_EQ(log(), "dropped 49 49 letter;");
    EXPECT_EQ(QGuiApplication::mouseButtons(), Qt::NoButton);
}

TEST_F(DragAndDrop, TargetThatCannotBeReachedIsAnError)
{
    find("bin")->setX(1000);
    ASSERT_EQ(call("dragAndDrop", {nameOf("grip"), nameOf("bin")}), "");
    EXPECT_THAT(finish(), HasSubstr("cannot be reached: the point (1049, 99) of the window"));
    EXPECT_EQ(find("card")->x(), 0);
}

TEST_F(DragAndDrop, TargetThatIsMissingOrHiddenIsAnError)
{
    EXPECT_THAT(call("dragAndDrop", {nameOf("grip"), value(QStringLiteral("Nothing"))}),
                HasSubstr("Cannot find Nothing: "));
    const SharedPtr<Object> bin = wrap("bin");
    find("bin")->setVisible(false);
    EXPECT_THAT(call("dragAndDrop", {wrap("grip"), bin}), HasSubstr("the item is not visible"));
}
