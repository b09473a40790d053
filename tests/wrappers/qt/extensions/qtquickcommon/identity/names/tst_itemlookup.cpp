#include "actingitem.h"
#include "namesscene.h"

#include "wrappers/qt/extensions/qtquickcommon/identity/itemlookup.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemlookup_p.h"

#include <QtCore/QStringList>

#include <limits>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using VantleTest::ActingItem;

namespace {

class ItemLookup : public VantleTest::NamesScene
{
protected:
    QQuickItem *lookUp(const char *selector)
    {
        return lookUpIn(roots(), ObjectName(QString::fromUtf8(selector)));
    }
    QQuickItem *lookUpIn(const QList<QQuickItem *> &items, const ObjectName &name)
    {
        result = findQuickItem(items, name, mismatched);
        return qobject_cast<QQuickItem *>(nativeQObject(result));
    }
    QQuickItem *lookUpOccurrence(const char *occurrence)
    {
        ObjectName name(QStringLiteral("[n=\"1\"]"));
        name.setProperty(QStringLiteral("occurrence"),
                         PropertyValue(QString::fromLatin1(occurrence), PropertyValue::Equals, PropertyValue::Text));
        return lookUpIn(roots(), name);
    }

    SharedPtr<Object> result;
    QList<QString> mismatched;
};

const QString before = QStringLiteral("before");

constexpr char Tree[] = R"(
    import QtQuick
    Window {
        Item {
            objectName: "a"
            property int n: 1
            Item { objectName: "a1"; property int n: 1 }
            Item { objectName: "a2"; property int n: 2; visible: false
                   Item { objectName: "a21"; property int n: 4 } }
        }
        Item { objectName: "b"; property int n: 1; property int m: 1 }
        Item { objectName: "c"; property int n: 3; property int m: 3; property int k: 3 }
    })";

} // namespace

TEST_F(ItemLookup, WalksParentsFirstAndSiblingsInOrder)
{
    load(Tree);
    EXPECT_EQ(lookUp("[n=\"1\"]"), find("a"));
    EXPECT_EQ(lookUp("[n=\"1\"]:nth(2)"), find("a1"));
    EXPECT_EQ(lookUp("[n=\"1\"]:nth(3)"), find("b"));
    EXPECT_EQ(lookUp("[n=\"1\"]:nth(4)"), nullptr);
}

TEST_F(ItemLookup, OrderIsThatOfChildrenAndNotOfStacking)
{
    load("import QtQuick\nWindow { Item { objectName: 'a'; z: 5; property int n: 1 }"
         "Item { objectName: 'b'; z: 1; property int n: 1 } }");
    EXPECT_EQ(lookUp("[n=\"1\"]"), find("a"));
}

TEST_F(ItemLookup, WithoutRootsNothingIsFoundAndNothingIsSaid)
{
    mismatched = {before};
    EXPECT_EQ(lookUpIn({}, ObjectName(QStringLiteral("Item"))), nullptr);
    EXPECT_TRUE(result.isNull());
    EXPECT_EQ(mismatched, QStringList{before});
}

TEST_F(ItemLookup, OccurrencesBelowOneAreNeverReached)
{
    load(Tree);
    for (const char *occurrence : {"0", "-1", "-2147483648", "many", ""})
        EXPECT_EQ(lookUpOccurrence(occurrence), nullptr) << occurrence;
}

TEST_F(ItemLookup, CountThatIsAtItsLowestDoesNotRunOver)
{
    load(Tree);
    qint32 remaining = std::numeric_limits<qint32>::min();
    const ObjectName::Properties properties = ObjectName(QStringLiteral("[n=\"1\"]")).properties();
    EXPECT_TRUE(searchItems(roots(), properties, &remaining, true, mismatched).isNull());
    EXPECT_LE(remaining, 0);
}

TEST_F(ItemLookup, OccurrenceBeyondTheMatchesGivesNull)
{
    load(Tree);
    EXPECT_EQ(lookUpOccurrence("4"), nullptr);
    EXPECT_EQ(mismatched, QStringList{QStringLiteral("n")}) << "from the item behind the last match";
}

