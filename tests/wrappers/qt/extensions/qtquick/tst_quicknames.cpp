#include "wrappers/qt/extensions/qtquick/scene.h"

#include "hook/objectname.h"

#include <QtCore/QMap>
#include <QtCore/QPointer>
#include <QtCore/QUrl>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

using Texts = QMap<QString, QString>;

/// Destroys itself as it is read, like a program's item that is only asked for
/// its text once it is done.
class MortalText : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)

public:
    using QQuickItem::QQuickItem;
    QString text()
    {
        delete this;
        return QStringLiteral("last words");
    }
};

/// The same, at the given reading of its source.
class MortalSource : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(QUrl source READ source)

public:
    MortalSource(QQuickItem *parent, int lives) : QQuickItem(parent), m_lives(lives) {}
    QUrl source()
    {
        if (--m_lives == 0)
            delete this;
        return QUrl(QStringLiteral("file:///app/a.png"));
    }

private:
    int m_lives;
};

class QuickNames : public VantleTest::QuickScene
{
protected:
    static Texts name(QObject *object)
    {
        Texts texts;
        const ObjectName::Properties properties =
            Application::self()->nameGenerator()->objectName(wrap(object), false).properties();
        for (auto property = properties.begin(); property != properties.end(); ++property) {
            EXPECT_EQ(property->modifiers(), PropertyValue::Equals);
            texts.insert(property.key(), property->stringValue());
        }
        return texts;
    }

    /// The name without what all items of the test scenes have in common.
    static Texts own(QObject *object)
    {
        Texts texts = name(object);
        texts.remove(QStringLiteral("container"));
        texts.remove(QStringLiteral("visible"));
        return texts;
    }

    /// Makes a document whose root is an item in no window.
    Texts ownNameOf(const char *qml)
    {
        load(QByteArray("import QtQuick\n") + qml);
        return root() ? own(root()) : Texts();
    }
};

Texts texts(std::initializer_list<std::pair<const char *, const char *>> list)
{
    Texts result;
    for (const auto &[key, value] : list)
        result.insert(QString::fromUtf8(key), QString::fromUtf8(value));
    return result;
}

} // namespace

TEST_F(QuickNames, TypeIsWhatScriptsWrite)
{
    EXPECT_EQ(ownNameOf("Item {}"), texts({{"type", "Item"}}));
    EXPECT_EQ(ownNameOf("MouseArea { property int extra }"), texts({{"type", "MouseArea"}}));
}

TEST_F(QuickNames, TypeWrittenInQmlIsCalledByItsOwnName)
{
    load("import QtQuick\nItem { component Fancy: Rectangle { property int extra } Fancy { objectName: 'f' } }");
    EXPECT_EQ(own(find("f")), texts({{"type", "Fancy"}, {"objectName", "f"}}));
}

TEST_F(QuickNames, IdIsTakenIfThereIsOne)
{
    EXPECT_EQ(ownNameOf("Text { id: greeting; text: 'Hello' }"), texts({{"type", "Text"}, {"id", "greeting"}}));
}

TEST_F(QuickNames, PropertyThatHoldsTheItemIsNoId)
{
    load(R"(
        import QtQuick
        Window {
            visible: true
            property Item special
            FocusScope { objectName: "scope"; focus: true }
        })");
    QQuickItem *const scope = find("scope");
    window()->setProperty("special", QVariant::fromValue(scope));
    window()->requestActivate();
    ASSERT_TRUE(VantleTest::waitUntil([&] { return window()->activeFocusItem() == scope; }));
    EXPECT_EQ(own(scope), texts({{"type", "FocusScope"}, {"objectName", "scope"}}));
}

TEST_F(QuickNames, ObjectNameIsTakenIfThereIsOne)
{
    EXPECT_EQ(ownNameOf("Text { objectName: 'greeting'; text: 'Hello' }"),
              texts({{"type", "Text"}, {"objectName", "greeting"}}));
}

