#include "wrappers/qt/extensions/qtquick/scene.h"

#include <QtQuick/QQuickRenderControl>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

const QByteArray sceneOfItems = R"(
    import QtQuick
    Window {
        visible: true; width: 200; height: 100; title: "Main"
        Item {
            objectName: "outer"; width: 100; height: 80
            Item { objectName: "inner"; width: 20; height: 20 }
        }
    })";

using QuickInteraction = VantleTest::QuickScene;

class DrawnInto : public QQuickRenderControl
{
public:
    explicit DrawnInto(QWindow *window) : m_window(window) {}
    QWindow *renderWindow(QPoint *) override { return m_window; }

private:
    QWindow *m_window;
};

} // namespace

TEST_F(QuickInteraction, ItemsAndWindowsOnTheScreenAreReady)
{
    load(sceneOfItems);
    EXPECT_EQ(notReadyReason(window()), QString());
    EXPECT_EQ(notReadyReason(find("outer")), QString());
    EXPECT_EQ(notReadyReason(find("inner")), QString());
}

TEST_F(QuickInteraction, DeadAndNullObjectsAreNotReady)
{
    load(sceneOfItems);
    const SharedPtr<Object> deadWindow = wrap(window());
    const SharedPtr<Object> deadItem = wrap(find("inner"));
    const InteractionDelegate *const ofItems = interactionOf(deadItem);
    const InteractionDelegate *const ofWindows = interactionOf(deadWindow);
    destroyRoot();
    for (const SharedPtr<Object> &object : {deadItem, SharedPtr<Object>(), wrap(nullptr), deadWindow}) {
        EXPECT_EQ(ofItems->notReadyReason(object), QStringLiteral("the item does not exist any more"));
        EXPECT_EQ(ofWindows->notReadyReason(object), QStringLiteral("the window does not exist any more"));
        EXPECT_FALSE(ofItems->blocker(object));
        EXPECT_FALSE(ofWindows->blocker(object));
    }
}

TEST_F(QuickInteraction, ItemWithoutWindowIsNotReady)
{
    load(sceneOfItems);
    find("inner")->setParentItem(nullptr);
    EXPECT_EQ(notReadyReason(find("inner")), QStringLiteral("the item is in no window"));
    EXPECT_EQ(blocker(find("inner")), nullptr);
}

TEST_F(QuickInteraction, InvisibleItemIsNotReady)
{
    load(sceneOfItems);
    find("outer")->setVisible(false);
    EXPECT_EQ(notReadyReason(find("outer")), QStringLiteral("the item is not visible"));
    EXPECT_EQ(notReadyReason(find("inner")), QStringLiteral("the item is not visible"));
    find("outer")->setVisible(true);
    EXPECT_EQ(notReadyReason(find("inner")), QString());
}

TEST_F(QuickInteraction, DisabledItemIsNotReady)
{
    load(sceneOfItems);
    find("outer")->setEnabled(false);
    EXPECT_EQ(notReadyReason(find("outer")), QStringLiteral("the item is not enabled"));
    EXPECT_EQ(notReadyReason(find("inner")), QStringLiteral("the item is not enabled"));
}

TEST_F(QuickInteraction, ItemOfAHiddenWindowIsNotReady)
{
    load(sceneOfItems);
    window()->hide();
    EXPECT_EQ(notReadyReason(window()), QStringLiteral("the window is not visible"));
    EXPECT_EQ(notReadyReason(find("inner")), QStringLiteral("the window is not visible"));
}

TEST_F(QuickInteraction, ItemOfAWindowBehindAModalOneIsNotReady)
{
    load(sceneOfItems);
    QWindow question;
    question.setModality(Qt::ApplicationModal);
    question.setTitle(QStringLiteral("Save?"));
    question.show();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return question.isExposed(); }));
    const QString reason = QStringLiteral("the window is blocked by the modal window \"Save?\"");
    EXPECT_EQ(notReadyReason(window()), reason);
    EXPECT_EQ(notReadyReason(find("inner")), reason);
    EXPECT_EQ(blocker(window()), &question);
    EXPECT_EQ(blocker(find("inner")), &question);
    question.close();
    EXPECT_EQ(notReadyReason(find("inner")), QString());
    EXPECT_EQ(blocker(window()), nullptr);
    EXPECT_EQ(blocker(find("inner")), nullptr);
}

TEST_F(QuickInteraction, OfASceneInsideAnotherWindowTheOtherWindowCounts)
{
    QWindow shown;
    DrawnInto control(&shown);
    QQuickWindow scene(&control);
    scene.resize(80, 60);
    QQuickItem item(scene.contentItem());
    ASSERT_FALSE(scene.isVisible());
    EXPECT_EQ(notReadyReason(&scene), QStringLiteral("the window is not visible"));
    EXPECT_EQ(notReadyReason(&item), QStringLiteral("the window is not visible"));

    shown.show();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return shown.isExposed(); }));
    EXPECT_EQ(notReadyReason(&scene), QString());
    EXPECT_EQ(notReadyReason(&item), QString());
}