TEST_F(ItemLookup, MatchThatIsPassedOverEmptiesTheList)
{
    load("import QtQuick\nWindow { Item { property int n: 2 } Item { property int n: 1 } }");
    EXPECT_EQ(lookUpOccurrence("2"), nullptr);
    EXPECT_EQ(mismatched, QStringList());
}

TEST_F(ItemLookup, HitOnARootLeavesTheListAlone)
{
    load(Tree);
    mismatched = {before, before};
    EXPECT_EQ(lookUp("[n=\"1\"]"), find("a"));
    EXPECT_EQ(mismatched, (QStringList{before, before}));
    EXPECT_EQ(lookUp("[n=\"3\"]"), find("c"));
    EXPECT_EQ(mismatched, QStringList{QStringLiteral("n")});
}

TEST_F(ItemLookup, HitBelowARootClearsTheList)
{
    load(Tree);
    mismatched = {before, before};
    EXPECT_EQ(lookUp("[objectName=\"a1\"]"), find("a1"));
    EXPECT_EQ(mismatched, QStringList());
}

TEST_F(ItemLookup, ClosestItemTellsTheDifferences)
{
    load(Tree);
    EXPECT_EQ(lookUp("Item[k=\"0\"][m=\"3\"][n=\"3\"]"), nullptr);
    EXPECT_EQ(mismatched, QStringList{QStringLiteral("k")});
}

TEST_F(ItemLookup, EarlierOfEquallyCloseItemsStays)
{
    load(Tree);
    EXPECT_EQ(lookUp("[m=\"1\"][n=\"9\"]"), nullptr);
    EXPECT_EQ(mismatched, QStringList{QStringLiteral("n")});
    mismatched.clear();
    EXPECT_EQ(lookUp("[m=\"9\"][n=\"3\"]"), nullptr);
    EXPECT_EQ(mismatched, QStringList{QStringLiteral("m")});
    // b fails on k, c on n.
    mismatched.clear();
    EXPECT_EQ(lookUp("[k=\"3\"][n=\"1\"]"), nullptr);
    EXPECT_EQ(mismatched, QStringList{QStringLiteral("k")});
}

TEST_F(ItemLookup, WhatTheCallerHasCountsAsTheClosest)
{
    load(Tree);
    mismatched = {before};
    EXPECT_EQ(lookUp("[n=\"9\"]"), nullptr);
    EXPECT_EQ(mismatched, QStringList{before});
    mismatched = {before, before};
    EXPECT_EQ(lookUp("[n=\"9\"]"), nullptr);
    EXPECT_EQ(mismatched, QStringList{QStringLiteral("n")});
}

TEST_F(ItemLookup, ContainerIsComparedLikeAnyOtherKey)
{
    load(Tree);
    EXPECT_EQ(lookUp("Window [n=\"1\"]"), nullptr);
    EXPECT_EQ(mismatched, QStringList{QStringLiteral("container")});
    load("import QtQuick\nWindow { Item { objectName: 'a'; property string container: 'Window'; property int n: 1 } }");
    EXPECT_EQ(lookUp("Window [n=\"1\"]"), find("a"));
}

TEST_F(ItemLookup, InvisibleItemsAreFoundUnlessTheNameAsksForVisibleOnes)
{
    load(Tree);
    EXPECT_EQ(lookUp("[n=\"4\"]"), find("a21"));
    EXPECT_EQ(lookUp("[n=\"2\"]:hidden"), find("a2"));
    EXPECT_EQ(lookUp("[n=\"4\"]:hidden"), find("a21"));
    EXPECT_EQ(lookUp("[n=\"2\"]:visible"), nullptr);
    EXPECT_EQ(lookUp("[n=\"4\"]:visible"), nullptr);
}

TEST_F(ItemLookup, InvisibleItemIsNotEvenComparedForTheNameOfAVisibleOne)
{
    load("import QtQuick\nWindow { Item { property int n: 1; visible: false } }");
    // The item fits all the same, as its visibility is not a plain comparison.
    EXPECT_EQ(lookUp("[n=\"1\"][visible*=\"alse\"]"), nullptr);
    EXPECT_EQ(mismatched, QStringList());
}

