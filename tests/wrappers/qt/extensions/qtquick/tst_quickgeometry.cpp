#include "wrappers/qt/extensions/qtquick/scene.h"

#include "hook/inspector.h"

#include <QtQuick/QQuickRenderControl>

#include <cmath>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

const QByteArray sceneOfItems = R"(
    import QtQuick
    Window {
        visible: true; x: 100; y: 50; width: 400; height: 300
        Item {
            objectName: "plain"; x: 20; y: 30; width: 100; height: 80
            Item { objectName: "inner"; x: 10; y: 10; width: 20; height: 20 }
        }
        Item { objectName: "fractional"; x: 200.4; y: 10.6; width: 50.3; height: 20.7 }
        Item {
            objectName: "scaled"; x: 200; y: 100; width: 50; height: 40; scale: 2; transformOrigin: Item.TopLeft
            Item { objectName: "left"; width: 25; height: 40 }
            Item { objectName: "right"; x: 25; width: 25; height: 40 }
        }
        Item {
            objectName: "rotated"; x: 100; y: 200; width: 60; height: 20
            rotation: 90; transformOrigin: Item.TopLeft
        }
        FocusScope {
            objectName: "scope"; x: 300; y: 250; width: 50; height: 20
            TextInput { objectName: "input"; focus: true; width: 50; height: 20 }
        }
    })";

class QuickGeometry : public VantleTest::QuickScene
{
protected:
    static QPoint mapFromGlobal(QObject *object, int x, int y)
    {
        const SharedPtr<Object> wrapper = wrap(object);
        return geometryOf(wrapper)->mapFromGlobal(wrapper, x, y);
    }
    static QRect screenRect(QObject *object)
    {
        const SharedPtr<Object> wrapper = wrap(object);
        return geometryOf(wrapper)->screenRect(wrapper);
    }
    static QObject *childAt(QObject *object, int x, int y)
    {
        const SharedPtr<Object> wrapper = wrap(object);
        return nativeQObject(geometryOf(wrapper)->childAt(wrapper, x, y));
    }
    static QObject *focusChild(QObject *object)
    {
        const SharedPtr<Object> wrapper = wrap(object);
        return nativeQObject(geometryOf(wrapper)->focusChild(wrapper));
    }
};

/// Draws a scene at a place inside another window.
class DrawnInto : public QQuickRenderControl
{
public:
    DrawnInto(QWindow *window, QPoint offset) : m_window(window), m_offset(offset) {}
    QWindow *renderWindow(QPoint *offset) override
    {
        if (offset)
            *offset = m_offset;
        return m_window;
    }

private:
    QWindow *m_window;
    QPoint m_offset;
};

} // namespace

TEST_F(QuickGeometry, ExistsForItemsAndBothKindsOfWindows)
{
    for (const char *name : {"QQuickItem", "QQuickWindow", "QWindow"}) {
        const Class *const type = Inspector::self()->classByName(QString::fromLatin1(name));
        EXPECT_NE(DelegateFactory::self()->delegate(type, Delegate::GeometryDelegate), nullptr) << name;
        EXPECT_NE(DelegateFactory::self()->delegate(type, Delegate::InteractionDelegate), nullptr) << name;
    }
}

TEST_F(QuickGeometry, WindowsAreOnTheScreen)
{
    load(sceneOfItems);
    EXPECT_EQ(screenRect(window()), QRect(100, 50, 400, 300));
    EXPECT_EQ(mapFromGlobal(window(), 100, 50), QPoint(0, 0));
    EXPECT_EQ(mapFromGlobal(window(), 99, 49), QPoint(-1, -1));
    EXPECT_EQ(mapFromGlobal(window(), 130, 85), QPoint(30, 35));
}

TEST_F(QuickGeometry, ItemsAreOnTheScreen)
{
    load(sceneOfItems);
    EXPECT_EQ(screenRect(find("plain")), QRect(120, 80, 100, 80));
    EXPECT_EQ(screenRect(find("inner")), QRect(130, 90, 20, 20));
    EXPECT_EQ(mapFromGlobal(find("plain"), 120, 80), QPoint(0, 0));
    EXPECT_EQ(mapFromGlobal(find("inner"), 135, 97), QPoint(5, 7));
    EXPECT_EQ(mapFromGlobal(find("inner"), 120, 80), QPoint(-10, -10));
}

