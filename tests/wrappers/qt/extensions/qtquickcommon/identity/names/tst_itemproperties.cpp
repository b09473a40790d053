#include "actingitem.h"
#include "namesscene.h"

#include "wrappers/qt/extensions/qtquickcommon/identity/itemproperties_p.h"

#include <QtCore/QStringList>

#include <optional>
#include <utility>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using VantleTest::ActingItem;

namespace {

class ItemProperties : public VantleTest::NamesScene
{
protected:
    static std::optional<QString> read(QQuickItem *item, const char *key)
    {
        QString text = QStringLiteral("untouched");
        if (itemPropertyValue(item, QString::fromUtf8(key), &text))
            return text;
        EXPECT_EQ(text, QStringLiteral("untouched"));
        return std::nullopt;
    }
    static QStringList mismatches(QQuickItem *item, const char *selector)
    {
        return mismatchedProperties(item, ObjectName(QString::fromUtf8(selector)).properties());
    }
    static std::optional<QString> text(const char *value) { return QString::fromUtf8(value); }
};

/// Its class has put a property of its own in the place of QQuickItem's.
class TellingItem : public QQuickItem
{
    Q_OBJECT
    Q_PROPERTY(QString visible READ visibleInWords CONSTANT)

public:
    using QQuickItem::QQuickItem;

    QString visibleInWords() const { return QStringLiteral("hardly"); }
};

constexpr char Subject[] = R"(
    import QtQuick
    Window {
        Text {
            id: subject
            objectName: "it"
            property int number: 7
            property real ratio: 0.5
            property bool flag: true
            property url source: "file:///app/qml/images/a.png"
            property url other: "file:///app/qml/images/a.png"
            property var nothing
            property var empty: null
            property var words: "abc"
            property string objectname: "lower case"
            text: "Grüße"
            horizontalAlignment: Text.AlignRight
        }
        Item {}
    })";

} // namespace

TEST_F(ItemProperties, ComputedNamesComeFirst)
{
    load(Subject);
    EXPECT_EQ(read(find("it"), "objectName"), text("it"));
    EXPECT_EQ(read(find("it"), "unnamed"), text("0"));
    EXPECT_EQ(read(find("it"), "id"), text("subject"));
    QQuickItem *const plain = roots().at(1);
    EXPECT_EQ(read(plain, "objectName"), text(""));
    EXPECT_EQ(read(plain, "unnamed"), text("1"));
    EXPECT_EQ(read(plain, "id"), text(""));
}

TEST_F(ItemProperties, ComputedNamesCannotBeOverridden)
{
    load("import QtQuick\nWindow { Item { id: real; objectName: 'it'; property string unnamed: 'mine' } }");
    EXPECT_EQ(read(find("it"), "unnamed"), text("0"));
    find("it")->setProperty("id", QStringLiteral("dynamic"));
    EXPECT_EQ(read(find("it"), "id"), text("real"));
}

TEST_F(ItemProperties, ItemWithoutContextHasAnEmptyId)
{
    QQuickItem item;
    EXPECT_EQ(read(&item, "id"), text(""));
}

TEST_F(ItemProperties, KeysAreCaseSensitive)
{
    load(Subject);
    EXPECT_EQ(read(find("it"), "objectname"), text("lower case"));
    EXPECT_EQ(read(find("it"), "Id"), std::nullopt);
}

TEST_F(ItemProperties, ValuesReadAsText)
{
    load(Subject);
    EXPECT_EQ(read(find("it"), "text"), text("Grüße"));
    EXPECT_EQ(read(find("it"), "number"), text("7"));
    EXPECT_EQ(read(find("it"), "ratio"), text("0.5"));
    EXPECT_EQ(read(find("it"), "flag"), text("true"));
    EXPECT_EQ(read(find("it"), "words"), text("abc"));
}

TEST_F(ItemProperties, EnumerationsReadAsNumbers)
{
    load(Subject);
    EXPECT_EQ(read(find("it"), "horizontalAlignment"), text("2"));
}

TEST_F(ItemProperties, OnlySourceIsMadeRelative)
{
    load(Subject, QUrl(QStringLiteral("file:///app/qml/main.qml")));
    EXPECT_EQ(read(find("it"), "source"), text("images/a.png"));
    EXPECT_EQ(read(find("it"), "other"), text("file:///app/qml/images/a.png"));
}

TEST_F(ItemProperties, SourceThatIsNoUrlStaysAsItIs)
{
    load("import QtQuick\nWindow { Item { objectName: 'it'; property string source: 'file:///app/qml/a.png' } }",
         QUrl(QStringLiteral("file:///app/qml/main.qml")));
    EXPECT_EQ(read(find("it"), "source"), text("file:///app/qml/a.png"));
}

TEST_F(ItemProperties, GetterOfTheSourceMayDestroyItsItem)
{
    // The source is read twice, and the item may go at either time.
    for (int lastRead : {1, 2}) {
        auto *item = new ActingItem;
        item->file = QUrl(QStringLiteral("file:///app/a.png"));
        int reads = 0;
        item->action = [&item, &reads, lastRead] {
            if (++reads == lastRead)
                delete std::exchange(item, nullptr);
        };
        EXPECT_EQ(read(item, "source"), text("file:///app/a.png")) << lastRead;
        EXPECT_EQ(item, nullptr) << lastRead;
    }
}

TEST_F(ItemProperties, WhatNobodyKnowsIsNotRead)
{
    load(Subject);
    EXPECT_EQ(read(find("it"), "nowhere"), std::nullopt);
    EXPECT_EQ(read(find("it"), ""), std::nullopt);
    EXPECT_EQ(read(find("it"), "größe"), std::nullopt);
    EXPECT_EQ(read(find("it"), "日本"), std::nullopt);
}

