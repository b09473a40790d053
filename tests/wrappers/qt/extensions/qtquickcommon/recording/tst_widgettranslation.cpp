#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/qteventtranslation.h"
#include "wrappers/qt/wrapping.h"

#include "support/warningguard.h"

#include <gtest/gtest.h>

#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

class WidgetTranslation : public testing::Test
{
protected:
    Application application;
    QWidget widget;
    SyntheticEvent result;
};

} // namespace

TEST_F(WidgetTranslation, DoubleClickOnAWidgetIsAPress)
{
    QMouseEvent event(QEvent::MouseButtonDblClick, QPointF(5, 6), QPointF(5, 6), QPointF(105, 206), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    ASSERT_TRUE(qtEventToSyntheticEvent(&widget, &event, &result));
    EXPECT_EQ(result.type, SyntheticEvent::Mouse);
    EXPECT_EQ(result.mouseEventType, SyntheticEvent::Press);
    EXPECT_EQ(result.button, MouseButton::LeftButton);
    EXPECT_EQ(result.globalX, 105);
    EXPECT_EQ(result.globalY, 206);
    EXPECT_EQ(nativeQObject(result.object), &widget);
}

TEST_F(WidgetTranslation, WidgetsAreNoWindows)
{
    QCloseEvent close;
    EXPECT_FALSE(qtEventToSyntheticEvent(&widget, &close, &result));
    QWindowStateChangeEvent state(Qt::WindowMaximized);
    EXPECT_FALSE(qtEventToSyntheticEvent(&widget, &state, &result));
    EXPECT_EQ(result.type, SyntheticEvent::Invalid);

    // Nor are they asked whether they are visible.
    QResizeEvent resize(QSize(640, 480), QSize(640, 5));
    EXPECT_TRUE(qtEventToSyntheticEvent(&widget, &resize, &result));
    EXPECT_EQ(result.windowHeight, 480);
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    VantleTest::installWarningGuard();
    return RUN_ALL_TESTS();
}
