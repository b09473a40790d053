#include "wrappers/qt/functions/replayscene.h"

#include <QtGui/qpa/qwindowsysteminterface.h>
#include <QtQml/QJSValue>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

using Synchronous = QWindowSystemInterface::SynchronousDelivery;

/// The way of the pointer to where an action is, and where it is left.
class PointerWay : public VantleTest::ReplayScene
{
protected:
    void SetUp() override
    {
        load(R"(
            ApplicationWindow {
                id: main; objectName: "main"; visible: true; x: 50; y: 60; width: 400; height: 300
                property string log
                property var points: []
                component Area: MouseArea {
                    width: 100; height: 40; hoverEnabled: true
                    onEntered: main.log += objectName + " in;"
                    onExited: main.log += objectName + " out;"
                    onPressed: main.log += objectName + " press;"
                }
                Area { objectName: "first" }
                Area { objectName: "second"; y: 40 }
                Area { objectName: "third"; y: 80 }
                Rectangle {
                    objectName: "seen"; x: 200; width: 100; height: 100
                    HoverHandler { onPointChanged: if (hovered) main.points.push(point.position) }
                }
                Button { objectName: "help"; x: 200; y: 150; text: "Help"; ToolTip.visible: hovered; ToolTip.text: "?"
                         property bool showsTip: ToolTip.toolTip.opened }
                Menu {
                    id: menu; objectName: "menu"
                    Menu { objectName: "more"; title: "More"; MenuItem { text: "a.txt" } }
                }
                property bool isMoreOpen: menu.itemAt(0).subMenu.opened
            })");
    }
    void TearDown() override { InputPlayer::letGo(); }

    std::string log() { return property("main", "log").toString().toStdString(); }
    std::vector<QPointF> points()
    {
        std::vector<QPointF> result;
        const QVariantList list = property("main", "points").value<QJSValue>().toVariant().toList();
        for (const QVariant &point : list)
            result.push_back(point.toPointF());
        return result;
    }
    bool isHovered(const char *name) { return property(name, "containsMouse").toBool(); }
    static void turnLoop()
    {
        int turns = 0;
        VantleTest::waitUntil([&] { return ++turns > 20; });
    }
};

/// Where the program shows what hovers, which it doesn't without a screen.
class PointerWayOfTheWindowSystem : public PointerWay
{
};

} // namespace

TEST_F(PointerWay, ComesInFromTheNearestEdge)
{
    play("mouseClick", "seen", {90, 50, int(Qt::LeftButton)});
    const std::vector<QPointF> way = points();
    ASSERT_GE(way.size(), 3U);
    EXPECT_EQ(way.back(), QPointF(90, 50));
    for (std::size_t i = 1; i < way.size(); ++i) {
        EXPECT_GE(way[i - 1].x(), way[i].x());
        EXPECT_EQ(way[i - 1].y(), 50);
        EXPECT_LT(way[i - 1].x(), 100) << "inside of the item";
    }
    EXPECT_GT(way.front().x(), 90);
}

TEST_F(PointerWay, SeesNothingBesideTheItem)
{
    play("mouseClick", "first", {50, 20, int(Qt::LeftButton)});
    play("mouseClick", "third", {50, 1, int(Qt::LeftButton)});
    EXPECT_EQ(log(), "first in;first press;third in;first out;third press;");
}

TEST_F(PointerWay, IsNoneToWhereThePointerIs)
{
    play("mouseClick", "seen", {90, 50, int(Qt::LeftButton)});
    const std::size_t before = points().size();
    play("mouseClick", "seen", {90, 50, int(Qt::LeftButton)});
    for (std::size_t i = before; i < points().size(); ++i)
        EXPECT_EQ(points()[i], QPointF(90, 50));
}

TEST_F(PointerWay, EndsWhereTheActionEnds)
{
    play("mouseClick", "second", {50, 20, int(Qt::LeftButton)});
    turnLoop();
    EXPECT_TRUE(isHovered("second"));
    play("mouseDrag", "third", {20, 20, 30, 0, 0, int(Qt::LeftButton)});
    turnLoop();
    EXPECT_TRUE(isHovered("third"));
    EXPECT_FALSE(isHovered("second"));
}

TEST_F(PointerWay, LeavesTheWindowItWasIn)
{
    QWindow another;
    another.setGeometry(500, 60, 100, 100);
    another.show();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return another.isExposed(); }));
    play("mouseMove", "first");
    ASSERT_EQ(start("mouseMove", wrapAndRegisterQObject(&another), {10, 10}), "");
    EXPECT_EQ(finish(), "");
    EXPECT_EQ(log(), "first in;first out;");
    play("mouseMove", "first");
    EXPECT_EQ(log(), "first in;first out;first in;");
}

TEST_F(PointerWay, LeavesTheWindowWithADragThatEndsOutsideOfIt)
{
    play("mouseDrag", "first", {50, 20, -200, 0, 0, int(Qt::LeftButton)});
    EXPECT_FALSE(isHovered("first"));
}

TEST_F(PointerWay, IsNotDisturbedByThePointerOfTheWindowSystem)
{
    play("mouseMove", "first");
    QWindowSystemInterface::handleLeaveEvent<Synchronous>(window());
    EXPECT_TRUE(isHovered("first"));
    QWindowSystemInterface::handleEnterEvent<Synchronous>(window(), {50, 100}, window()->mapToGlobal(QPointF(50, 100)));
    EXPECT_EQ(log(), "first in;");
}

TEST_F(PointerWay, IsGivenBackToWhoMovesTheRealMouse)
{
    play("mouseMove", "first");
    QWindowSystemInterface::handleMouseEvent<Synchronous>(window(), {50, 60}, window()->mapToGlobal(QPointF(50, 60)),
                                                          Qt::NoButton, Qt::NoButton, QEvent::MouseMove);
    EXPECT_TRUE(isHovered("second"));
    QWindowSystemInterface::handleLeaveEvent<Synchronous>(window());
    EXPECT_FALSE(isHovered("second"));
}

TEST_F(PointerWayOfTheWindowSystem, ShowsAToolTip)
{
    play("mouseMove", "help");
    EXPECT_TRUE(VantleTest::waitUntil([this] { return property("help", "showsTip").toBool(); }));
}

TEST_F(PointerWayOfTheWindowSystem, OpensASubmenu)
{
    QMetaObject::invokeMethod(find<QObject>("menu"), "open");
    auto *const entry = [this] {
        QQuickItem *item = nullptr;
        QMetaObject::invokeMethod(find<QObject>("menu"), "itemAt", Q_RETURN_ARG(QQuickItem *, item), Q_ARG(int, 0));
        return item;
    }();
    ASSERT_TRUE(entry);
    ASSERT_TRUE(VantleTest::waitUntil([this] { return find<QObject>("menu")->property("opened").toBool(); }));
    ASSERT_EQ(start("mouseMove", wrapAndRegisterQObject(entry)), "");
    EXPECT_EQ(finish(), "");
    EXPECT_TRUE(VantleTest::waitUntil([this] { return property("main", "isMoreOpen").toBool(); }));
}
