#include "wrappers/qt/extensions/qtquick/pressroad.h"

#include "support/waiting.h"

#include <gtest/gtest.h>

#include <QtGui/qpa/qwindowsysteminterface.h>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>

using namespace Vantle::QtWrapper;

namespace {

constexpr QPointF Middle(50, 50);

/// Two mouse areas, "target" and one on top of it, and what stands in place of
/// CONTENT above them.
class PressRoads : public testing::Test
{
protected:
    void load(const QByteArray &content)
    {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\n"
                          "import QtQuick.Controls.Basic\n"
                          "Window {\n"
                          "  width: 100; height: 100; visible: true\n"
                          "  property string pressed\n"
                          "  MouseArea { objectName: 'target'; anchors.fill: parent; acceptedButtons: Qt.AllButtons\n"
                          "    onPressed: Window.window.pressed = objectName }\n"
                              + content + "\n}",
                          {});
        m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
        ASSERT_TRUE(m_window) << qPrintable(component.errorString());
        ASSERT_TRUE(VantleTest::waitUntil([this] { return m_window->isExposed(); }));
    }

    QQuickItem *find(const char *name) const { return m_window->findChild<QQuickItem *>(QLatin1String(name)); }

    PressRoad road(const char *target) const { return pressRoadTo(find(target), Middle, Qt::LeftButton); }

    /// The name of what takes a press in the middle that is meant for \p target;
    /// empty if the target gets it.
    QString takenBy(const char *target, Qt::MouseButton button = Qt::LeftButton) const
    {
        const PressRoad road = pressRoadTo(find(target), Middle, button);
        EXPECT_FALSE(road.reachesTarget && road.takenBy);
        if (road.reachesTarget)
            return {};
        if (!road.takenBy)
            return QStringLiteral("nothing");
        const QString name = road.takenBy->objectName();
        return name.isEmpty() ? QStringLiteral("an item without a name") : name;
    }

    /// The name of the item that Qt gives a press in the middle to.
    QString pressedByQt(Qt::MouseButton button = Qt::LeftButton) const
    {
        m_window->setProperty("pressed", QString());
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::SynchronousDelivery>(
                m_window.get(), Middle, m_window->mapToGlobal(Middle),
                type == QEvent::MouseButtonPress ? button : Qt::NoButton, button, type);
        }
        return m_window->property("pressed").toString();
    }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

} // namespace

TEST_F(PressRoads, LeadToAnItemThatNothingCovers)
{
    load("");
    EXPECT_EQ(takenBy("target"), QString());
    EXPECT_EQ(pressedByQt(), QStringLiteral("target"));
}

TEST_F(PressRoads, MayGoOnBehindAMouseAreaThatLooksAtEachPress)
{
    load("MouseArea { objectName: 'cover'; width: 60; height: 60; onPressed: (mouse) => mouse.accepted = false }");
    EXPECT_EQ(takenBy("target"), QStringLiteral("cover"));
    EXPECT_TRUE(road("target").mayReachTarget);
    EXPECT_EQ(pressedByQt(), QStringLiteral("target"));
    load("MouseArea { objectName: 'cover'; width: 60; height: 60 }");
    EXPECT_FALSE(road("target").mayReachTarget);
}

TEST_F(PressRoads, EndInWhatTakesThePressFirst)
{
    load("MouseArea { objectName: 'cover'; width: 60; height: 60; onPressed: Window.window.pressed = objectName }");
    EXPECT_EQ(takenBy("target"), QStringLiteral("cover"));
    EXPECT_EQ(pressedByQt(), QStringLiteral("cover"));
}

TEST_F(PressRoads, GoThroughWhatTakesNoPresses)
{
    for (const char *content : {
             "Text { anchors.fill: parent; text: 'Save' }",
             "Label { anchors.fill: parent; text: 'Save' }",
             "Text { anchors.fill: parent; text: '<a href=\"x\">S</a>' }",
             "Image { anchors.fill: parent }",
             "ProgressBar { anchors.fill: parent }",
             "BusyIndicator { anchors.fill: parent }",
             "GridView { anchors.fill: parent; interactive: false }",
             "Item { anchors.fill: parent; Rectangle { anchors.fill: parent } }",
             "MouseArea { anchors.fill: parent; enabled: false }",
             "Item { enabled: false; anchors.fill: parent; MouseArea { anchors.fill: parent } }",
             "MouseArea { anchors.fill: parent; visible: false }",
             "MouseArea { anchors.fill: parent; acceptedButtons: Qt.NoButton; hoverEnabled: true }",
             "MouseArea { anchors.fill: parent; acceptedButtons: Qt.RightButton }",
             "Item { width: 10; height: 10; clip: true; MouseArea { width: 100; height: 100 } }",
             "MouseArea { anchors.fill: parent; z: -1 }",
         }) {
        load(content);
        EXPECT_EQ(takenBy("target"), QString()) << content;
        EXPECT_EQ(pressedByQt(), QStringLiteral("target")) << content;
    }
}

