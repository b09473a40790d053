// The sample extensions do what their comments say.

#include "hookscene.h"

#include "support/waiting.h"
#include "wrappers/qt/extensions/qtquickcommon/extensionloader_p.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"

#include <gmock/gmock.h>

using namespace VantleQtQuickHook;
using namespace VantleTest;
using testing::IsEmpty;

namespace {

class ExtensionExamples : public testing::Test
{
protected:
    ExtensionExamples()
    {
        qputenv("VANTLE_PREFIX", QFile::encodeName(prefix.path()));
        qputenv("VANTLE_QTQUICK_EXTENSION_PATH", VANTLE_EXAMPLES_DIR);
    }

    QQuickItem *item(const char *name) { return itemNamed(window, name); }

    void show(const QString &qml) { window = scene.addWindow(qml); }

    static std::string propertiesOf(QQuickItem *item)
    {
        QStringList properties{QStringLiteral("type"), QStringLiteral("text")};
        const bool isAnswered = extraPropertiesFor(item, &properties);
        return (isAnswered ? "" : "no answer: ") + properties.join(u',').toStdString();
    }

    static std::string valueOf(QQuickItem *item, const char *name)
    {
        QString value = QStringLiteral("no answer");
        propertyFor(item, QLatin1String(name), &value);
        return value.toStdString();
    }

    const QTemporaryDir prefix;
    RecordingLogger logger;
    Scene scene;
    QQuickWindow *window = nullptr;
};

} // namespace

TEST_F(ExtensionExamples, AllLoad)
{
    show(QString());
    isItemReady(window->contentItem());
    EXPECT_EQ(hooksOf(window).size(), 5);
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(ExtensionExamples, ItemsAreFoundBelowTheirPage)
{
    show(QStringLiteral(R"(
        component SettingsPage: Item {}
        SettingsPage {
            objectName: "page"
            Item { Item { objectName: "save" } }
        }
        Item { objectName: "menu"; Item { objectName: "entry"; property Item belongsTo: parent.parent.children[0] } }
        Item { objectName: "lost"; property Item belongsTo: null })"));
    EXPECT_EQ(containerFor(item("save")), item("page"));
    EXPECT_EQ(containerFor(item("menu")), nullptr);
    EXPECT_EQ(containerFor(item("entry")), item("page"));
    EXPECT_EQ(containerFor(item("lost")), nullptr);
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(ExtensionExamples, TilesAreNamedByTheirCode)
{
    show(QStringLiteral(R"(
        component Tile: Item { property string tileCode: "x" }
        Tile { objectName: "tile" }
        Item { objectName: "tested"; property int testId: 4 }
        Item { objectName: "other" })"));
    EXPECT_EQ(propertiesOf(item("tile")), "type,tileCode");
    EXPECT_EQ(propertiesOf(item("tested")), "type,text,testId");
    EXPECT_EQ(propertiesOf(item("other")), "no answer: type,text");
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(ExtensionExamples, DelegatesHaveTheirRow)
{
    show(QStringLiteral(R"(
        visible: true
        ListView {
            width: 100; height: 100; model: 3
            delegate: Item { objectName: "row" + index; width: 100; height: 20; Item { objectName: "in" + index } }
        })"));
    ASSERT_TRUE(
        waitUntil([&] { return window->contentItem()->childItems().value(0)->findChild<QQuickItem *>() != nullptr; }));
    QQuickItem *const view = window->contentItem()->childItems().value(0);
    QQuickItem *row = nullptr;
    ASSERT_TRUE(waitUntil([&] {
        return QMetaObject::invokeMethod(view, "itemAtIndex", Q_RETURN_ARG(QQuickItem *, row), Q_ARG(int, 2)) && row;
    }));
    EXPECT_EQ(valueOf(row, "row"), "2");
    EXPECT_EQ(valueOf(row, "rowCount"), "3");
    EXPECT_EQ(valueOf(row, "column"), "no answer");
    EXPECT_EQ(valueOf(row->childItems().value(0), "row"), "no answer");
    EXPECT_EQ(valueOf(view, "row"), "no answer");
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(ExtensionExamples, WatermarksAreLookedThrough)
{
    show(QStringLiteral(R"(
        component Watermark: Item {}
        component SignaturePad: Item { property bool ignoredInTests: true }
        Item { objectName: "below"; width: 10; height: 30 }
        Watermark { width: 10; height: 10 }
        Item { y: 10; width: 10; height: 10; property bool ignoredInTests: true }
        SignaturePad { objectName: "pad"; y: 20; width: 10; height: 10 })"));
    const auto hit = [this](qreal y) {
        return Vantle::QtWrapper::recursiveQuickItemAt(window->contentItem(), QPointF(5, y));
    };
    EXPECT_EQ(hit(5), item("below"));
    EXPECT_EQ(hit(15), item("below"));
    EXPECT_EQ(hit(25), item("pad"));
    EXPECT_THAT(logger.warnings, IsEmpty());
}

TEST_F(ExtensionExamples, NothingIsReadyWhileItsPageIsBusy)
{
    show(QStringLiteral(R"(
        Item { objectName: "page"; property bool busy: true
            Flickable { objectName: "list"; Item { objectName: "entry" } } }
        Item { objectName: "other" })"));
    QQuickItem *const entry = window->findChild<QQuickItem *>(QStringLiteral("entry"));
    ASSERT_NE(entry, nullptr);
    EXPECT_FALSE(isItemReady(entry));
    EXPECT_FALSE(isItemReady(item("page")));
    EXPECT_TRUE(isItemReady(item("other")));
    item("page")->setProperty("busy", false);
    EXPECT_TRUE(isItemReady(entry));
    EXPECT_THAT(logger.warnings, IsEmpty());
}