TEST_F(QuickGeometry, FollowsTheWindow)
{
    load(sceneOfItems);
    window()->setPosition(40, 60);
    ASSERT_TRUE(VantleTest::waitUntil([this] { return window()->position() == QPoint(40, 60); }));
    EXPECT_EQ(screenRect(window()), QRect(40, 60, 400, 300));
    EXPECT_EQ(screenRect(find("plain")), QRect(60, 90, 100, 80));
}

TEST_F(QuickGeometry, FractionsGoToTheNearestPixel)
{
    load(sceneOfItems);
    EXPECT_EQ(screenRect(find("fractional")), QRectF(300.4, 60.6, 50.3, 20.7).toRect());
    // The point lies in pixel 0 of the item, or before it.
    EXPECT_EQ(mapFromGlobal(find("fractional"), 301, 61), QPoint(0, 0));
    EXPECT_EQ(mapFromGlobal(find("fractional"), 300, 60), QPoint(-1, -1));
    EXPECT_EQ(mapFromGlobal(find("fractional"), 302, 62), QPoint(1, 1));
}

TEST_F(QuickGeometry, ScaledItemsHaveTheirOwnPixels)
{
    load(sceneOfItems);
    EXPECT_EQ(screenRect(find("scaled")), QRect(300, 150, 100, 80));
    EXPECT_EQ(mapFromGlobal(find("scaled"), 300, 150), QPoint(0, 0));
    EXPECT_EQ(mapFromGlobal(find("scaled"), 301, 151), QPoint(0, 0));
    EXPECT_EQ(mapFromGlobal(find("scaled"), 399, 229), QPoint(49, 39));
}

TEST_F(QuickGeometry, RotatedItemsAreBoundedOnTheScreen)
{
    load(sceneOfItems);
    EXPECT_EQ(screenRect(find("rotated")), QRect(180, 250, 20, 60));
    EXPECT_EQ(mapFromGlobal(find("rotated"), 190, 280), QPoint(30, 10));
}

TEST_F(QuickGeometry, ChildOfAWindowIsTheDeepestItem)
{
    load(sceneOfItems);
    EXPECT_EQ(childAt(window(), 35, 45), find("inner"));
    EXPECT_EQ(childAt(window(), 25, 35), find("plain"));
    EXPECT_EQ(childAt(window(), 5, 5), nullptr);
    EXPECT_EQ(childAt(window(), -5, 5), nullptr);
    EXPECT_EQ(childAt(window(), 5000, 5000), nullptr);
}

TEST_F(QuickGeometry, ChildOfAnItemIsBelowIt)
{
    load(sceneOfItems);
    EXPECT_EQ(childAt(find("plain"), 15, 15), find("inner"));
    EXPECT_EQ(childAt(find("plain"), 5, 5), nullptr);
    EXPECT_EQ(childAt(find("inner"), 5, 5), nullptr);
}

TEST_F(QuickGeometry, DescentFromTheWindowEndsAtTheDeepestItem)
{
    load(sceneOfItems);
    // Each pixel of the screen around and between two neighbours that are drawn
    // at twice their size.
    for (int x = 295; x < 405; ++x) {
        QObject *const deepest = childAt(window(), mapFromGlobal(window(), x, 160).x(), 110);
        ASSERT_NE(deepest, window());
        if (deepest) {
            const QPoint local = mapFromGlobal(deepest, x, 160);
            EXPECT_EQ(childAt(deepest, local.x(), local.y()), nullptr) << x;
        }
    }
}

TEST_F(QuickGeometry, ItemBetweenPixelsOfItsScaledParentIsNoChildOfIt)
{
    load(R"(
        import QtQuick
        Window {
            visible: true; width: 200; height: 200
            Item {
                objectName: "parent"; width: 20; height: 20; scale: 10; transformOrigin: Item.TopLeft
                Item { objectName: "child"; x: 5.5; width: 5; height: 20 }
            }
        })");
    // Here the user sees the parent; only the far end of its pixel is the child's.
    const QPoint global = window()->mapToGlobal(QPoint(53, 10));
    EXPECT_EQ(childAt(window(), 53, 10), find("parent"));
    const QPoint local = mapFromGlobal(find("parent"), global.x(), global.y());
    EXPECT_EQ(local, QPoint(5, 1));
    EXPECT_EQ(childAt(find("parent"), local.x(), local.y()), nullptr);
    EXPECT_EQ(childAt(find("parent"), 6, 1), find("child"));
}

