#include "translationfixture.h"

#include <QtGui/QCloseEvent>
#include <QtGui/QMoveEvent>
#include <QtGui/QResizeEvent>
#include <QtGui/QWindowStateChangeEvent>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using VantleTest::Translation;

namespace {

class WindowTranslation : public Translation
{
protected:
    /// So that the event before the test doesn't count.
    void offerSomethingElse()
    {
        QEvent event(QEvent::Timer);
        expectRefused(window.get(), event);
    }

    bool closes(QWindow &closed)
    {
        QCloseEvent event;
        return translate(&closed, event);
    }

    bool resizes(QObject *receiver, const QSize &oldSize, const QSize &size)
    {
        QResizeEvent event(size, oldSize);
        return translate(receiver, event);
    }

    bool showsExposed(QWindow &shown)
    {
        shown.setGeometry(0, 0, 100, 100);
        shown.show();
        return VantleTest::waitUntil([&] { return shown.isExposed(); });
    }
};

} // namespace

TEST_F(WindowTranslation, MoveIsRecordedAgainstTheWindow)
{
    offerSomethingElse();
    QMoveEvent event(QPoint(30, 40), QPoint(10, 20));
    expectRecord(window.get(), event, window.get(), [](SyntheticEvent *expected) {
        expected->type = SyntheticEvent::WindowMove;
        expected->oldWindowX = 10;
        expected->oldWindowY = 20;
        expected->windowX = 30;
        expected->windowY = 40;
    });
}

TEST_F(WindowTranslation, MoveBehindAResizeIsRefusedOnce)
{
    QResizeEvent resize(QSize(300, 300), QSize(200, 200));
    QMoveEvent move(QPoint(30, 40), QPoint(10, 20));
    ASSERT_TRUE(translate(window.get(), resize));
    expectRefused(window.get(), move);
    EXPECT_TRUE(translate(window.get(), move));
}

TEST_F(WindowTranslation, MoveBehindAResizeOfAnotherWindowIsRefused)
{
    QWindow other;
    QResizeEvent resize(QSize(300, 300), QSize(200, 200));
    QMoveEvent move(QPoint(30, 40), QPoint(10, 20));
    ASSERT_TRUE(translate(window.get(), resize));
    expectRefused(&other, move);
}

TEST_F(WindowTranslation, MoveBehindARefusedResizeIsRefused)
{
    QResizeEvent first(QSize(300, 300), QSize(0, 0));
    QMoveEvent move(QPoint(30, 40), QPoint(10, 20));
    expectRefused(window.get(), first);
    expectRefused(window.get(), move);
}

TEST_F(WindowTranslation, MoveBehindAStateChangeIsRefused)
{
    QWindowStateChangeEvent change(window->windowStates());
    QMoveEvent move(QPoint(30, 40), QPoint(10, 20));
    expectRefused(window.get(), change);
    expectRefused(window.get(), move);
}

TEST_F(WindowTranslation, AnyEventBetweenLiftsTheBlockOnMoves)
{
    QResizeEvent resize(QSize(300, 300), QSize(200, 200));
    QMoveEvent move(QPoint(30, 40), QPoint(10, 20));

    ASSERT_TRUE(translate(window.get(), resize));
    offerSomethingElse();
    EXPECT_TRUE(translate(window.get(), move));

    ASSERT_TRUE(translate(window.get(), resize));
    QMouseEvent press = mouseEvent(QEvent::MouseButtonPress, 25, 40);
    ASSERT_TRUE(translate(window.get(), press));
    EXPECT_TRUE(translate(window.get(), move));
}

TEST_F(WindowTranslation, ResizeIsRecordedAgainstTheWindow)
{
    QResizeEvent event(QSize(300, 250), QSize(200, 200));
    expectRecord(window.get(), event, window.get(), [](SyntheticEvent *expected) {
        expected->type = SyntheticEvent::WindowResize;
        expected->windowWidth = 300;
        expected->windowHeight = 250;
    });
}

