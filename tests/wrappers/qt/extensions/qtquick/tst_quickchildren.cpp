#include "wrappers/qt/extensions/qtquick/scene.h"

#include "hook/inspector.h"

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

class QuickChildren : public VantleTest::QuickScene
{
protected:
    static QStringList childNames(QObject *object)
    {
        QStringList names;
        for (const SharedPtr<Object> &child : wrap(object)->children())
            names.append(nativeQObject(child)->objectName());
        return names;
    }
};

QStringList names(std::initializer_list<const char *> list)
{
    QStringList result;
    for (const char *name : list)
        result.append(QString::fromLatin1(name));
    return result;
}

} // namespace

TEST_F(QuickChildren, ClassesAreKnownBeforeAnyObjectIsSeen)
{
    for (const char *name : {"QQuickItem", "QQuickWindow", "QQuickFlickable", "QWindow", "QObject"})
        EXPECT_NE(Inspector::self()->classByName(QString::fromLatin1(name)), nullptr) << name;
}

TEST_F(QuickChildren, OfAWindowAreTheItemsBelowItsContentItem)
{
    load("import QtQuick\nWindow { Item { objectName: 'a'; Item { objectName: 'inner' } } Item { objectName: 'b' } }");
    EXPECT_EQ(childNames(window()), names({"a", "b"}));
}

TEST_F(QuickChildren, OfAWindowContinueWithTheWindowsThatItOwns)
{
    load("import QtQuick\nWindow { Window { objectName: 'dialog' } Item { objectName: 'item' } }");
    EXPECT_EQ(childNames(window()), names({"item", "dialog"}));
}

TEST_F(QuickChildren, OfAWindowIncludeItemsThatStandInNoScene)
{
    load("import QtQuick\nWindow { Item { objectName: 'shown' } }");
    QQuickItem loose;
    loose.setObjectName(QStringLiteral("loose"));
    loose.setParent(window());
    EXPECT_EQ(childNames(window()), names({"shown", "loose"}));
    loose.setParentItem(find("shown"));
    EXPECT_EQ(childNames(window()), names({"shown"}));
    loose.setParent(nullptr);
}

TEST_F(QuickChildren, OfAWindowNeverIncludeItsContentItemOrPlainObjects)
{
    load("import QtQuick\nWindow { Timer { objectName: 'timer' } }");
    EXPECT_EQ(childNames(window()), QStringList());
}

TEST_F(QuickChildren, OfAnItemAreItsChildItems)
{
    load("import QtQuick\nItem { Timer {} Item { objectName: 'a' } Text { objectName: 'b' } Window {} }");
    EXPECT_EQ(childNames(root()), names({"a", "b"}));
}

TEST_F(QuickChildren, OfAnItemFollowTheSceneAndNotOwnership)
{
    load("import QtQuick\nItem { Item { objectName: 'left' } Item { objectName: 'right'; Item { objectName: 'x' } } }");
    find("x")->setParentItem(find("left"));
    EXPECT_EQ(childNames(find("left")), names({"x"}));
    EXPECT_EQ(childNames(find("right")), QStringList());
}

TEST_F(QuickChildren, InvisibleItemsAreChildrenToo)
{
    load("import QtQuick\nWindow { Item { objectName: 'hidden'; visible: false } }");
    EXPECT_EQ(childNames(window()), names({"hidden"}));
}

TEST_F(QuickChildren, ItemsOfRepeatersAreThereOnce)
{
    load("import QtQuick\nItem { Repeater { model: 3; Item { objectName: 'r' + index } } }");
    EXPECT_EQ(childNames(root()), names({"r0", "r1", "r2", ""}));
}