TEST_F(ItemProperties, NamesOfPropertiesAreLatin1)
{
    QQuickItem item;
    item.setProperty(QStringLiteral("größe").toLatin1(), 5);
    EXPECT_EQ(read(&item, "größe"), text("5"));

    QQuickItem other;
    other.setProperty(QStringLiteral("größe").toUtf8(), 5);
    EXPECT_EQ(read(&other, "größe"), std::nullopt);
}

TEST_F(ItemProperties, UndefinedIsAsIfThePropertyWereNotThere)
{
    load(Subject);
    EXPECT_EQ(read(find("it"), "nothing"), std::nullopt);
    EXPECT_EQ(read(find("it"), "empty"), text(""));
}

TEST_F(ItemProperties, NullFailsOnNothing)
{
    EXPECT_EQ(mismatches(nullptr, "Button#a[text=\"b\"]:visible:nth(3)"), QStringList());
}

TEST_F(ItemProperties, AllKeysAreComparedAndComeInOrder)
{
    load(Subject);
    EXPECT_EQ(mismatches(find("it"), "Button#a[text=\"b\"][number=\"7\"][nowhere=\"1\"]:hidden"),
              (QStringList{QStringLiteral("id"), QStringLiteral("nowhere"), QStringLiteral("text"),
                           QStringLiteral("type"), QStringLiteral("visible")}));
    EXPECT_EQ(mismatches(find("it"), "Text#subject[text^=\"Gr\"][number=\"7\"]:visible"), QStringList());
}

TEST_F(ItemProperties, OccurrenceDisqualifiesNobody)
{
    load(Subject);
    for (const char *value : {"", "0", "-5", "1", "99", "x"}) {
        ObjectName name;
        name.setProperty(QStringLiteral("occurrence"),
                         PropertyValue(QString::fromLatin1(value), PropertyValue::Equals, PropertyValue::Text));
        EXPECT_EQ(mismatchedProperties(find("it"), name.properties()), QList<QString>()) << value;
    }
    EXPECT_EQ(mismatches(find("it"), "[Occurrence=\"1\"]"), QStringList{QStringLiteral("Occurrence")});
}

TEST_F(ItemProperties, TypeIsTheHostsToDecide)
{
    load(Subject);
    EXPECT_EQ(mismatches(find("it"), "Text"), QStringList());
    EXPECT_EQ(mismatches(find("it"), "QQuickText"), QStringList());
    EXPECT_EQ(mismatches(find("it"), "[type=/^T/]"), QStringList());
    EXPECT_EQ(mismatches(find("it"), "Item"), QStringList{QStringLiteral("type")});
}

TEST_F(ItemProperties, VisibilityIsThatOfTheItemWithAllAroundIt)
{
    load("import QtQuick\nWindow { visible: false; Item { visible: false; Item { objectName: 'it' } } Item {} }");
    EXPECT_EQ(mismatches(find("it"), ":hidden"), QStringList());
    EXPECT_EQ(mismatches(find("it"), ":visible"), QStringList{QStringLiteral("visible")});
    EXPECT_EQ(mismatches(find("it"), "[visible=\"False\"]"), QStringList{QStringLiteral("visible")});
    EXPECT_EQ(mismatches(roots().at(1), ":visible"), QStringList());
}

TEST_F(ItemProperties, VisibilityOfAClassIsReadByItsOwnProperty)
{
    load(Subject);
    TellingItem telling(roots().at(0));
    const ObjectName hardly(QStringLiteral("[visible=\"hardly\"]"));
    PropertyComparison comparison(hardly.properties());
    EXPECT_EQ(comparison.countMismatched(roots().at(1)), 1);
    EXPECT_EQ(comparison.countMismatched(&telling), 0);
    EXPECT_EQ(comparison.countMismatched(roots().at(1)), 1);
    EXPECT_EQ(comparison.mismatchedKeys(), QStringList{QStringLiteral("visible")});
}

TEST_F(ItemProperties, ComparisonForgetsTheItemBefore)
{
    load(Subject);
    const ObjectName name(QStringLiteral("Text[text=\"b\"]"));
    PropertyComparison comparison(name.properties());
    EXPECT_EQ(comparison.mismatchedKeys(), QStringList());
    EXPECT_EQ(comparison.countMismatched(roots().at(1)), 2);
    EXPECT_EQ(comparison.mismatchedKeys(), (QStringList{QStringLiteral("text"), QStringLiteral("type")}));
    EXPECT_EQ(comparison.countMismatched(roots().at(0)), 1);
    EXPECT_EQ(comparison.mismatchedKeys(), QStringList{QStringLiteral("text")});
    EXPECT_EQ(comparison.countMismatched(nullptr), 0);
    EXPECT_EQ(comparison.mismatchedKeys(), QStringList());
}

TEST_F(ItemProperties, OnlyItemsAreItems)
{
    load(Subject);
    EXPECT_EQ(toQuickItem(wrap(find("it"))), find("it"));
    EXPECT_EQ(toQuickItem(wrap(window())), nullptr);
    EXPECT_EQ(toQuickItem(wrap(nullptr)), nullptr);
    EXPECT_EQ(toQuickItem(SharedPtr<Object>()), nullptr);
    const SharedPtr<Object> dead = wrap(find("it"));
    destroyRoot();
    EXPECT_EQ(toQuickItem(dead), nullptr);
}

#include "tst_itemproperties.moc"
