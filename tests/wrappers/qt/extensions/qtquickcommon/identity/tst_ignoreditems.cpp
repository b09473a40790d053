#include "hookscene.h"

#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QPointF>

using namespace Vantle::QtWrapper;
using VantleTest::itemNamed;

namespace {

/// An extension that ignores what is called so, and may do something else first.
QString ignoring(const char *script = "")
{
    return QStringLiteral("function isIgnored(item) {\n const name = item.objectName\n %1\n"
                          " return name.startsWith(\"ignored\") }")
        .arg(QLatin1String(script));
}

/// Items of 100 by 100 that cover each other, in a window that is shown.
class IgnoredItems : public VantleTest::HookTest
{
protected:
    void show(const QString &extension, const char *qml)
    {
        extend({extension});
        shown = scene.addWindow(QStringLiteral("component Tile: Item { width: 100; height: 100 }\n")
                                + QLatin1String(qml));
        shown->resize(100, 100);
        shown->show();
        shown->requestActivate();
        ASSERT_TRUE(VantleTest::waitUntil(
            [this] { return shown->isActive() && shown->contentItem()->size() == QSizeF(100, 100); }));
    }

    QQuickItem *named(const char *name) { return itemNamed(shown, name); }
    QQuickItem *hit() { return recursiveQuickItemAt(shown->contentItem(), QPointF(50, 50)); }

    QQuickWindow *shown = nullptr;
};

} // namespace

TEST_F(IgnoredItems, AreLookedThroughToTheSiblingBelow)
{
    show(ignoring(), R"(Tile { objectName: "below" } Tile { objectName: "ignored" })");
    EXPECT_EQ(hit(), named("below"));
}

TEST_F(IgnoredItems, DoNotHideTheirChildren)
{
    show(ignoring(), R"(Tile { objectName: "ignored"; Tile { objectName: "child" } })");
    EXPECT_EQ(hit(), named("child"));
}

TEST_F(IgnoredItems, AreLookedThroughInLayers)
{
    show(ignoring(), R"(
        Tile { objectName: "below" }
        Tile { objectName: "ignored 1"; Tile { objectName: "ignored 2"; Tile { objectName: "ignored 3" } } }
        Tile { objectName: "ignored 4" })");
    EXPECT_EQ(hit(), named("below"));
}

TEST_F(IgnoredItems, LeaveNothingToHitWhereThereAreNoOthers)
{
    show(QStringLiteral("function isIgnored(item) { return true }"), R"(Tile { Tile {} })");
    EXPECT_EQ(hit(), nullptr);
}

TEST_F(IgnoredItems, AreNotAskedAboutUnlessTheyWouldBeTheHit)
{
    show(ignoring("program.note(item.objectName)"), R"(
        Tile { objectName: "below" }
        Tile { objectName: "parent"
            Tile { objectName: "hit" }
            Tile { objectName: "ignored" }
            Tile { objectName: "elsewhere"; x: 90 }
            Tile { objectName: "transparent"; opacity: 0 }
            Tile { objectName: "invisible"; visible: false }
        })");
    EXPECT_EQ(hit(), named("hit"));
    EXPECT_EQ(scene.program.notes, (QStringList{QStringLiteral("ignored"), QStringLiteral("hit")}));
}

TEST_F(IgnoredItems, AnItemThatDiesWhileItIsAskedAboutIsNotHit)
{
    show(ignoring("if (item.objectName === \"mortal\") program.kill(item)\n else"), R"(
        Tile { objectName: "below" }
        Tile { objectName: "mortal" })");
    EXPECT_EQ(hit(), named("below"));
    EXPECT_EQ(shown->findChild<QQuickItem *>(QStringLiteral("mortal")), nullptr);
}

TEST_F(IgnoredItems, SiblingsThatDieMeanwhileAreNotTouched)
{
    scene.program.action = [this] {
        for (const char *name : {"second", "third"})
            delete shown->findChild<QQuickItem *>(QLatin1String(name));
    };
    show(ignoring("program.act()"), R"(
        Tile { objectName: "first" }
        Tile { objectName: "second"; z: 1 }
        Tile { objectName: "third"; z: 2 }
        Tile { objectName: "ignored"; z: 3 })");
    EXPECT_EQ(hit(), named("first"));
}

TEST_F(IgnoredItems, ParentsThatDieMeanwhileAreNotTouched)
{
    scene.program.action = [this] { delete shown->findChild<QQuickItem *>(QStringLiteral("grandparent")); };
    show(ignoring("program.act()"), R"(
        Tile { objectName: "below" }
        Tile { objectName: "grandparent"
            Tile { objectName: "parent"
                Tile { objectName: "sibling" }
                Tile { objectName: "ignored" }
            }
        })");
    EXPECT_EQ(hit(), named("below"));
}

TEST_F(IgnoredItems, TheRootMayDieMeanwhile)
{
    show(ignoring("program.act()"), R"(
        Tile { objectName: "root"
            Tile { objectName: "child" }
            Tile { objectName: "ignored" }
        })");
    QPointer<QQuickItem> root = named("root");
    scene.program.action = [&] { delete root.data(); };
    EXPECT_EQ(recursiveQuickItemAt(root, QPointF(50, 50)), nullptr);
    EXPECT_TRUE(root.isNull());
}

