#include "wrappers/qt/extensions/qtquickcommon/functions/screenshots.h"

#include "hook/inspector.h"
#include "screenshotscene.h"
#include "wrappers/qt/wrapping.h"

#include <memory>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using namespace VantleTest;

namespace {

class ScreenshotFailures : public ScreenshotScene
{
protected:
    static void expectError(const SharedPtr<Object> &result, const char *message)
    {
        EXPECT_TRUE(result.isNull());
        EXPECT_EQ(Inspector::self()->takeError(), QString::fromLatin1(message));
    }
};

} // namespace

TEST_F(ScreenshotFailures, NullObjectsAreReportedByTheirType)
{
    const SharedPtr<Object> nothing = wrapAndRegisterQObject(nullptr);
    expectError(grabItemFunction({nothing}, nullptr), "Cannot create screenshot for null object of type QObject");
    expectError(grabWindowFunction({nothing}, nullptr), "Cannot create screenshot for null object of type QObject");
}

TEST_F(ScreenshotFailures, DeadObjectsAreReportedByTheirType)
{
    auto item = std::make_unique<QQuickItem>();
    const SharedPtr<Object> deadItem = wrapAndRegisterQObject(item.get());
    item.reset();
    expectError(grabItemFunction({deadItem}, nullptr), "Cannot create screenshot for null object of type QQuickItem");
    auto other = std::make_unique<QQuickWindow>();
    const SharedPtr<Object> deadWindow = wrapAndRegisterQObject(other.get());
    other.reset();
    expectError(grabWindowFunction({deadWindow}, nullptr),
                "Cannot create screenshot for null object of type QQuickWindow");
}

TEST_F(ScreenshotFailures, MissingObjectsAreReportedWithoutAType)
{
    expectError(grabItemFunction({nullptr}, nullptr), "Cannot create screenshot for null object of type ");
    expectError(grabItemFunction({}, nullptr), "Cannot create screenshot for null object of type ");
    expectError(grabWindowFunction({}, nullptr), "Cannot create screenshot for null object of type ");
}

TEST_F(ScreenshotFailures, ItemWithoutWidthOrHeightIsReported)
{
    load("Item { objectName: 'item'; height: 100 }");
    QQuickItem *const item = find("item");
    expectError(grab(item), "Cannot create screenshot for object with empty bounding box");
    item->setSize(QSizeF(100, 0));
    expectError(grab(item), "Cannot create screenshot for object with empty bounding box");
    item->setSize(QSizeF(0, 0));
    expectError(grab(item), "Cannot create screenshot for object with empty bounding box");
}

TEST_F(ScreenshotFailures, SizeIsComparedWithoutTolerance)
{
    show("Item { objectName: 'item'; x: 10; y: 10; width: 1e-13; height: 100 }");
    // The region is empty once it is rounded, so there is nothing to grab, and nothing to report.
    expectError(grab(find("item")), "");
}

TEST_F(ScreenshotFailures, NegativeSizesPassTheTestOfTheSize)
{
    show("Rectangle { objectName: 'item'; x: 60; y: 60; width: -20; height: -30; color: 'red' }");
    const SharedPtr<Object> result = grab(find("item"));
    EXPECT_EQ(Inspector::self()->takeError(), QString());
    // Qt normalises the rectangle on its way to the scene: it lies up and left of the position.
    ASSERT_FALSE(result.isNull());
    EXPECT_EQ(pictureOf(result).size(), pixels(20, 30));
}

TEST_F(ScreenshotFailures, SizeThatIsNoNumberPassesTheTestOfTheSize)
{
    show("Item { objectName: 'item'; x: 60; y: 60; implicitWidth: NaN; height: 40 }");
    QQuickItem *const item = find("item");
    ASSERT_TRUE(qIsNaN(item->width()));
    const SharedPtr<Object> result = grab(item);
    EXPECT_EQ(Inspector::self()->takeError(), QString());
    // Nothing ends it on the right but the window.
    ASSERT_FALSE(result.isNull());
    EXPECT_EQ(pictureOf(result).size(), pixels(window->width() - 60, 40));

    item->setRotation(45);
    expectError(grab(item), "");
}

TEST_F(ScreenshotFailures, ItemInNoWindowIsReported)
{
    QQuickItem item;
    item.setSize(QSizeF(10, 10));
    expectError(grab(&item), "Cannot create screenshot for QtQuick item without a rendering window");
}

TEST_F(ScreenshotFailures, ItemOutsideTheWindowGivesNothingWithoutAWord)
{
    show("Item { objectName: 'item'; x: 300; y: 10; width: 20; height: 20 }"
         "Item { objectName: 'above'; x: 10; y: -30; width: 20; height: 20 }");
    expectError(grab(find("item")), "");
    expectError(grab(find("above")), "");
}

TEST_F(ScreenshotFailures, HiddenWindowGivesNothingWithoutAWord)
{
    load("Item { objectName: 'item'; width: 20; height: 20 }");
    expectError(grab(find("item")), "");
    expectError(grab(window.get()), "");
    expectError(grabQuickWindow(window.get(), QRect(0, 0, 10, 10)), "");
    expectError(grabQuickWindow(nullptr, QRect(0, 0, 10, 10)), "");
}

TEST_F(ScreenshotFailures, WindowWithoutASizeGivesNothingWithoutAWord)
{
    show("Item {}");
    expectError(grabQuickWindow(window.get(), QRect()), "");
    expectError(grabQuickWindow(window.get(), QRect(0, 0, 0, 10)), "");
}