TEST_F(QuickNames, IdAndObjectNameAreBothTaken)
{
    EXPECT_EQ(ownNameOf("Text { id: a; objectName: 'b'; text: 'Hello' }"),
              texts({{"type", "Text"}, {"id", "a"}, {"objectName", "b"}}));
}

TEST_F(QuickNames, TextStandsInForIdAndObjectName)
{
    EXPECT_EQ(ownNameOf("Text { text: 'Grüße' }"), texts({{"type", "Text"}, {"text", "Grüße"}}));
}

TEST_F(QuickNames, FirstReadableTextWins)
{
    const QByteArray properties[] = {"property string text: 't'", "property string title: 'i'",
                                     "property string label: 'l'", "property string placeholderText: 'p'",
                                     "property string source: 's'"};
    const Texts expected[] = {
        texts({{"type", "Item"}, {"text", "t"}}),   texts({{"type", "Item"}, {"title", "i"}}),
        texts({{"type", "Item"}, {"label", "l"}}),  texts({{"type", "Item"}, {"placeholderText", "p"}}),
        texts({{"type", "Item"}, {"source", "s"}}),
    };
    for (size_t first = 0; first < std::size(properties); ++first) {
        QByteArray document = "Item {";
        // In the opposite order, so that it isn't the order of the document.
        for (size_t i = std::size(properties); i > first; --i)
            document += properties[i - 1] + '\n';
        EXPECT_EQ(ownNameOf(document + '}'), expected[first]);
    }
}

TEST_F(QuickNames, PagesOfTextArePassedOver)
{
    EXPECT_EQ(ownNameOf("Item { property string text: 'a\\nb'; property string title: 'Letters' }"),
              texts({{"type", "Item"}, {"title", "Letters"}}));
    EXPECT_EQ(ownNameOf("Item { property string text: 'x'.repeat(81) }"), texts({{"type", "Item"}}));
    EXPECT_EQ(ownNameOf("Item { property string text: 'x'.repeat(80) }"),
              texts({{"type", "Item"}, {"text", QByteArray(80, 'x').constData()}}));
}

TEST_F(QuickNames, WhatTheUserTypesNamesNothing)
{
    EXPECT_EQ(ownNameOf("TextInput { text: 'typed' }"), texts({{"type", "TextInput"}}));
    EXPECT_EQ(ownNameOf("TextEdit { text: 'typed'; property string placeholderText: 'Name' }"),
              texts({{"type", "TextEdit"}, {"placeholderText", "Name"}}));
}

TEST_F(QuickNames, EmptyTextsArePassedOver)
{
    EXPECT_EQ(ownNameOf("Item { property string text; property string title: 'Letters' }"),
              texts({{"type", "Item"}, {"title", "Letters"}}));
    EXPECT_EQ(ownNameOf("Item { property string text; property string title }"), texts({{"type", "Item"}}));
}

TEST_F(QuickNames, OnlyWhatReadsAsTextCounts)
{
    EXPECT_EQ(ownNameOf("Item { property int text: 7 }"), texts({{"type", "Item"}, {"text", "7"}}));
    EXPECT_EQ(ownNameOf("Item { property Item label: Item {}; property var title: null }"), texts({{"type", "Item"}}));
}

TEST_F(QuickNames, FilesAreNamedRelativeToTheDocument)
{
    load("import QtQuick\nItem { property url source: 'images/a.png' }",
         QUrl(QStringLiteral("file:///app/qml/main.qml")));
    EXPECT_EQ(own(root()), texts({{"type", "Item"}, {"source", "images/a.png"}}));
}

TEST_F(QuickNames, OnlyVisibleItemsAreCalledVisible)
{
    load("import QtQuick\nWindow { Item { objectName: 'shown' } Item { objectName: 'hidden'; visible: false } }");
    EXPECT_EQ(name(find("shown")).value(QStringLiteral("visible")), QStringLiteral("true"));
    EXPECT_FALSE(name(find("hidden")).contains(QStringLiteral("visible")));
}

