#include "actingitem.h"
#include "namesscene.h"

#include "wrappers/qt/extensions/qtquickcommon/identity/qualifiednames.h"

#include <QtCore/QPointer>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using VantleTest::ActingItem;

namespace {

/// Three items of one name, whose getters do something to the scene while one
/// of them is named.
class HostileNames : public VantleTest::NamesScene
{
protected:
    void SetUp() override
    {
        load("import QtQuick\nWindow { title: 'Main' }");
        nameItems(plainName);
        for (QPointer<ActingItem> *item : {&first, &second, &third})
            *item = new ActingItem(window()->contentItem());
    }

    QString name(QObject *object) { return qualifiedQuickItemName(wrap(object)); }
    int occurrenceOf(QObject *object) { return ObjectName(name(object)).occurrenceValue(); }
    void expectNotFoundMyself(const QString &qualifiedName)
    {
        expectedWarnings = {"qualifiedItemName: failed to find myself with the generated name ("
                            + qualifiedName.toStdString() + "). Might indicate a problem."};
    }

    const QString plainName = QStringLiteral("WindowQmlImpl[title=\"Main\"] [acting=\"0\"]");
    QPointer<ActingItem> first;
    QPointer<ActingItem> second;
    QPointer<ActingItem> third;
};

} // namespace

TEST_F(HostileNames, ItemThatDiesAsItFitsIsNotCounted)
{
    second->action = [this] { delete second.data(); };
    EXPECT_EQ(occurrenceOf(third), 2);
    EXPECT_TRUE(second.isNull());
    EXPECT_EQ(objectNamed(plainName + QStringLiteral(":nth(2)")), third.data());
}

TEST_F(HostileNames, ItemThatDiesBeforeItsTurnIsNotCounted)
{
    first->action = [this] { delete second.data(); };
    EXPECT_EQ(occurrenceOf(third), 2);
    EXPECT_EQ(objectNamed(plainName + QStringLiteral(":nth(2)")), third.data());
}

TEST_F(HostileNames, ItemThatDiesWithItsChildrenIsNotEntered)
{
    auto *const child = new ActingItem(second);
    child->action = [] { ADD_FAILURE() << "the child was compared"; };
    second->action = [this] { delete second.data(); };
    EXPECT_EQ(occurrenceOf(third), 2);
}

TEST_F(HostileNames, TargetThatDiesAsItIsComparedEndsTheCountWithoutIt)
{
    third->action = [this] { delete third.data(); };
    EXPECT_EQ(name(third), plainName + QStringLiteral(":nth(2)"));
    EXPECT_TRUE(third.isNull());
}

TEST_F(HostileNames, TargetThatDiesBeforeItsTurnIsNotReached)
{
    first->action = [this] { delete third.data(); };
    EXPECT_EQ(name(third), plainName + QStringLiteral(":nth(2)"));
    expectNotFoundMyself(plainName + QStringLiteral(":nth(2)"));
}

TEST_F(HostileNames, ContainerMayDieWithAllThatIsInIt)
{
    first->action = [this] { destroyRoot(); };
    EXPECT_EQ(name(third), plainName);
    EXPECT_TRUE(third.isNull());
    expectNotFoundMyself(plainName);
}

TEST_F(HostileNames, ItemThatIsAddedMeanwhileIsNotCounted)
{
    first->action = [this] {
        first->action = nullptr;
        (new ActingItem(window()->contentItem()))->stackBefore(second);
    };
    EXPECT_EQ(occurrenceOf(third), 3) << "the list was made before";
    EXPECT_EQ(occurrenceOf(third), 4);
}
