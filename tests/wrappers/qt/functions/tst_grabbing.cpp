#include "wrappers/qt/grabbing.h"

#include "hook/inspector.h"
#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtCore/QRect>
#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QPixmap>
#include <QtGui/QWindow>

#include <limits>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

class Grabbing : public testing::Test
{
protected:
    void show()
    {
        window.setGeometry(10, 10, 100, 50);
        window.show();
        ASSERT_TRUE(VantleTest::waitUntil([this] { return window.isExposed(); }));
    }

    QWindow window;
};

Qt::CursorShape overrideShape()
{
    const QCursor *const cursor = QGuiApplication::overrideCursor();
    return cursor ? cursor->shape() : Qt::LastCursor;
}

} // namespace

TEST_F(Grabbing, WindowMustBeThereVisibleAndExposed)
{
    const QRect region(0, 0, 10, 10);
    EXPECT_FALSE(isWindowGrabbable(nullptr, region));
    EXPECT_FALSE(isWindowGrabbable(&window, region));
    show();
    EXPECT_TRUE(isWindowGrabbable(&window, region));
    window.hide();
    EXPECT_FALSE(isWindowGrabbable(&window, region));

    QWindow child(&window);
    child.setVisible(true);
    EXPECT_FALSE(isWindowGrabbable(&child, region));
}

TEST_F(Grabbing, SomeOfTheRegionMustLieInTheWindow)
{
    show();
    EXPECT_TRUE(isWindowGrabbable(&window, QRect(99, 49, 1, 1)));
    EXPECT_TRUE(isWindowGrabbable(&window, QRect(-5, -5, 6, 6)));
    EXPECT_FALSE(isWindowGrabbable(&window, QRect(100, 0, 10, 10)));
    EXPECT_FALSE(isWindowGrabbable(&window, QRect(-10, 0, 10, 10)));
    EXPECT_FALSE(isWindowGrabbable(&window, QRect(0, 50, 10, 10)));
    EXPECT_FALSE(isWindowGrabbable(&window, QRect(10, 10, 0, 10)));
    EXPECT_FALSE(isWindowGrabbable(&window, QRect()));
}

TEST_F(Grabbing, RegionsAtTheEndOfTheIntegersAreComparedWithoutOverflow)
{
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    show();
    EXPECT_TRUE(isWindowGrabbable(&window, QRect(QPoint(lowest, lowest), QPoint(highest, highest))));
    EXPECT_TRUE(isWindowGrabbable(&window, QRect(QPoint(99, 49), QPoint(highest, highest))));
    EXPECT_FALSE(isWindowGrabbable(&window, QRect(QPoint(lowest, lowest), QPoint(-1, highest))));
    EXPECT_FALSE(isWindowGrabbable(&window, QRect(QPoint(highest, 0), QPoint(highest, 10))));
    EXPECT_FALSE(isWindowGrabbable(&window, QRect(QPoint(lowest, lowest), QPoint(lowest, lowest))));
    EXPECT_FALSE(isWindowGrabbable(&window, QRect(QPoint(highest, highest), QPoint(lowest, lowest))));
}

TEST_F(Grabbing, RegionsWithoutASizeAreRefused)
{
    show();
    for (const QSize &size : {QSize(0, 10), QSize(10, 0), QSize(-5, 10), QSize(10, -5), QSize(-5, -5)})
        EXPECT_FALSE(isWindowGrabbable(&window, QRect(QPoint(20, 20), size))) << size.width() << ' ' << size.height();
}

TEST_F(Grabbing, NativePictureExistsOnRealScreensOnly)
{
    show();
    const QPixmap pixmap = nativeGrabWindow(&window, QRect(0, 0, 20, 10));
    EXPECT_EQ(pixmap.isNull(), QGuiApplication::platformName() != QLatin1String("xcb"));
}

TEST_F(Grabbing, CursorIsGoneAsLongAsTheCleanerLives)
{
    ASSERT_EQ(QGuiApplication::overrideCursor(), nullptr);
    {
        const CursorCleaner cleaner;
        EXPECT_EQ(overrideShape(), Qt::BlankCursor);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Grabbing, CursorThatTheProgramHasSetComesBack)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    {
        const CursorCleaner cleaner;
        const CursorCleaner nested;
        EXPECT_EQ(overrideShape(), Qt::BlankCursor);
    }
    EXPECT_EQ(overrideShape(), Qt::WaitCursor);
    QGuiApplication::restoreOverrideCursor();
}

TEST(PixmapResults, HoldThePixmap)
{
    const Application application;
    QPixmap pixmap(3, 2);
    pixmap.fill(Qt::red);
    const SharedPtr<Object> result = createResultObject(pixmap);
    ASSERT_FALSE(result.isNull());
    EXPECT_FALSE(result->isNull());
    EXPECT_EQ(result->objectClass(), Inspector::self()->classByName(QStringLiteral("QPixmap")));
    void *value = nullptr;
    ASSERT_TRUE(result->get(&value));
    EXPECT_EQ(static_cast<QPixmap *>(value)->size(), QSize(3, 2));

    EXPECT_TRUE(result->sameAs(createResultObject(pixmap)));
    EXPECT_FALSE(result->sameAs(createResultObject(QPixmap(3, 2))));
    EXPECT_FALSE(result->sameAs(Inspector::self()->createInteger(3)));
    EXPECT_FALSE(result->sameAs(nullptr));
}

TEST(PixmapResults, HoldANullPixmapToo)
{
    const SharedPtr<Object> result = createResultObject(QPixmap());
    ASSERT_FALSE(result.isNull());
    void *value = nullptr;
    ASSERT_TRUE(result->get(&value));
    EXPECT_TRUE(static_cast<QPixmap *>(value)->isNull());
}
