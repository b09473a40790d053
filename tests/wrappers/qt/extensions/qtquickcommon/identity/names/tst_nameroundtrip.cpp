#include "namesscene.h"

#include "hook/objectname.h"

#include <QtCore/QRandomGenerator>

#include <iostream>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

QList<QQuickItem *> allItemsBelow(QQuickItem *parent)
{
    QList<QQuickItem *> items;
    for (QQuickItem *child : parent->childItems())
        items << child << allItemsBelow(child);
    return items;
}

/// Names items and looks them up again.
class NameRoundTrip : public VantleTest::NamesScene
{
protected:
    static void expectFound(const QList<QQuickItem *> &items)
    {
        qsizetype found = 0;
        for (QQuickItem *item : items) {
            const QString name = scriptName(item);
            if (objectNamed(name) == item)
                ++found;
            else
                ADD_FAILURE() << qPrintable(name);
        }
        EXPECT_EQ(found, items.size());
        std::cout << found << " of " << items.size() << " items found by their names\n";
    }
    void expectAllFound(qsizetype atLeast)
    {
        const QList<QQuickItem *> items = allItemsBelow(window()->contentItem());
        EXPECT_GE(items.size(), atLeast);
        expectFound(items);
    }
};

} // namespace

TEST_F(NameRoundTrip, Workbench)
{
    loadFile(QStringLiteral(VANTLE_WORKBENCH_QML));
    expectAllFound(30);
}

TEST_F(NameRoundTrip, WorkbenchWithItsDialogOpen)
{
    loadFile(QStringLiteral(VANTLE_WORKBENCH_QML));
    QMetaObject::invokeMethod(window()->findChild<QObject *>(QStringLiteral("about")), "open");
    for (QObject *child : window()->findChildren<QObject *>()) {
        if (child->inherits("QQuickDialog"))
            QMetaObject::invokeMethod(child, "open");
    }
    expectAllFound(30);
}

TEST_F(NameRoundTrip, RepeatersListsPopupsLoadersAndHiddenPages)
{
    load(R"qml(
        import QtQuick
        import QtQuick.Controls
        import QtQuick.Layouts
        ApplicationWindow {
            title: "Everything \"at\" once\\"
            width: 400; height: 400; visible: true
            header: ToolBar { ToolButton { text: "Menu" } }
            StackLayout {
                currentIndex: 1
                anchors.fill: parent
                Page { title: "Hidden"; Repeater { model: 5; Button { text: "Same" } } }
                Page {
                    title: "Shown"
                    Column { Repeater { model: 5; Button { text: "Same" } } }
                    Row { Repeater { model: 3; Label { text: "Text " + index; visible: index !== 1 } } }
                }
            }
            ListView { width: 100; height: 300; model: 40; delegate: ItemDelegate { text: "Row " + index % 4 } }
            Loader { sourceComponent: Rectangle { Text { text: "line one\nline two 'quoted' [x] #y :nth(2)" } } }
            Loader { active: false; sourceComponent: Item {} }
            Popup { visible: true; Column { Button { text: "Same" } Button { text: "Same" } } }
            Menu { visible: true; MenuItem { text: "E&xit" } MenuItem { text: "E&xit"; enabled: false } }
            Item { visible: false; Item { objectName: "same" } Item { objectName: "same" } }
            Image { source: "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg=="; visible: false }
            Text { text: "@alias" } Text { text: "日本語 🙂" } Text { text: "\\" }
        })qml");
    expectAllFound(100);
}

TEST_F(NameRoundTrip, TenThousandItems)
{
    constexpr int count = 10000;
    constexpr int sample = 10;
    load("import QtQuick\nWindow { id: main; title: 'Generated' }");
    QRandomGenerator random(20240501);
    QList<QQuickItem *> items{window()->contentItem()};
    while (items.size() <= count) {
        auto *const item = new QQuickItem(items.at(random.bounded(items.size())));
        if (random.bounded(3) == 0)
            item->setObjectName(QStringLiteral("name %1").arg(random.bounded(200)));
        else if (random.bounded(2) == 0)
            item->setProperty("text", QStringLiteral("\"text\" %1").arg(random.bounded(200)));
        item->setVisible(random.bounded(20) != 0);
        items.append(item);
    }
    items.removeFirst();
    // The whole scene is walked for each: what is named are all items of every
    // tenth of it, so that the test stays short and each place has its turn.
    QList<QQuickItem *> chosen;
    for (qsizetype i = 0; i < items.size(); i += sample)
        chosen.append(items.at(i));
    expectFound(chosen);
}

TEST_F(NameRoundTrip, ItemsOfEqualWindows)
{
    load(R"(
        import QtQuick
        Item {
            Window { visible: true; title: "Same"; Text { objectName: "first"; text: "x" } }
            Window { visible: true; title: "Same"; Text { objectName: "second"; text: "x" } }
            Window { visible: true; Text { objectName: "untitled"; text: "x" } }
        })");
    QList<QQuickItem *> items;
    for (const char *name : {"first", "second", "untitled"}) {
        items.append(find(name));
        items.last()->setObjectName(QString());
    }
    expectFound(items);
}
