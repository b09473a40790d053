#include "wrappers/qt/extensions/qtquickcommon/functions/screenshots.h"

#include "hook/inspector.h"
#include "screenshotscene.h"
#include "support/waiting.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QPixmap>
#include <QtQuick/QQuickWindow>

#include <vector>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using namespace VantleTest;

// Which of the two suites below runs is up to the platform that CMakeLists.txt chooses.

namespace {

/// Pictures that Qt Quick renders, since there is no real screen.
class RenderedPictures : public ScreenshotScene
{
protected:
    void SetUp() override { ASSERT_NE(QGuiApplication::platformName(), QStringLiteral("xcb")); }
};

/// Pictures that are read from the screen.
class PicturesOfTheScreen : public ScreenshotScene
{
protected:
    void SetUp() override { ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb")); }
};

} // namespace

TEST_F(RenderedPictures, HaveCornerAndSizeRoundedToDevicePixels)
{
    show("Rectangle { anchors.fill: parent; anchors.margins: 10;"
         " gradient: Gradient { orientation: Gradient.Horizontal;"
         " GradientStop { position: 0; color: 'red' } GradientStop { position: 1; color: 'blue' } } }");
    const QImage whole = window->grabWindow();
    const auto regionPicture = [this](const QRect &region) { return pictureOf(grabQuickWindow(window.get(), region)); };
    EXPECT_EQ(regionPicture(QRect(10, 20, 30, 40)), whole.copy(pixels(10), pixels(20), pixels(30), pixels(40)));

    struct Case
    {
        qreal ratio;
        QRect region;
        QRect inPixels;
    };
    const Case cases[] = {
        {1, {10, 20, 30, 40}, {10, 20, 30, 40}}, {1, {-3, -3, 10, 10}, {-3, -3, 10, 10}},
        {2, {10, 20, 30, 40}, {20, 40, 60, 80}}, {2, {-3, 0, 7, 1}, {-6, 0, 14, 2}},
        {1.5, {0, 0, 3, 1}, {0, 0, 5, 2}},       {1.5, {3, 1, 5, 7}, {5, 2, 8, 11}},
        {1.5, {-3, -1, 9, 9}, {-5, -2, 14, 14}},
    };
    int compared = 0;
    for (const Case &one : cases) {
        if (qFuzzyCompare(one.ratio, ratio())) {
            EXPECT_EQ(regionPicture(one.region), whole.copy(one.inPixels)) << one.region.x() << ' ' << one.ratio;
            ++compared;
        }
    }
    EXPECT_GT(compared, 0);
}

TEST_F(RenderedPictures, AreMadeAtTheRatioThatTheTestAsksFor)
{
    show("Item {}");
    bool isSet = false;
    const qreal wanted = qEnvironmentVariable("QT_SCALE_FACTOR").toDouble(&isSet);
    EXPECT_EQ(ratio(), isSet ? wanted : 1.0);
}

TEST_F(RenderedPictures, HaveNoRatioOfDevicePixels)
{
    show("Item { objectName: 'item'; width: 10; height: 10 }");
    const SharedPtr<Object> result = grab(find("item"));
    void *value = nullptr;
    ASSERT_TRUE(result && result->get(&value));
    EXPECT_EQ(static_cast<QPixmap *>(value)->devicePixelRatio(), 1.0);
}

TEST_F(RenderedPictures, AreTakenWhileTheCursorIsHidden)
{
    show("Item { objectName: 'item'; width: 10; height: 10 }");
    std::vector<Qt::CursorShape> shapes;
    const auto noteCursor = [&shapes] {
        const QCursor *const cursor = QGuiApplication::overrideCursor();
        shapes.push_back(cursor ? cursor->shape() : Qt::LastCursor);
    };
    // Between the two, the window is rendered.
    for (const auto stage : {&QQuickWindow::beforeSynchronizing, &QQuickWindow::afterRendering})
        QObject::connect(window.get(), stage, window.get(), noteCursor, Qt::DirectConnection);
    const SharedPtr<Object> result = grab(find("item"));
    window->disconnect();
    EXPECT_FALSE(pictureOf(result).isNull());
    EXPECT_EQ(shapes, (std::vector{Qt::BlankCursor, Qt::BlankCursor}));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(RenderedPictures, OfAPlainWindowAreNullPixmaps)
{
    QWindow plain;
    plain.resize(40, 40);
    plain.setSurfaceType(QSurface::RasterSurface);
    plain.show();
    ASSERT_TRUE(waitUntil([&] { return plain.isExposed(); }));
    const SharedPtr<Object> result = grabWindowFunction({wrapAndRegisterQObject(&plain)}, nullptr);
    ASSERT_FALSE(result.isNull());
    EXPECT_TRUE(pictureOf(result).isNull());
    EXPECT_EQ(Inspector::self()->takeError(), QString());
}

TEST_F(PicturesOfTheScreen, AreThereForPlainWindowsToo)
{
    QWindow plain;
    plain.setGeometry(100, 100, 40, 30);
    plain.setFlags(Qt::ToolTip);
    plain.show();
    ASSERT_TRUE(waitUntil([&] { return plain.isExposed(); }));
    const QImage shot = pictureOf(grabWindowFunction({wrapAndRegisterQObject(&plain)}, nullptr));
    EXPECT_EQ(shot.size(), QSize(40, 30) * plain.devicePixelRatio());
}

TEST_F(PicturesOfTheScreen, ShowWhatOtherWindowsCover)
{
    show("Rectangle { objectName: 'box'; x: 20; y: 20; width: 40; height: 40; color: 'red' }");
    // Another window on top shows on the picture, as only the screen has both.
    QQuickWindow cover;
    cover.setColor(Qt::blue);
    cover.setFlags(Qt::ToolTip);
    cover.setGeometry(QRect(window->mapToGlobal(QPoint(40, 0)), QSize(100, 100)));
    cover.show();
    ASSERT_TRUE(waitUntil([&] { return cover.isExposed(); }));
    EXPECT_TRUE(waitUntil([&] {
        const QImage shot = picture(find("box"));
        return hasColor(shot, 10, 20, Qt::red) && hasColor(shot, 30, 20, Qt::blue);
    }));
}

TEST_F(PicturesOfTheScreen, GiveWayToRenderedOnesWhereAWindowLeavesTheScreen)
{
    show("Rectangle { objectName: 'box'; x: 20; y: 20; width: 60; height: 40; color: 'red' }");
    window->setFlag(Qt::BypassWindowManagerHint);
    window->hide();
    window->setPosition(-50, 100);
    window->show();
    ASSERT_TRUE(waitUntil([this] { return window->isExposed() && window->mapToGlobal(QPoint(0, 0)).x() < -40; }));
    const QImage shot = picture(find("box"));
    EXPECT_EQ(shot.size(), pixels(60, 40));
    EXPECT_TRUE(hasColor(shot, 3, 20, Qt::red));
    EXPECT_TRUE(hasColor(shot, 57, 20, Qt::red));
}
