#include "wrappers/qt/extensions/qtquickcommon/functions/screenshots.h"

#include "screenshotscene.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickRenderControl>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using namespace VantleTest;

namespace {

using Screenshots = ScreenshotScene;

const QColor Red(Qt::red);
const QColor Blue(Qt::blue);
const QColor White(Qt::white);

/// Renders nothing, and says into which window it would.
class FakeRenderControl : public QQuickRenderControl
{
public:
    FakeRenderControl(QWindow *target, QPoint offset) : m_target(target), m_offset(offset) {}

    QWindow *renderWindow(QPoint *offset) override
    {
        if (offset)
            *offset = m_offset;
        return m_target;
    }

private:
    QWindow *m_target;
    QPoint m_offset;
};

} // namespace

TEST_F(Screenshots, OfAWindowHasItsSizeInDevicePixels)
{
    show("Rectangle { x: 100; width: 60; height: 150; color: 'red' }");
    const QImage shot = pictureOf(grab(window.get()));
    EXPECT_EQ(shot.size(), windowPixels());
    EXPECT_TRUE(hasColor(shot, 97, 75, White));
    EXPECT_TRUE(hasColor(shot, 103, 75, Red));
    EXPECT_TRUE(hasColor(shot, 157, 145, Red));
}

TEST_F(Screenshots, OfAnItemShowsJustTheItem)
{
    show("Rectangle { objectName: 'box'; x: 20; y: 40; width: 60; height: 30; color: 'red';"
         " Rectangle { x: 30; width: 30; height: 30; color: 'blue' } }");
    const QImage shot = picture(find("box"));
    EXPECT_EQ(shot.size(), pixels(60, 30));
    EXPECT_TRUE(hasColor(shot, 2, 2, Red));
    EXPECT_TRUE(hasColor(shot, 27, 27, Red));
    EXPECT_TRUE(hasColor(shot, 33, 2, Blue));
    EXPECT_TRUE(hasColor(shot, 57, 27, Blue));
}

TEST_F(Screenshots, OfAnItemThatOverhangsTheWindowShowsThePartInside)
{
    show("Rectangle { objectName: 'right'; x: 170; y: 20; width: 60; height: 40; color: 'red' }"
         "Rectangle { objectName: 'corner'; x: -40; y: -10; width: 60; height: 40; color: 'blue'; z: -1 }");
    const QImage right = picture(find("right"));
    EXPECT_EQ(right.size(), pixels(30, 40));
    EXPECT_TRUE(hasColor(right, 2, 2, Red));
    EXPECT_TRUE(hasColor(right, 27, 37, Red));
    const QImage corner = picture(find("corner"));
    EXPECT_EQ(corner.size(), pixels(20, 30));
    EXPECT_TRUE(hasColor(corner, 17, 27, Blue));
}

TEST_F(Screenshots, OfAnItemLargerThanTheWindowShowsTheWindow)
{
    show("Item { objectName: 'huge'; x: -1000; y: -1000; width: 5000; height: 5000 }");
    EXPECT_EQ(picture(find("huge")).size(), windowPixels());
}

TEST_F(Screenshots, OfAnItemTurnedByARightAngleHasTheOtherShape)
{
    show("Rectangle { objectName: 'turned'; x: 40; y: 60; width: 80; height: 20; rotation: 90; color: 'red' }");
    const QImage shot = picture(find("turned"));
    EXPECT_EQ(shot.size(), pixels(20, 80));
    EXPECT_TRUE(hasColor(shot, 3, 3, Red));
    EXPECT_TRUE(hasColor(shot, 17, 77, Red));
}

TEST_F(Screenshots, OfATurnedItemShowsTheRectangleAroundItsCorners)
{
    // 42 x 42 turned by half a right angle is 59.4 across, around (80, 70).
    show("Rectangle { objectName: 'turned'; x: 59; y: 49; width: 42; height: 42; rotation: 45; color: 'red' }");
    const QImage shot = picture(find("turned"));
    EXPECT_NEAR(shot.width(), pixels(59.4), 1 + ratio());
    EXPECT_NEAR(shot.height(), pixels(59.4), 1 + ratio());
    EXPECT_TRUE(hasColor(shot, 30, 30, Red));
    EXPECT_TRUE(hasColor(shot, 30, 6, Red));
    EXPECT_TRUE(hasColor(shot, 5, 5, White));
    EXPECT_TRUE(hasColor(shot, 54, 54, White));
}

TEST_F(Screenshots, OfAScaledItemHasTheSizeThatShows)
{
    show("Rectangle { objectName: 'scaled'; x: 40; y: 40; width: 20; height: 10; scale: 3;"
         " transformOrigin: Item.TopLeft; color: 'red' }");
    const QImage shot = picture(find("scaled"));
    EXPECT_EQ(shot.size(), pixels(60, 30));
    EXPECT_TRUE(hasColor(shot, 57, 27, Red));
}

TEST_F(Screenshots, OfACoveredItemShowWhatCoversIt)
{
    show("Rectangle { objectName: 'below'; x: 20; y: 20; width: 60; height: 60; color: 'red' }"
         "Rectangle { x: 50; y: 0; width: 100; height: 100; color: 'blue' }");
    const QImage shot = picture(find("below"));
    EXPECT_EQ(shot.size(), pixels(60, 60));
    EXPECT_TRUE(hasColor(shot, 10, 30, Red));
    EXPECT_TRUE(hasColor(shot, 50, 30, Blue));
}

TEST_F(Screenshots, OfAnItemThatTakesNoPaintShowsWhatIsThere)
{
    show("Rectangle { x: 10; y: 10; width: 20; height: 20; color: 'red' }"
         "Item { objectName: 'empty'; x: 10; y: 10; width: 40; height: 20 }");
    const QImage shot = picture(find("empty"));
    EXPECT_TRUE(hasColor(shot, 10, 10, Red));
    EXPECT_TRUE(hasColor(shot, 30, 10, White));
}

TEST_F(Screenshots, OfAnItemInAFlickedFlickableShowsItWhereItIs)
{
    show("Flickable { width: 100; height: 100; contentHeight: 500; contentY: 100; clip: true;"
         " Rectangle { objectName: 'row'; y: 120; width: 100; height: 20; color: 'red' } }");
    const QImage shot = picture(find("row"));
    EXPECT_EQ(shot.size(), pixels(100, 20));
    EXPECT_TRUE(hasColor(shot, 50, 10, Red));
}

TEST_F(Screenshots, OfAnItemRenderedIntoAnotherWindowShowTheOtherWindowAtTheOffset)
{
    show("Rectangle { x: 45; y: 57; width: 20; height: 10; color: 'red' }");
    FakeRenderControl control(window.get(), QPoint(40, 50));
    QQuickWindow offscreen(&control);
    offscreen.resize(100, 80);
    QQuickItem item(offscreen.contentItem());
    item.setPosition(QPointF(5, 7));
    item.setSize(QSizeF(20, 10));
    const QImage shot = picture(&item);
    EXPECT_EQ(shot.size(), pixels(20, 10));
    EXPECT_TRUE(hasColor(shot, 2, 2, Red));
    EXPECT_TRUE(hasColor(shot, 17, 7, Red));

    // Cut to the window that shows, not to the one that the item is in.
    item.setPosition(QPointF(150, 0));
    item.setSize(QSizeF(100, 20));
    EXPECT_EQ(picture(&item).size(), pixels(10, 20));
}

TEST_F(Screenshots, LeaveTheCursorAsItWas)
{
    show("Item { objectName: 'item'; width: 10; height: 10 }");
    EXPECT_FALSE(grab(find("item")).isNull());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}