TEST_F(WindowTranslation, ResizeFromNothingIsRefused)
{
    QResizeEvent event(QSize(300, 250), QSize(0, 0));
    expectRefused(window.get(), event);
    expectRefused(item, event);
    expectRefused(nullptr, event);
}

TEST_F(WindowTranslation, ResizeFromAnInvalidOrFlatSizeIsNotOneFromNothing)
{
    window->setFlags(Qt::Widget);
    EXPECT_TRUE(resizes(window.get(), QSize(), QSize(300, 5)));
    EXPECT_TRUE(resizes(window.get(), QSize(200, 0), QSize(300, 250)));
}

TEST_F(WindowTranslation, ResizeOfAHiddenWindowIsRefused)
{
    QResizeEvent event(QSize(300, 250), QSize(200, 200));
    window->hide();
    expectRefused(window.get(), event);
}

TEST_F(WindowTranslation, ResizeOfAWindowThatIsVisibleButNotExposedIsRefused)
{
    QWindow unexposed;
    unexposed.setVisible(true);
    ASSERT_FALSE(unexposed.isExposed());
    QResizeEvent event(QSize(300, 250), QSize(200, 200));
    expectRefused(&unexposed, event);
}

TEST_F(WindowTranslation, UnfoldingOfATopLevelWindowIsRefused)
{
    QResizeEvent unfolding(QSize(640, 480), QSize(640, 5));
    expectRefused(window.get(), unfolding);
    QResizeEvent justTallEnough(QSize(640, 9), QSize(640, 7));
    expectRefused(window.get(), justTallEnough);
}

TEST_F(WindowTranslation, ResizeFromOrToAHeightOfEightIsRecorded)
{
    EXPECT_TRUE(resizes(window.get(), QSize(640, 8), QSize(640, 480)));
    EXPECT_TRUE(resizes(window.get(), QSize(640, 5), QSize(640, 8)));
    EXPECT_TRUE(resizes(window.get(), QSize(640, 480), QSize(640, 5)));
}

TEST_F(WindowTranslation, UnfoldingCountsForEveryKindOfTopLevelWindowOnly)
{
    const QSize folded(640, 5);
    const QSize unfolded(640, 480);
    for (const Qt::WindowFlags flags :
         {Qt::WindowFlags(Qt::Window), Qt::WindowFlags(Qt::Popup), Qt::WindowFlags(Qt::Dialog), Qt::WindowFlags(0x8)}) {
        QWindow topLevel;
        topLevel.setFlags(flags);
        ASSERT_TRUE(showsExposed(topLevel));
        ASSERT_TRUE(topLevel.flags() & Qt::WindowFlags(0x9)) << flags.toInt();
        EXPECT_FALSE(resizes(&topLevel, folded, unfolded)) << flags.toInt();
    }

    QWindow child(window.get());
    child.setFlags(Qt::Widget);
    ASSERT_TRUE(showsExposed(child));
    EXPECT_TRUE(resizes(&child, folded, unfolded));
}

TEST_F(WindowTranslation, ResizeOfAnythingElseIsRecordedAgainstIt)
{
    EXPECT_TRUE(resizes(item, QSize(640, 5), QSize(640, 480)));
    EXPECT_EQ(recordedObject(), item);
    EXPECT_TRUE(resizes(nullptr, QSize(640, 5), QSize(640, 480)));
    EXPECT_TRUE(result.object->isNull());
    EXPECT_FALSE(result.ready);
}

TEST_F(WindowTranslation, CloseIsRecordedAgainstTheWindow)
{
    QCloseEvent event;
    expectRecord(window.get(), event, window.get(),
                 [](SyntheticEvent *expected) { expected->type = SyntheticEvent::WindowClose; });
}

TEST_F(WindowTranslation, CloseOfAnythingButAWindowIsRefused)
{
    QCloseEvent event;
    expectRefused(item, event);
    expectRefused(nullptr, event);
}

