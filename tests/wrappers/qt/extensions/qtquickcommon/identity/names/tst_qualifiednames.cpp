#include "namesscene.h"

#include "wrappers/qt/extensions/qtquickcommon/identity/qualifiednames.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/qualifiednames_p.h"
#include "wrappers/qt/objectnamecache.h"

#include <gmock/gmock.h>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using VantleTest::waitUntil;

namespace {

class QualifiedNames : public VantleTest::NamesScene
{
protected:
    static QString name(QObject *object) { return qualifiedQuickItemName(wrap(object)); }
};

constexpr char EqualButtons[] = R"(
    import QtQuick
    import QtQuick.Controls
    Window {
        title: "Main"
        Row {
            Button { objectName: "a"; property int n: 1 }
            Button { objectName: "b"; property int n: 1 }
            Button { objectName: "c"; property int n: 2 }
            Button { objectName: "d"; property int n: 1; Item { objectName: "inside"; property int n: 1 } }
            Button { objectName: "hidden"; property int n: 3; visible: false
                     Item { objectName: "insideHidden"; property int n: 3 } }
            Button { objectName: "last"; property int n: 3 }
        }
    })";

QString selector(const char *step)
{
    return QStringLiteral("WindowQmlImpl[title=\"Main\"] ") + QString::fromLatin1(step);
}

std::string notFoundMyself(const QString &name)
{
    return "qualifiedItemName: failed to find myself with the generated name (" + name.toStdString()
        + "). Might indicate a problem.";
}

} // namespace

TEST_F(QualifiedNames, UniqueItemHasNoOccurrence)
{
    load(EqualButtons);
    nameItems(selector("[n=\"2\"]"));
    EXPECT_EQ(name(find("c")), selector("[n=\"2\"]"));
}

TEST_F(QualifiedNames, FirstOfSeveralHasNoOccurrenceAndTheOthersAreCounted)
{
    load(EqualButtons);
    nameItems(selector("[n=\"1\"]"));
    EXPECT_EQ(name(find("a")), selector("[n=\"1\"]"));
    EXPECT_EQ(name(find("b")), selector("[n=\"1\"]:nth(2)"));
    EXPECT_EQ(name(find("d")), selector("[n=\"1\"]:nth(3)"));
}

TEST_F(QualifiedNames, ParentsCountBeforeTheirChildren)
{
    load(EqualButtons);
    nameItems(selector("[n=\"1\"]"));
    EXPECT_EQ(name(find("inside")), selector("[n=\"1\"]:nth(4)"));
}

TEST_F(QualifiedNames, ScriptNameIsTheQualifiedName)
{
    load("import QtQuick\nimport QtQuick.Controls\nWindow { id: main; visible: true; width: 99; height: 99\n"
         "Button { text: 'OK' } Button { text: 'OK'; property bool second } }");
    for (QQuickItem *item : roots()) {
        const bool second = item->property("second").isValid();
        EXPECT_EQ(scriptName(item), second ? QStringLiteral("Window#main Button[text=\"OK\"]:visible:nth(2)")
                                           : QStringLiteral("Window#main Button[text=\"OK\"]:visible"));
        EXPECT_EQ(scriptName(item), name(item));
    }
}

TEST_F(QualifiedNames, TargetThatDoesNotFitItsNameIsReachedAllTheSame)
{
    load(EqualButtons);
    nameItems(selector("[n=\"1\"]"));
    EXPECT_EQ(name(find("c")), selector("[n=\"1\"]:nth(2)"));
    nameItems(selector("[n=\"7\"]"));
    EXPECT_EQ(name(find("c")), selector("[n=\"7\"]"));
}

TEST_F(QualifiedNames, OneMatchAheadOfATargetThatDoesNotFitLeavesNoTrace)
{
    load(EqualButtons);
    nameItems(selector("[n=\"2\"]"));
    EXPECT_EQ(name(find("d")), selector("[n=\"2\"]"));
}

TEST_F(QualifiedNames, NameOfAVisibleItemPassesOverWhatIsInsideInvisibleOnes)
{
    load(EqualButtons);
    nameItems(selector("[n=\"3\"]:visible"));
    EXPECT_EQ(name(find("last")), selector("[n=\"3\"]:visible"));
}