TEST_F(QuickNames, ContainerIsTheWindow)
{
    load("import QtQuick\nWindow { title: 'Main'; Item { Item { objectName: 'deep' } } }");
    const QString container = name(find("deep")).value(QStringLiteral("container"));
    EXPECT_EQ(container, scriptName(window()));
    EXPECT_EQ(ObjectName(container).property(QStringLiteral("title")).stringValue(), QStringLiteral("Main"));
}

TEST_F(QuickNames, ContainerFollowsTheItem)
{
    load("import QtQuick\nWindow { title: 'Main'; Item { objectName: 'mover' } }");
    QQuickItem *const mover = find("mover");
    {
        QQuickWindow other;
        other.setTitle(QStringLiteral("Other"));
        mover->setParentItem(other.contentItem());
        EXPECT_EQ(name(mover).value(QStringLiteral("container")), scriptName(&other));
        mover->setParentItem(nullptr);
    }
    EXPECT_FALSE(name(mover).contains(QStringLiteral("container")));
}

TEST_F(QuickNames, ContentItemAndItemsWithoutWindowHaveNoContainer)
{
    load("import QtQuick\nWindow { title: 'Main' }");
    EXPECT_FALSE(name(window()->contentItem()).contains(QStringLiteral("container")));
    QQuickItem item;
    EXPECT_EQ(own(&item), texts({{"type", "Item"}}));
    EXPECT_FALSE(name(&item).contains(QStringLiteral("container")));
}

TEST_F(QuickNames, DeadItemHasNoName)
{
    load("import QtQuick\nWindow { Item { objectName: 'item' } }");
    const SharedPtr<Object> dead = wrap(find("item"));
    EXPECT_NE(dead->scriptName(), QString());
    destroyRoot();
    EXPECT_EQ(dead->scriptName(), QString());
    EXPECT_TRUE(Application::self()->nameGenerator()->objectName(dead, false).isEmpty());
}

TEST_F(QuickNames, ItemThatDiesAsItsTextIsReadHasNoName)
{
    load("import QtQuick\nWindow {}");
    const QPointer<QQuickItem> item = new MortalText(window()->contentItem());
    const SharedPtr<Object> wrapper = wrap(item);
    EXPECT_TRUE(name(item).isEmpty());
    EXPECT_TRUE(item.isNull());
    EXPECT_EQ(wrapper->scriptName(), QString());

    const SharedPtr<Object> next = wrap(new MortalText(window()->contentItem()));
    EXPECT_EQ(next->scriptName(), QString());
    EXPECT_TRUE(next->isNull());
}

TEST_F(QuickNames, ItemThatDiesAsItsSourceIsReadHasNoName)
{
    load("import QtQuick\nWindow {}");
    // It is read as a text first and as a URL then.
    for (int lives : {1, 2}) {
        const QPointer<QQuickItem> item = new MortalSource(window()->contentItem(), lives);
        EXPECT_TRUE(name(item).isEmpty()) << lives;
        EXPECT_TRUE(item.isNull()) << lives;
    }
}

TEST_F(QuickNames, WhatNoExtensionAnswersForIsNotChosen)
{
    load(R"(
        import QtQuick
        Window {
            id: main
            Row {
                id: row
                property Item second: children[3]
                Text { text: "Name" } TextInput { width: 9; height: 9 }
                Text { text: "Street" } TextInput { width: 9; height: 9 }
            }
        })");
    auto *const row = window()->contentItem()->childItems().value(0);
    auto *const field = row->property("second").value<QQuickItem *>();
    ASSERT_NE(field, nullptr);
    const QString text = scriptName(field);
    EXPECT_FALSE(text.contains(QStringLiteral("label"))) << qPrintable(text);
    EXPECT_EQ(nativeQObject(Application::self()->objectForName(text)), field) << qPrintable(text);
}