TEST_F(IgnoredItems, AnItemThatMovesWhileItIsAskedAboutIsHit)
{
    scene.program.action = [this] {
        QQuickItem *const mover = named("mover");
        mover->setParentItem(named("elsewhere"));
        mover->setX(500);
    };
    show(ignoring("if (name === \"mover\") program.act()\n"), R"(
        Tile { objectName: "below" }
        Tile { objectName: "elsewhere"; x: 300 }
        Tile { objectName: "mover" })");
    QQuickItem *const mover = named("mover");
    EXPECT_EQ(hit(), mover);
    EXPECT_EQ(mover->parentItem(), named("elsewhere"));
}

TEST_F(IgnoredItems, AnItemThatIsTakenOutOfTheSceneWhileItIsAskedAboutIsHit)
{
    show(ignoring("if (name === \"mover\") item.parent = null\n"), R"(
        Tile { objectName: "below" }
        Tile { objectName: "mover" })");
    QQuickItem *const mover = named("mover");
    EXPECT_EQ(hit(), mover);
    EXPECT_EQ(mover->parentItem(), nullptr);
}

TEST_F(IgnoredItems, SiblingsThatMoveMeanwhileAreHitWhereTheyAre)
{
    scene.program.action = [this] {
        named("mover")->setParentItem(named("elsewhere"));
        named("elsewhere")->setX(-20);
    };
    show(ignoring("program.act()"), R"(
        Tile { objectName: "below" }
        Tile { objectName: "elsewhere"; x: 300 }
        Tile { objectName: "mover"; y: 10 }
        Tile { objectName: "ignored" })");
    EXPECT_EQ(hit(), named("mover"));
}

TEST_F(IgnoredItems, ThePointIsMappedAnewForSiblingsThatMoveMeanwhile)
{
    scene.program.action = [this] {
        named("parent")->setX(40);
        named("mover")->setX(20);
    };
    show(ignoring("program.act()"), R"(
        Tile { objectName: "below" }
        Tile { objectName: "parent"
            Tile { objectName: "mover" }
            Tile { objectName: "ignored" }
        })");
    // In the parent the point is still where it was on the way down.
    EXPECT_EQ(hit(), named("mover"));
    EXPECT_EQ(hit(), named("parent"));
}

TEST_F(IgnoredItems, ItemsThatAppearMeanwhileChangeNothing)
{
    scene.program.action = [this] {
        auto *added = new QQuickItem(shown->contentItem());
        added->setSize(QSizeF(100, 100));
    };
    show(ignoring("program.act()"), R"(
        Tile { objectName: "below" }
        Tile { objectName: "ignored" })");
    EXPECT_EQ(hit(), named("below"));
}

TEST_F(IgnoredItems, WithTheFocusGiveItToTheParentThatHasActiveFocusToo)
{
    show(ignoring(), R"(
        FocusScope { objectName: "scope"; focus: true
            Item { objectName: "between"
                Item { objectName: "ignored"; focus: true }
            }
        })");
    ASSERT_EQ(shown->activeFocusItem(), named("ignored"));
    EXPECT_EQ(firstNonIgnoredFocusItem(shown), named("scope"));

    const Application application;
    setupQtQuick();
    EXPECT_EQ(nativeQObject(quickWindowFocusProxy(shown)), named("scope"));
}

TEST_F(IgnoredItems, WithTheFocusUpToTheContentItemLeaveNone)
{
    show(ignoring(), R"(
        FocusScope { objectName: "ignored scope"; focus: true
            Item { objectName: "ignored"; focus: true }
        })");
    ASSERT_EQ(shown->activeFocusItem(), named("ignored"));
    EXPECT_EQ(firstNonIgnoredFocusItem(shown), nullptr);
    EXPECT_TRUE(quickWindowFocusProxy(shown).isNull());
}

TEST_F(IgnoredItems, ThatDieWithTheFocusLeaveItToTheScopeAroundThem)
{
    show(ignoring("if (name === \"mortal\") program.kill(item)\n"), R"(
        FocusScope { objectName: "scope"; focus: true
            Item {
                Item { objectName: "mortal"; focus: true }
            }
        })");
    ASSERT_EQ(shown->activeFocusItem(), named("mortal"));
    EXPECT_EQ(firstNonIgnoredFocusItem(shown), named("scope"));
    EXPECT_EQ(shown->findChild<QQuickItem *>(QStringLiteral("mortal")), nullptr);
}

TEST_F(IgnoredItems, ThatDieWithTheirScopeLeaveNone)
{
    scene.program.action = [this] { delete shown->findChild<QQuickItem *>(QStringLiteral("scope")); };
    show(ignoring("program.act()"), R"(
        FocusScope { objectName: "scope"; focus: true
            Item { objectName: "inside"; focus: true }
        })");
    ASSERT_EQ(shown->activeFocusItem(), named("inside"));
    EXPECT_EQ(firstNonIgnoredFocusItem(shown), nullptr);
}

TEST_F(IgnoredItems, ThatDieWithTheFocusLeaveNone)
{
    show(ignoring("program.kill(item)\n return false\n"), R"(Item { objectName: "mortal"; focus: true })");
    ASSERT_EQ(shown->activeFocusItem(), named("mortal"));
    EXPECT_EQ(firstNonIgnoredFocusItem(shown), nullptr);
}