TEST_F(QualifiedNames, NameOfAnInvisibleItemEntersInvisibleOnes)
{
    load(EqualButtons);
    nameItems(selector("[n=\"3\"]:hidden"));
    EXPECT_EQ(name(find("hidden")), selector("[n=\"3\"]:hidden"));
    EXPECT_EQ(name(find("insideHidden")), selector("[n=\"3\"]:hidden:nth(2)"));
}

TEST_F(QualifiedNames, InvisibleItemsThatFitCountAlsoWhereTheyAreNotEntered)
{
    load(R"(
        import QtQuick
        Window {
            title: "Main"
            Item { visible: false; property int n: 1; Item { property int n: 1 } }
            Item { visible: false; property int n: 1; Item { property int n: 1 } }
            Item { objectName: "target"; visible: false; property int n: 1 }
        })");
    // Not a plain "false", so it does not say that invisible items are entered.
    nameItems(selector("[n=\"1\"][visible*=\"alse\"]"));
    EXPECT_EQ(ObjectName(name(find("target"))).occurrenceValue(), 3);
    nameItems(selector("[n=\"1\"]:hidden"));
    EXPECT_EQ(ObjectName(name(find("target"))).occurrenceValue(), 5);
}

TEST_F(QualifiedNames, NameWithoutVisibilityEntersInvisibleItems)
{
    load(EqualButtons);
    nameItems(selector("[n=\"3\"]"));
    EXPECT_EQ(name(find("last")), selector("[n=\"3\"]:nth(3)"));
}

TEST_F(QualifiedNames, VisibilityIsComparedAsAWholeText)
{
    EXPECT_TRUE(searchesInvisible(ObjectName(QStringLiteral("Button")).properties()));
    EXPECT_TRUE(searchesInvisible(ObjectName(QStringLiteral("Button:hidden")).properties()));
    EXPECT_TRUE(searchesInvisible(ObjectName(QStringLiteral("Button[visible*=\"false\"]")).properties()));
    for (const char *value : {"true", "False", "false ", "", "0"}) {
        const auto text = QStringLiteral("Button[visible=\"%1\"]").arg(QString::fromLatin1(value));
        EXPECT_FALSE(searchesInvisible(ObjectName(text).properties())) << value;
    }
}

TEST_F(QualifiedNames, TargetInsideAnInvisibleItemIsNotReachedByTheNameOfAVisibleOne)
{
    load(EqualButtons);
    nameItems(selector("[n=\"3\"]:visible"));
    EXPECT_EQ(name(find("insideHidden")), selector("[n=\"3\"]:visible"));
    expectedWarnings = {notFoundMyself(selector("[n=\"3\"]:visible"))};
}

TEST_F(QualifiedNames, NameThatIsNotReachedStillCarriesTheCount)
{
    load(EqualButtons);
    nameItems(selector("[n=\"1\"]:visible"));
    EXPECT_EQ(name(find("insideHidden")), selector("[n=\"1\"]:visible:nth(4)"));
    expectedWarnings = {notFoundMyself(selector("[n=\"1\"]:visible:nth(4)"))};
}

TEST_F(QualifiedNames, InvisibleTargetItselfIsReached)
{
    load(EqualButtons);
    nameItems(selector("[n=\"3\"]:visible"));
    EXPECT_EQ(name(find("hidden")), selector("[n=\"3\"]:visible"));
}

TEST_F(QualifiedNames, UnknownPropertyFitsNobody)
{
    load(EqualButtons);
    nameItems(selector("[nowhere=\"1\"]"));
    EXPECT_EQ(name(find("last")), selector("[nowhere=\"1\"]"));
}

TEST_F(QualifiedNames, GeneratedOccurrenceStandsUnlessTheCountPutsItAside)
{
    load(EqualButtons);
    nameItems(selector("[n=\"1\"]:nth(9)"));
    EXPECT_EQ(name(find("a")), selector("[n=\"1\"]:nth(9)"));
    EXPECT_EQ(name(find("b")), selector("[n=\"1\"]:nth(2)"));
}