TEST_F(QuickNames, WholeNameReadsAsASelector)
{
    load("import QtQuick\nWindow { id: main; Text { text: 'Save as…' } }");
    QQuickItem *const text = window()->contentItem()->childItems().value(0);
    ASSERT_NE(text, nullptr);
    const ObjectName parsed(scriptName(text));
    EXPECT_EQ(parsed.property(QStringLiteral("type")).stringValue(), QStringLiteral("Text"));
    EXPECT_EQ(parsed.property(QStringLiteral("text")).stringValue(), QStringLiteral("Save as…"));
    EXPECT_EQ(parsed.property(QStringLiteral("container")).stringValue(), scriptName(window()));
}

TEST_F(QuickNames, WindowsAreNamedByObjectNameThenIdThenTitle)
{
    load("import QtQuick\nWindow { id: main; objectName: 'name'; title: 'Title' }");
    EXPECT_EQ(own(window()).value(QStringLiteral("objectName")), QStringLiteral("name"));
    EXPECT_FALSE(own(window()).contains(QStringLiteral("id")));
    EXPECT_FALSE(own(window()).contains(QStringLiteral("title")));

    window()->setObjectName(QString());
    EXPECT_EQ(own(window()).value(QStringLiteral("id")), QStringLiteral("main"));
    EXPECT_FALSE(own(window()).contains(QStringLiteral("title")));

    load("import QtQuick\nWindow { title: 'Title' }");
    EXPECT_FALSE(own(window()).contains(QStringLiteral("id")));
    EXPECT_EQ(own(window()).value(QStringLiteral("title")), QStringLiteral("Title"));
}

TEST_F(QuickNames, WindowThatQmlDidNotMakeHasNoId)
{
    QQuickWindow window;
    EXPECT_EQ(own(&window), texts({{"type", "Window"}}));
}

TEST_F(QuickNames, WindowDeclaredInAnItemIsNamedByItsId)
{
    load("import QtQuick\nItem { id: root; Window { id: dialog } }");
    auto *const window = root()->findChild<QQuickWindow *>();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(own(window).value(QStringLiteral("id")), QStringLiteral("dialog"));
}

TEST_F(QuickNames, NamingAWindowMakesNoObjects)
{
    load("import QtQuick\nWindow { Item { objectName: 'item' } }");
    scriptName(find("item"));
    const qsizetype before = window()->findChildren<QObject *>().size();
    for (int i = 0; i < 5; ++i)
        scriptName(find("item"));
    EXPECT_EQ(window()->findChildren<QObject *>().size(), before);
}

TEST_F(QuickNames, EqualWindowsAreNumberedInTheirItemsContainers)
{
    QQuickWindow first;
    QQuickWindow second;
    QQuickItem item(second.contentItem());
    const ObjectName container(name(&item).value(QStringLiteral("container")));
    EXPECT_EQ(container.occurrenceValue(), 2);
}

TEST_F(QuickNames, ContentItemsAreFoundByTheirNames)
{
    QQuickWindow first;
    QQuickWindow second;
    QQuickItem item(second.contentItem());
    const auto found = [](QObject *object) {
        return nativeQObject(Application::self()->objectForName(scriptName(object)));
    };
    EXPECT_EQ(found(first.contentItem()), first.contentItem());
    EXPECT_EQ(found(second.contentItem()), second.contentItem());
    EXPECT_NE(scriptName(first.contentItem()), scriptName(second.contentItem()));
    EXPECT_EQ(found(&item), &item);
    EXPECT_EQ(found(&second), &second);
}

TEST_F(QuickNames, ItemsThatAWindowOwnsOutsideOfItsSceneAreFoundByTheirNames)
{
    QQuickWindow window;
    auto *const outside = new QQuickItem;
    outside->setParent(&window);
    auto *const inner = new QQuickItem(outside);
    for (QQuickItem *item : {outside, inner}) {
        const QString text = scriptName(item);
        EXPECT_EQ(nativeQObject(Application::self()->objectForName(text)), item) << qPrintable(text);
    }
}

#include "tst_quicknames.moc"