TEST_F(ItemLookup, InvisibleChildOfAVisibleItemIsFound)
{
    load(Tree);
    EXPECT_EQ(lookUp("Item:hidden"), find("a2"));
    EXPECT_TRUE(find("a")->isVisible());
}

TEST_F(ItemLookup, NameOfNothingButAnOccurrenceCountsAllItems)
{
    load(Tree);
    const char *const order[] = {"a", "a1", "a2", "a21", "b", "c"};
    for (int i = 0; i < 6; ++i) {
        const QByteArray selector = ":nth(" + QByteArray::number(i + 1) + ')';
        EXPECT_EQ(lookUp(selector), find(order[i])) << selector.constData();
    }
    EXPECT_EQ(lookUp(":nth(7)"), nullptr);
    EXPECT_EQ(lookUpIn(roots(), ObjectName()), find("a"));
}

TEST_F(ItemLookup, DeepTreesAreWalkedToTheEnd)
{
    constexpr int depth = 10000;
    QQuickItem root;
    QList<QQuickItem *> chain{&root};
    for (int i = 0; i < depth; ++i)
        chain.append(new QQuickItem(chain.last()));
    chain.last()->setObjectName(QStringLiteral("deepest"));
    EXPECT_EQ(lookUpIn({&root}, ObjectName(QStringLiteral("[objectName=\"deepest\"]"))), chain.last());
    EXPECT_EQ(lookUpIn({&root}, ObjectName(QStringLiteral("[opacity=\"1\"]:nth(%1)").arg(depth + 1))), chain.last());
    // From the leaf up, as Qt destroys by recursion.
    while (chain.size() > 1)
        delete chain.takeLast();
}

class HostileLookup : public ItemLookup
{
protected:
    HostileLookup()
    {
        for (QQuickItem *item : {first, second, third})
            item->setParentItem(&root);
    }
    QQuickItem *walk(const char *selector)
    {
        return lookUpIn({&root}, ObjectName(QString::fromLatin1(selector)));
    }

    QQuickItem root;
    ActingItem *first = new ActingItem;
    ActingItem *second = new ActingItem;
    ActingItem *third = new ActingItem;
};

TEST_F(HostileLookup, GetterMayDestroyTheNextItem)
{
    first->action = [this] { delete std::exchange(second, nullptr); };
    third->setProperty("mark", 1);
    EXPECT_EQ(walk("[acting=\"0\"][mark=\"1\"]"), third);
    EXPECT_EQ(second, nullptr);
    delete first;
    delete third;
}

TEST_F(HostileLookup, GetterMayDestroyItsOwnItem)
{
    second->action = [this] { delete std::exchange(second, nullptr); };
    third->setProperty("mark", 1);
    EXPECT_EQ(walk("[acting=\"0\"][mark=\"1\"]"), third);
    EXPECT_EQ(walk("[acting=\"0\"]:nth(3)"), nullptr);
    EXPECT_EQ(second, nullptr);
    delete first;
    delete third;
}

TEST_F(HostileLookup, ItemThatDiesAsItFitsIsNotFound)
{
    second->action = [this] { delete std::exchange(second, nullptr); };
    EXPECT_EQ(walk("[acting=\"0\"]:nth(2)"), third);
    delete first;
    delete third;
}

TEST_F(HostileLookup, GetterMayTakeAnItemOutOfTheScene)
{
    first->action = [this] { second->setParentItem(nullptr); };
    second->setProperty("mark", 1);
    EXPECT_EQ(walk("[acting=\"0\"][mark=\"1\"]"), second) << "the list was made before";
    for (QQuickItem *item : {first, second, third})
        delete item;
}

TEST_F(HostileLookup, GetterMayAddItems)
{
    first->action = [this] {
        first->action = nullptr;
        (new QQuickItem(&root))->setProperty("mark", 1);
    };
    EXPECT_EQ(walk("[acting=\"0\"][mark=\"1\"]"), nullptr);
    for (QQuickItem *item : {first, second, third})
        delete item;
    qDeleteAll(root.childItems());
}