TEST_F(PressRoads, EndInControlsAndInLinksOfTexts)
{
    for (const char *content : {
             "Text { objectName: 'cover'; anchors.fill: parent; font.pixelSize: 100; onLinkActivated: {}\n"
             "  text: '<a href=\"x\">Save</a>' }",
             "Pane { objectName: 'cover'; anchors.fill: parent }",
             "Button { objectName: 'cover'; anchors.fill: parent }",
             "TextEdit { objectName: 'cover'; anchors.fill: parent }",
             "TextArea { objectName: 'cover'; anchors.fill: parent; readOnly: true }",
             "Flickable { objectName: 'cover'; anchors.fill: parent }",
             "Button { objectName: 'cover'; anchors.fill: parent; HoverHandler {} }",
             "MouseArea { objectName: 'cover'; anchors.fill: parent; HoverHandler {} }",
             "TextField { objectName: 'cover'; anchors.fill: parent; HoverHandler {} }",
             "Flickable { objectName: 'cover'; anchors.fill: parent; HoverHandler {} }",
             "ComboBox { objectName: 'cover'; anchors.fill: parent; HoverHandler {} }",
             "Pane { objectName: 'cover'; anchors.fill: parent; HoverHandler {} }",
         }) {
        load(content);
        EXPECT_EQ(takenBy("target"), QStringLiteral("cover")) << content;
        EXPECT_EQ(pressedByQt(), QString()) << content;
    }
}

TEST_F(PressRoads, DependOnTheButton)
{
    load("MouseArea { objectName: 'menu'; anchors.fill: parent; acceptedButtons: Qt.RightButton\n"
         "  onPressed: Window.window.pressed = objectName }");
    EXPECT_EQ(takenBy("target", Qt::LeftButton), QString());
    EXPECT_EQ(takenBy("target", Qt::RightButton), QStringLiteral("menu"));
    EXPECT_EQ(pressedByQt(Qt::RightButton), QStringLiteral("menu"));
}

TEST_F(PressRoads, PassOrEndInHandlersAsPressesDo)
{
    for (const char *handler : {
             "TapHandler {}",
             "TapHandler { enabled: false }",
             "TapHandler { acceptedButtons: Qt.RightButton }",
             "TapHandler { gesturePolicy: TapHandler.WithinBounds }",
             "TapHandler { gesturePolicy: TapHandler.ReleaseWithinBounds; acceptedButtons: Qt.LeftButton }",
             "DragHandler {}",
             "DragHandler { acceptedButtons: Qt.NoButton }",
             "HoverHandler {}",
             "WheelHandler {}",
             "PinchHandler {}",
             "PointHandler {}",
             "HoverHandler {} TapHandler { acceptedButtons: Qt.RightButton }",
         }) {
        load(QByteArray("Item { objectName: 'handled'; anchors.fill: parent; ") + handler + " }");
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            const QString pressed = pressedByQt(button);
            EXPECT_EQ(takenBy("target", button), pressed.isEmpty() ? QStringLiteral("handled") : QString())
                << handler << button;
        }
    }
}

TEST_F(PressRoads, TakeWhatLiesInsideForTheItem)
{
    load("Item { objectName: 'whole'; anchors.fill: parent; MouseArea { objectName: 'part'; anchors.fill: parent } }");
    EXPECT_EQ(takenBy("whole"), QString());
    EXPECT_EQ(takenBy("part"), QString());
}

TEST_F(PressRoads, MeetChildrenThatReachBeyondTheirParent)
{
    load(
        "Item { width: 10; height: 10\n"
        "  MouseArea { objectName: 'cover'; width: 100; height: 100; onPressed: Window.window.pressed = objectName } }");
    EXPECT_EQ(takenBy("target"), QStringLiteral("cover"));
    EXPECT_EQ(pressedByQt(), QStringLiteral("cover"));
}

TEST_F(PressRoads, FollowTheOrderOfStackingAndOfTurnedItems)
{
    load("MouseArea { objectName: 'high'; z: 1; rotation: 45; scale: 0.5; anchors.fill: parent\n"
         "  onPressed: Window.window.pressed = objectName }\n"
         "MouseArea { objectName: 'low'; anchors.fill: parent }");
    EXPECT_EQ(takenBy("low"), QStringLiteral("high"));
    EXPECT_EQ(takenBy("target"), QStringLiteral("high"));
    EXPECT_EQ(takenBy("high"), QString());
    EXPECT_EQ(pressedByQt(), QStringLiteral("high"));
}

TEST_F(PressRoads, MissAnItemThatIsNotAtThePoint)
{
    load("Item { objectName: 'aside'; x: 80; width: 10; height: 10 }");
    EXPECT_EQ(takenBy("aside"), QStringLiteral("target"));
    find("target")->setVisible(false);
    EXPECT_EQ(takenBy("aside"), QStringLiteral("nothing"));
}

TEST_F(PressRoads, PassTheLayerOfAPopupThatIsNotModal)
{
    load("Popup { visible: true; modal: false; x: 70; y: 70; width: 20; height: 20; closePolicy: Popup.NoAutoClose }");
    EXPECT_EQ(takenBy("target"), QString());
    EXPECT_EQ(pressedByQt(), QStringLiteral("target"));
}
