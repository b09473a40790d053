#include "wrappers/qt/functions/replayscene.h"

using namespace Vantle;
using namespace Vantle::QtWrapper;
using testing::HasSubstr;

namespace {

class WindowFunctions : public VantleTest::ReplayScene
{
protected:
    void SetUp() override
    {
        load(R"(
            Window {
                objectName: "main"; visible: true; x: 50; y: 60; width: 300; height: 200
                property bool refuses: false
                onClosing: close => close.accepted = !refuses
                Item { objectName: "item"; width: 10; height: 10 }
            })");
    }
};

} // namespace

TEST_F(WindowFunctions, CloseIsTheUsersClose)
{
    play("closeWindow", "main");
    EXPECT_FALSE(window()->isVisible());
    EXPECT_EQ(recorded(), Lines({"closeWindow main"}));
}

TEST_F(WindowFunctions, CloseCanBeRefused)
{
    window()->setProperty("refuses", true);
    play("closeWindow", "main");
    EXPECT_TRUE(window()->isVisible());
    EXPECT_EQ(recorded(), Lines({"closeWindow main"}));
}

TEST_F(WindowFunctions, MoveGoesByADistance)
{
    play("moveWindow", "main", {30, -20});
    EXPECT_EQ(window()->position(), QPoint(80, 40));
    EXPECT_EQ(recorded(), Lines({"moveWindow main 30 -20"}));
}

TEST_F(WindowFunctions, MovesOfAllSizesAreRecordedAgain)
{
    for (const QPoint way : {QPoint(1, 0), QPoint(0, -1), QPoint(-1, 2), QPoint(2, 2)})
        play("moveWindow", "main", {way.x(), way.y()});
    EXPECT_EQ(window()->position(), QPoint(52, 63));
    EXPECT_EQ(recorded(),
              Lines({"moveWindow main 1 0", "moveWindow main 0 -1", "moveWindow main -1 2", "moveWindow main 2 2"}));
}

TEST_F(WindowFunctions, MoveByNothingDoesNothing)
{
    play("moveWindow", "main", {0, 0});
    EXPECT_EQ(recorded(), Lines());
}

TEST_F(WindowFunctions, SizesAreRecordedAgain)
{
    play("setWindowSize", "main", {320, 240});
    EXPECT_EQ(window()->size(), QSize(320, 240));
    play("setWindowSize", "main", {321, 240});
    play("setWindowSize", "main", {321, 240});
    EXPECT_EQ(recorded(), Lines({"setWindowSize main 320 240", "setWindowSize main 321 240"}));
}

TEST_F(WindowFunctions, SmallestSizesAreReached)
{
    play("setWindowSize", "main", {10, 2});
    play("setWindowSize", "main", {10, 1});
    EXPECT_EQ(window()->size(), QSize(10, 1));
}

TEST_F(WindowFunctions, SizesThatNoWindowHasAreErrors)
{
    EXPECT_THAT(start("setWindowSize", nameOf("main"), {0, 100}), HasSubstr("no window can have the size 0 x 100"));
    EXPECT_THAT(start("setWindowSize", nameOf("main"), {100, -1}), HasSubstr("no window can have"));
}

TEST_F(WindowFunctions, StatesAreRecordedAgain)
{
    play("setWindowState", "main", {2});
    EXPECT_EQ(window()->windowState(), Qt::WindowMaximized);
    // Straight from one to the other, a window manager may report the state in between.
    play("setWindowState", "main", {1});
    EXPECT_EQ(window()->windowState(), Qt::WindowNoState);
    play("setWindowState", "main", {4});
    EXPECT_EQ(window()->windowState(), Qt::WindowFullScreen);
    play("setWindowState", "main", {1});
    EXPECT_EQ(window()->windowState(), Qt::WindowNoState);
    EXPECT_EQ(recorded(),
              Lines({"setWindowState main 2", "setWindowState main 1", "setWindowState main 4",
                     "setWindowState main 1"}));
}

TEST_F(WindowFunctions, MinimizedWindowIsRestored)
{
    play("setWindowState", "main", {3});
    EXPECT_EQ(window()->windowState(), Qt::WindowMinimized);
    ASSERT_EQ(start("setWindowState", wrap("main"), {1}), "");
    EXPECT_EQ(finish(), "");
    EXPECT_EQ(window()->windowState(), Qt::WindowNoState);
}

TEST_F(WindowFunctions, UnknownStatesAreErrors)
{
    for (const int state : {0, 5, -1}) {
        EXPECT_THAT(start("setWindowState", nameOf("main"), {state}),
                    HasSubstr(std::to_string(state) + " is no state of a window"));
    }
}

TEST_F(WindowFunctions, ItemsAreNoWindows)
{
    for (const char *function : {"closeWindow", "moveWindow", "setWindowSize", "setWindowState"}) {
        QVariantList arguments;
        if (function != std::string("closeWindow"))
            arguments.append(1);
        if (function == std::string("moveWindow") || function == std::string("setWindowSize"))
            arguments.append(1);
        EXPECT_THAT(start(function, nameOf("item"), arguments), HasSubstr("is no window"));
    }
}

TEST_F(WindowFunctions, HiddenWindowsAreErrors)
{
    const SharedPtr<Object> object = wrap("main");
    window()->hide();
    EXPECT_THAT(start("closeWindow", object), HasSubstr("the window is not visible"));
    EXPECT_THAT(start("setWindowState", object, {2}), HasSubstr("the window is not visible"));
}

TEST_F(WindowFunctions, WindowThatDiesBeforeItsTurnIsAnError)
{
    const SharedPtr<Object> object = wrap("main");
    ASSERT_EQ(start("moveWindow", object, {10, 10}), "");
    destroyWindow();
    EXPECT_THAT(finish(), HasSubstr("moveWindow failed: the window does not exist any more"));
}