TEST_F(QuickGeometry, FocusChildIsTheItemThatHoldsTheFocus)
{
    load(sceneOfItems);
    window()->requestActivate();
    ASSERT_TRUE(VantleTest::waitUntil([this] { return window()->isActive(); }));
    EXPECT_EQ(focusChild(window()), nullptr);
    find("input")->forceActiveFocus();
    EXPECT_EQ(focusChild(window()), find("input"));
    EXPECT_EQ(focusChild(find("scope")), find("input"));
    EXPECT_EQ(focusChild(find("input")), nullptr);
    EXPECT_EQ(focusChild(find("plain")), nullptr);
}

TEST_F(QuickGeometry, ItemThatCannotBeUsedIsNoFocusChildOfTheWindow)
{
    load(sceneOfItems);
    window()->requestActivate();
    ASSERT_TRUE(VantleTest::waitUntil([this] { return window()->isActive(); }));
    find("input")->forceActiveFocus();
    ASSERT_EQ(focusChild(window()), find("input"));
    window()->hide();
    EXPECT_EQ(focusChild(window()), nullptr);
}

TEST_F(QuickGeometry, ItemsOutsideOfAWindowHaveNoPlace)
{
    load("import QtQuick\nItem { width: 10; height: 10; Item { objectName: 'child'; width: 5; height: 5 } }");
    EXPECT_EQ(screenRect(root()).width(), -1);
    EXPECT_EQ(screenRect(root()).height(), -1);
    EXPECT_EQ(childAt(root(), 2, 2), find("child"));
    EXPECT_EQ(focusChild(root()), nullptr);
}

TEST_F(QuickGeometry, EmptyItemHasAPlaceWithoutExtent)
{
    load("import QtQuick\nWindow { visible: true; x: 10; y: 20; Item { objectName: 'empty'; x: 3; y: 4 } }");
    EXPECT_EQ(screenRect(find("empty")), QRect(13, 24, 0, 0));
}

TEST_F(QuickGeometry, DeadAndNullObjectsAreSafe)
{
    load(sceneOfItems);
    const SharedPtr<Object> deadWindow = wrap(window());
    const SharedPtr<Object> deadItem = wrap(find("plain"));
    destroyRoot();
    for (const SharedPtr<Object> &dead : {deadWindow, deadItem}) {
        const GeometryDelegate *const geometry = geometryOf(dead);
        ASSERT_NE(geometry, nullptr);
        for (const SharedPtr<Object> &object : {dead, SharedPtr<Object>(), wrap(nullptr)}) {
            EXPECT_EQ(geometry->mapFromGlobal(object, 7, 8), QPoint(7, 8));
            EXPECT_FALSE(geometry->childAt(object, 1, 1));
            EXPECT_FALSE(geometry->focusChild(object));
            EXPECT_EQ(geometry->screenRect(object).width(), -1);
            EXPECT_EQ(geometry->screenRect(object).height(), -1);
        }
    }
}

TEST_F(QuickGeometry, SceneInsideAnotherWindowIsPlacedWhereItIsDrawn)
{
    QWindow shown;
    shown.setGeometry(100, 200, 300, 300);
    shown.show();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return shown.isExposed(); }));
    DrawnInto control(&shown, QPoint(10, 20));
    QQuickWindow scene(&control);
    scene.resize(80, 60);
    QQuickItem item(scene.contentItem());
    item.setPosition(QPointF(5, 6));
    item.setSize(QSizeF(30, 30));

    EXPECT_EQ(screenRect(&scene), QRect(110, 220, 80, 60));
    EXPECT_EQ(screenRect(&item), QRect(115, 226, 30, 30));
    EXPECT_EQ(mapFromGlobal(&scene, 115, 226), QPoint(5, 6));
    EXPECT_EQ(mapFromGlobal(&item, 115, 226), QPoint(0, 0));
}
