#include "wrappers/qt/extensions/qtquick/scene.h"

#include <QtGui/qpa/qwindowsysteminterface.h>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

const QByteArray sceneOfPopups = R"(
    import QtQuick
    import QtQuick.Controls.Basic
    ApplicationWindow {
        visible: true; width: 400; height: 300
        property int belowClicked: 0
        header: Button { objectName: "header"; text: "Header" }
        Button { objectName: "below"; x: 10; y: 10; width: 80; height: 40; onClicked: ++belowClicked }
        Dialog {
            objectName: "question"; title: "Save?"; modal: true; x: 100; y: 100; width: 200; height: 100
            closePolicy: Popup.NoAutoClose
            Button { objectName: "answer"; width: 50; height: 20 }
        }
        Dialog {
            objectName: "second"; modal: true; x: 150; y: 120; width: 100; height: 50
            Button { objectName: "inSecond"; width: 50; height: 20 }
        }
        Popup {
            objectName: "hint"; modal: false; x: 5; y: 5; width: 390; height: 290; closePolicy: Popup.NoAutoClose
            Button { objectName: "inHint"; width: 50; height: 20 }
        }
        Popup {
            objectName: "anonymous"; modal: true; width: 100; height: 50
            Component.onCompleted: objectName = ""
        }
        Drawer {
            objectName: "drawer"; width: 100; height: 300
            Button { objectName: "inDrawer"; width: 50; height: 20 }
        }
    })";

class Modality : public VantleTest::QuickScene
{
protected:
    void SetUp() override { load(sceneOfPopups); }

    void open(const char *popup) { open(find<QObject>(popup)); }
    void open(QObject *popup)
    {
        QMetaObject::invokeMethod(popup, "open");
        ASSERT_TRUE(VantleTest::waitUntil([=] { return popup->property("opened").toBool(); }));
    }
    void close(const char *popup)
    {
        QObject *const object = find<QObject>(popup);
        QMetaObject::invokeMethod(object, "close");
        ASSERT_TRUE(VantleTest::waitUntil([=] { return !object->property("visible").toBool(); }));
    }

    bool isReady(const char *item) { return notReadyReason(find(item)).isEmpty(); }

    /// The layer in which popups live.
    QQuickItem *overlay() const
    {
        return qobject_cast<QQuickItem *>(qvariant_cast<QObject *>(window()->property("_q_QQuickOverlay")));
    }

    void click(QPoint point)
    {
        const QPoint global = window()->mapToGlobal(point);
        QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::SynchronousDelivery>(
            window(), point, global, Qt::LeftButton, Qt::LeftButton, QEvent::MouseButtonPress);
        QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::SynchronousDelivery>(
            window(), point, global, Qt::NoButton, Qt::LeftButton, QEvent::MouseButtonRelease);
    }
    int clicksOnBelow() const { return window()->property("belowClicked").toInt(); }
    QPoint middleOf(const char *item)
    {
        return find(item)->mapRectToScene(find(item)->boundingRect()).center().toPoint();
    }
};

} // namespace

TEST_F(Modality, ClosedPopupsCoverNothing)
{
    EXPECT_EQ(notReadyReason(find("below")), QString());
    EXPECT_EQ(notReadyReason(find("header")), QString());
}

TEST_F(Modality, ModalDialogCoversWhatIsBelow)
{
    open("question");
    EXPECT_EQ(notReadyReason(find("below")),
              QStringLiteral("the item is covered by the modal popup Dialog \"Save?\""));
    EXPECT_FALSE(isReady("header"));
    EXPECT_TRUE(isReady("answer"));
    QObject *const dialog = blocker(find("below"));
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->parent(), find<QObject>("question"));
    EXPECT_EQ(blocker(find("answer")), nullptr);
    EXPECT_EQ(blocker(window()), nullptr);
}

TEST_F(Modality, WindowBehindAModalDialogStaysReady)
{
    open("question");
    EXPECT_EQ(notReadyReason(window()), QString());
}

TEST_F(Modality, EndsWithTheDialog)
{
    open("question");
    close("question");
    EXPECT_TRUE(isReady("below"));
    EXPECT_TRUE(isReady("header"));
}

TEST_F(Modality, AgreesWithWhereClicksGo)
{
    const QPoint onBelow = middleOf("below");
    click(onBelow);
    EXPECT_EQ(clicksOnBelow(), 1);
    open("question");
    click(onBelow);
    EXPECT_EQ(clicksOnBelow(), 1);
    close("question");
    click(onBelow);
    EXPECT_EQ(clicksOnBelow(), 2);
}