TEST_F(WindowTranslation, CloseOfAChildWindowIsRefused)
{
    QWindow child(window.get());
    child.setFlags(Qt::Window | Qt::WindowCloseButtonHint);
    QCloseEvent event;
    expectRefused(&child, event);
}

TEST_F(WindowTranslation, CloseOfATransientWindowIsRecorded)
{
    QWindow dialog;
    dialog.setFlags(Qt::Dialog);
    dialog.setTransientParent(window.get());
    EXPECT_TRUE(closes(dialog));
}

TEST_F(WindowTranslation, CloseCountsForTheKindsOfWindowsThatHaveAFrame)
{
    for (const Qt::WindowType type : {Qt::Window, Qt::Dialog, Qt::Sheet, Qt::Tool}) {
        QWindow framed;
        framed.setFlags(type);
        EXPECT_TRUE(closes(framed)) << type;
    }
    for (const Qt::WindowType type : {Qt::Widget, Qt::Drawer, Qt::Popup, Qt::ToolTip, Qt::SplashScreen, Qt::Desktop,
                                      Qt::SubWindow, Qt::ForeignWindow, Qt::CoverWindow}) {
        QWindow frameless;
        frameless.setFlags(type);
        EXPECT_FALSE(closes(frameless)) << type;
    }
}

TEST_F(WindowTranslation, ACustomisedFrameClosesOnlyByItsButton)
{
    QWindow customised;
    customised.setFlags(Qt::CustomizeWindowHint);
    EXPECT_FALSE(closes(customised));
    customised.setFlags(Qt::Window | Qt::CustomizeWindowHint);
    EXPECT_FALSE(closes(customised));
    customised.setFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint);
    EXPECT_TRUE(closes(customised));
}

TEST_F(WindowTranslation, ACloseButtonCountsOnWindowsOfAnyKind)
{
    QWindow popup;
    popup.setFlags(Qt::Popup | Qt::WindowCloseButtonHint);
    EXPECT_TRUE(closes(popup));
}

TEST_F(WindowTranslation, StateChangeIsRecordedInTheValuesOfScripts)
{
    const std::pair<Qt::WindowState, int> rows[] = {{Qt::WindowMaximized, 2},
                                                    {Qt::WindowMinimized, 3},
                                                    {Qt::WindowFullScreen, 4}};
    for (const auto &[state, value] : rows) {
        window->setWindowState(state);
        QWindowStateChangeEvent event(Qt::WindowNoState);
        ASSERT_TRUE(translate(window.get(), event));
        EXPECT_EQ(result.type, SyntheticEvent::WindowStateChange);
        EXPECT_EQ(result.windowState, value);
        EXPECT_EQ(recordedObject(), window.get());
    }
}

TEST_F(WindowTranslation, StateChangeBackToNormalWritesNothingElse)
{
    QWindowStateChangeEvent event(Qt::WindowMaximized);
    expectRecord(window.get(), event, window.get(), [](SyntheticEvent *expected) {
        expected->type = SyntheticEvent::WindowStateChange;
        expected->windowState = 1;
    });
}

TEST_F(WindowTranslation, StateChangeToTheSameStateIsRefused)
{
    QWindowStateChangeEvent event(Qt::WindowNoState);
    expectRefused(window.get(), event);
    window->setWindowState(Qt::WindowMaximized);
    QWindowStateChangeEvent maximized(Qt::WindowMaximized);
    expectRefused(window.get(), maximized);
}

TEST_F(WindowTranslation, StateThatHadMoreThanTheNewOneHasChanged)
{
    window->setWindowState(Qt::WindowMaximized);
    QWindowStateChangeEvent event(Qt::WindowMaximized | Qt::WindowFullScreen);
    ASSERT_TRUE(translate(window.get(), event));
    EXPECT_EQ(result.windowState, 2);
}