TEST_F(QualifiedNames, EmptyNameStaysEmpty)
{
    load(EqualButtons);
    nameItemsBy([](QObject *) { return ObjectName(); });
    EXPECT_EQ(name(find("a")), QString());
}

TEST_F(QualifiedNames, NameWithoutContainerIsTheHostsOwn)
{
    load(EqualButtons);
    nameItems(QStringLiteral("Button"));
    EXPECT_EQ(name(find("b")), QStringLiteral("real name"));
}

TEST_F(QualifiedNames, NameWhoseContainerIsGoneIsTheHostsOwn)
{
    load(EqualButtons);
    nameItems(QStringLiteral("Window[title=\"Über\"] Button"));
    EXPECT_EQ(name(find("b")), QStringLiteral("real name"));
    expectedWarnings = {
        "qualifiedItemName: failed to find container for generated name (Window[title=\"Über\"])."};
}

TEST_F(QualifiedNames, ContainerKeepsItsModifier)
{
    load(EqualButtons);
    nameItemsBy([](QObject *) {
        ObjectName name(QStringLiteral("[n=\"1\"]"));
        name.setProperty(QStringLiteral("container"), PropertyValue(QStringLiteral("WindowQmlImpl[title=\"Main\"]"),
                                                                    PropertyValue::BeginsWith, PropertyValue::Text));
        return name;
    });
    const ObjectName result(name(find("b")));
    EXPECT_EQ(result.property(QStringLiteral("container")).modifiers(), PropertyValue::BeginsWith);
    EXPECT_EQ(result.occurrenceValue(), 2);
}

TEST_F(QualifiedNames, ObjectThatIsNoItemIsNotReached)
{
    load(EqualButtons);
    auto source = std::make_unique<VantleTest::ScriptedNames>(
        [](QObject *) { return ObjectName(selector("[n=\"2\"]")); });
    Application::self()->nameGenerator()->registerSource(classForMetaObject(&QObject::staticMetaObject),
                                                         std::move(source));
    QObject object;
    EXPECT_EQ(name(&object), selector("[n=\"2\"]"));
    expectedWarnings = {notFoundMyself(selector("[n=\"2\"]"))};
}

TEST_F(QualifiedNames, DeadItemHasNoName)
{
    load(EqualButtons);
    const SharedPtr<Object> dead = wrap(find("a"));
    destroyRoot();
    EXPECT_EQ(qualifiedQuickItemName(dead), QString());
}