TEST_F(Modality, LayerOfPopupsStaysReadyForTheClickThatClosesOne)
{
    open("question");
    ASSERT_NE(overlay(), nullptr);
    EXPECT_EQ(notReadyReason(overlay()), QString());

    const SharedPtr<Object> object = wrap(window());
    QObject *const besideDialog = nativeQObject(geometryOf(object)->childAt(object, 20, 280));
    ASSERT_NE(besideDialog, nullptr);
    EXPECT_EQ(notReadyReason(besideDialog), QString());
}

TEST_F(Modality, PopupThatIsNotModalCoversNothing)
{
    open("hint");
    EXPECT_TRUE(isReady("below"));
    EXPECT_TRUE(isReady("inHint"));
}

TEST_F(Modality, PopupOpenedAboveAModalDialogIsReady)
{
    open("question");
    open("hint");
    EXPECT_TRUE(isReady("inHint"));
    EXPECT_TRUE(isReady("answer"));
    EXPECT_FALSE(isReady("below"));
}

TEST_F(Modality, PopupBelowAModalDialogIsCovered)
{
    open("hint");
    open("question");
    EXPECT_FALSE(isReady("inHint"));
    EXPECT_TRUE(isReady("answer"));
}

TEST_F(Modality, HeightOfAPopupCountsBeforeTheOrderOfOpening)
{
    find<QObject>("hint")->setProperty("z", 10);
    open("hint");
    open("question");
    EXPECT_TRUE(isReady("inHint"));
    EXPECT_FALSE(isReady("below"));
}

TEST_F(Modality, SecondModalDialogCoversTheFirst)
{
    open("question");
    open("second");
    EXPECT_FALSE(isReady("below"));
    EXPECT_FALSE(isReady("answer"));
    EXPECT_TRUE(isReady("inSecond"));
    close("second");
    EXPECT_TRUE(isReady("answer"));
    EXPECT_FALSE(isReady("below"));
}

TEST_F(Modality, FirstOfTwoDialogsMayCloseFirst)
{
    open("question");
    open("second");
    close("question");
    EXPECT_FALSE(isReady("below"));
    EXPECT_TRUE(isReady("inSecond"));
}

TEST_F(Modality, DrawerCoversWhatIsBelow)
{
    EXPECT_TRUE(isReady("below"));
    open("drawer");
    EXPECT_EQ(notReadyReason(find("below")),
              QStringLiteral("the item is covered by the modal popup Drawer \"drawer\""));
    EXPECT_TRUE(isReady("inDrawer"));
    close("drawer");
    EXPECT_TRUE(isReady("below"));
}

TEST_F(Modality, PopupWithoutTitleAndNameIsCalledByItsType)
{
    for (QObject *popup : window()->findChildren<QObject *>()) {
        if (popup->inherits("QQuickPopup") && popup->objectName().isEmpty() && popup->property("modal").toBool())
            open(popup);
    }
    EXPECT_EQ(notReadyReason(find("below")), QStringLiteral("the item is covered by the modal popup Popup"));
}

TEST_F(Modality, OpenListOfAComboBoxInADialogIsReady)
{
    load(R"(
        import QtQuick
        import QtQuick.Controls.Basic
        ApplicationWindow {
            visible: true; width: 400; height: 300
            Button { objectName: "below" }
            Dialog {
                objectName: "dialog"; modal: true; visible: true; width: 200; height: 100
                ComboBox {
                    objectName: "combo"; model: ["one", "two"]
                    delegate: ItemDelegate { objectName: "entry" + index; text: modelData }
                }
            }
        })");
    QObject *const list = qvariant_cast<QObject *>(find("combo")->property("popup"));
    ASSERT_NE(list, nullptr);
    open(list);
    const auto content = qvariant_cast<QQuickItem *>(list->property("contentItem"));
    ASSERT_NE(content, nullptr);
    EXPECT_EQ(notReadyReason(content), QString());
    EXPECT_TRUE(isReady("combo"));
    EXPECT_FALSE(isReady("below"));
}

TEST_F(Modality, DialogDestroyedWhileOpenCoversNothing)
{
    open("question");
    ASSERT_FALSE(isReady("below"));
    delete find<QObject>("question");
    EXPECT_TRUE(isReady("below"));
}

TEST_F(Modality, StaysInItsWindow)
{
    open("question");
    QQuickWindow other;
    QQuickItem item(other.contentItem());
    other.show();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return other.isExposed(); }));
    EXPECT_EQ(notReadyReason(&item), QString());
}

TEST_F(Modality, AskingMakesNoLayerWhereThereIsNone)
{
    load("import QtQuick\nWindow { visible: true; Item { objectName: 'item' } }");
    const qsizetype before = window()->findChildren<QObject *>().size();
    EXPECT_TRUE(isReady("item"));
    EXPECT_EQ(window()->findChildren<QObject *>().size(), before);
    EXPECT_EQ(overlay(), nullptr);
}