TEST_F(QualifiedNames, AliasStandsInPlaceOfTheName)
{
    load(EqualButtons);
    QString error;
    Application::self()->setNames(
        NamesFile::parse(R"json({"second": "WindowQmlImpl[title=\"Main\"] [n=\"1\"]:nth(2)"})json", &error));
    ASSERT_EQ(error, QString());
    nameItems(selector("[n=\"1\"]"));
    EXPECT_EQ(name(find("b")), QStringLiteral("@second"));
    EXPECT_EQ(name(find("a")), selector("[n=\"1\"]"));
    EXPECT_EQ(objectNamed(QStringLiteral("@second")), find("b"));
}

TEST_F(QualifiedNames, UnverifiedNamesComeWithoutOccurrence)
{
    load("import QtQuick\nWindow { id: main; Text { text: 'x' } Text { text: 'x' } }");
    QQuickItem *const second = roots().at(1);
    const QString verified = scriptName(second);
    {
        const UnverifiedNames scope;
        EXPECT_EQ(ObjectName(scriptName(second)).occurrenceValue(), 1);
    }
    EXPECT_EQ(ObjectName(verified).occurrenceValue(), 2);
    EXPECT_EQ(scriptName(second), verified);
}

TEST_F(QualifiedNames, NameIsNeverStale)
{
    load("import QtQuick\nWindow { id: main; Text { text: 'x' } Text { objectName: 'it'; text: 'x' } }");
    nameItems(QStringLiteral("WindowQmlImpl#main Text[text=\"x\"]"));
    QQuickItem *const item = find("it");
    EXPECT_EQ(ObjectName(name(item)).occurrenceValue(), 2);
    roots().at(0)->setProperty("text", QStringLiteral("y"));
    EXPECT_EQ(ObjectName(name(item)).occurrenceValue(), 1);
    item->stackBefore(roots().at(0));
    roots().at(1)->setProperty("text", QStringLiteral("x"));
    EXPECT_EQ(ObjectName(name(item)).occurrenceValue(), 1);
}

TEST_F(QualifiedNames, AreRememberedForTheRunThatTheyAreMadeIn)
{
    load(EqualButtons);
    nameItems(selector("[n=\"1\"]"));
    const ObjectName second(selector("[n=\"1\"]:nth(2)"));
    {
        const ObjectNameCacheHolder run;
        EXPECT_TRUE(run.cache().objectFor(second).isNull());
        EXPECT_EQ(name(find("b")), second.qualifiedName());
        EXPECT_EQ(nativeQObject(run.cache().objectFor(second)), find("b"));
        EXPECT_TRUE(run.cache().objectFor(ObjectName(selector("[n=\"1\"]"))).isNull());
    }
    const ObjectNameCacheHolder next;
    EXPECT_TRUE(next.cache().objectFor(second).isNull());
}

TEST_F(QualifiedNames, AreRememberedByTheirAliasOnly)
{
    load(EqualButtons);
    QString error;
    Application::self()->setNames(
        NamesFile::parse(R"json({"second": "WindowQmlImpl[title=\"Main\"] [n=\"1\"]:nth(2)"})json", &error));
    ASSERT_EQ(error, QString());
    nameItems(selector("[n=\"1\"]"));
    const ObjectNameCacheHolder run;
    EXPECT_EQ(name(find("b")), QStringLiteral("@second"));
    EXPECT_EQ(nativeQObject(run.cache().objectFor(ObjectName(QStringLiteral("@second")))), find("b"));
    EXPECT_TRUE(run.cache().objectFor(ObjectName(selector("[n=\"1\"]:nth(2)"))).isNull());
}

TEST_F(QualifiedNames, OfTheHostsOwnAreNotRemembered)
{
    load(EqualButtons);
    const QString gone = QStringLiteral("Window[title=\"gone\"] Button");
    const ObjectNameCacheHolder run;
    for (const QString &generated : {QStringLiteral("Button"), gone}) {
        nameItemsBy([generated](QObject *) { return ObjectName(generated); }, QStringLiteral("Button#own"));
        EXPECT_EQ(name(find("b")), QStringLiteral("Button#own"));
        EXPECT_TRUE(run.cache().objectFor(ObjectName(generated)).isNull());
        EXPECT_TRUE(run.cache().objectFor(ObjectName(QStringLiteral("Button#own"))).isNull());
    }
    expectedWarnings = {"qualifiedItemName: failed to find container for generated name (Window[title=\"gone\"])."};
}

TEST_F(QualifiedNames, ChildItemsOfAContainerComeInOrderAndWithoutOthers)
{
    load("import QtQuick\nWindow { Item { objectName: 'a' } Window {} QtObject {} Item { objectName: 'b' } }");
    EXPECT_THAT(containerChildItems(wrap(window())), testing::ElementsAre(find("a"), find("b")));
    EXPECT_THAT(containerChildItems(wrap(find("a"))), testing::IsEmpty());
    EXPECT_THAT(containerChildItems(wrap(nullptr)), testing::IsEmpty());
}

TEST_F(QualifiedNames, CountEndsAtTheTarget)
{
    load(EqualButtons);
    const ObjectName::Properties properties = ObjectName(QStringLiteral("[n=\"1\"]")).properties();
    quint32 count = 0;
    EXPECT_TRUE(countOccurrences(find("b"), roots(), properties, true, count));
    EXPECT_EQ(count, 2U);
    count = 0;
    EXPECT_FALSE(countOccurrences(nullptr, roots(), properties, true, count));
    EXPECT_EQ(count, 4U);
    count = 5;
    EXPECT_FALSE(countOccurrences(find("b"), {}, properties, true, count));
    EXPECT_EQ(count, 5U);
}
