#include "wrappers/qt/objectlookup.h"

#include "wrappers/qt/application.h"
#include "wrappers/qt/objectnamecache.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtGui/QWindow>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

class ObjectLookups : public testing::Test
{
protected:
    QObject *find(const char *name)
    {
        return nativeQObject(application.objectForName(QString::fromUtf8(name), &problem));
    }
    /// Below windows, `Thing` means the window itself.
    void registerThing()
    {
        application.registerFinder(classForMetaObject(&QWindow::staticMetaObject),
                                   [this](QObject *container, const ObjectName &name, QList<QString> &mismatched) {
                                       asked.append(name.qualifiedName());
                                       if (name.property(QStringLiteral("type")).stringValue()
                                           == QLatin1String("Thing"))
                                           return wrapAndRegisterQObject(container);
                                       mismatched = {QStringLiteral("text"), QStringLiteral("type")};
                                       return SharedPtr<Object>();
                                   });
    }
    void setNames(const char *json)
    {
        QString error;
        application.setNames(NamesFile::parse(json, &error));
        ASSERT_EQ(error, QString());
    }

    Application application;
    QString problem;
    QStringList asked;
};

QString text(const char *value)
{
    return QString::fromUtf8(value);
}

} // namespace

TEST_F(ObjectLookups, WindowsAreFoundByTheirProperties)
{
    QWindow letters;
    letters.setTitle(text("Letters"));
    QWindow named;
    named.setObjectName(text("main"));
    EXPECT_EQ(find("QWindow[title=\"Letters\"]"), &letters);
    EXPECT_EQ(find("[objectName=\"main\"]"), &named);
    EXPECT_EQ(find("[unnamed=\"0\"]"), &named);
    EXPECT_EQ(find("[title^=\"Let\"]:hidden"), &letters);
    EXPECT_EQ(find("QWindow#id"), nullptr);
}

TEST_F(ObjectLookups, EqualWindowsAreCountedInOrderOfCreation)
{
    QWindow first;
    QWindow second;
    EXPECT_EQ(find("QWindow"), &first);
    EXPECT_EQ(find("QWindow:nth(2)"), &second);
    EXPECT_EQ(find("QWindow:nth(3)"), nullptr);
}

TEST_F(ObjectLookups, EveryWindowIsFoundByItsName)
{
    QWindow letters;
    letters.setTitle(text("Letters"));
    QWindow untitled;
    QWindow named;
    named.setObjectName(text("main"));
    named.setTitle(text("Letters"));
    QWindow moreLetters;
    moreLetters.setTitle(text("Letters"));
    for (QWindow *window : {&letters, &untitled, &named, &moreLetters}) {
        const QString name = wrapAndRegisterQObject(window)->scriptName();
        EXPECT_EQ(find(name.toUtf8()), window) << qPrintable(name);
    }
}

TEST_F(ObjectLookups, ObjectsBelowAWindowComeFromItsFinder)
{
    registerThing();
    QWindow window;
    EXPECT_EQ(find("QWindow Thing[text=\"x\"]:nth(3)"), &window);
    EXPECT_EQ(asked, QStringList{text("Thing[text=\"x\"]:nth(3)")});
}

TEST_F(ObjectLookups, ContainersAreLookedUpFromTheOutside)
{
    registerThing();
    QWindow window;
    EXPECT_EQ(find("QWindow Thing Thing#inner"), &window);
    EXPECT_EQ(asked, (QStringList{text("Thing"), text("Thing#inner")}));
}

TEST_F(ObjectLookups, WhatIsNoWindowIsLookedForInAllOfThem)
{
    registerThing();
    EXPECT_EQ(find("Thing"), nullptr);
    QWindow first;
    QWindow second;
    EXPECT_EQ(find("Thing"), &first);
    EXPECT_EQ(find("Thing Thing#inner"), &first);
    EXPECT_EQ(find("Other"), nullptr);
    EXPECT_EQ(find("QWindow"), &first);
    asked.clear();
    find("QWindow");
    EXPECT_TRUE(asked.isEmpty()) << "windows come first";
}

TEST_F(ObjectLookups, ANameIsAmbiguousThatFitsSeveralAndSaysNoOccurrence)
{
    QWindow first;
    QWindow second;
    QWindow third;
    third.setTitle(text("x"));
    const Ambiguity several = application.ambiguity(text("QWindow"), 2);
    EXPECT_EQ(several.step, text("QWindow"));
    EXPECT_EQ(several.count, 3);
    ASSERT_EQ(several.objects.size(), 2U);
    EXPECT_EQ(nativeQObject(several.objects.at(0)), &first);
    EXPECT_EQ(nativeQObject(several.objects.at(1)), &second);
    for (const char *name :
         {"QWindow:nth(2)", "QWindow[title=\"x\"]", "QWindow[title=\"y\"]", "QWindow [", "", "@alias"})
        EXPECT_EQ(application.ambiguity(text(name), 2).step, QString()) << name;
    EXPECT_EQ(application.ambiguity(text("QWindow Thing"), 2).step, text("QWindow")) << "ahead of the last step";
}

TEST_F(ObjectLookups, AliasesStandForNames)
{
    registerThing();
    setNames(R"({"main": "QWindow[title=\"x\"]", "thing": "@main Thing"})");
    QWindow window;
    window.setTitle(text("x"));
    EXPECT_EQ(find("@main"), &window);
    EXPECT_EQ(find("@thing"), &window);
    EXPECT_EQ(find("@main Thing"), &window);
    EXPECT_EQ(find("@thing Thing"), &window);
}

TEST_F(ObjectLookups, ProblemsAreToldInWords)
{
    registerThing();
    QWindow window;
    window.setTitle(text("x"));
    EXPECT_EQ(find("@nobody"), nullptr);
    EXPECT_EQ(problem, text("there is no alias @nobody"));
    EXPECT_EQ(find("@nobody Button"), nullptr);
    EXPECT_EQ(problem, text("there is no alias @nobody"));
    EXPECT_EQ(find(" "), nullptr);
    EXPECT_EQ(problem, text("the name is empty"));
    EXPECT_EQ(find("Button:nth(0)"), nullptr);
    EXPECT_TRUE(problem.startsWith(text("Button:nth(0) is no name: column 12: "))) << qPrintable(problem);
    EXPECT_EQ(find("QWindow[title=\"y\"]"), nullptr);
    EXPECT_EQ(problem,
              text("there is no window QWindow[title=\"y\"], and nothing of that name in any window; the closest "
                   "one differs in title"));
    EXPECT_EQ(find("QWindow Button"), nullptr);
    EXPECT_EQ(problem, text("below QWindow there is no Button; the closest one differs in text, type"));
    EXPECT_EQ(find("QWindow Thing"), &window);
    EXPECT_EQ(problem, QString());
}

TEST_F(ObjectLookups, ContainerWithoutFinderHoldsNothing)
{
    QWindow window;
    EXPECT_EQ(find("QWindow Button"), nullptr);
    EXPECT_EQ(problem, text("below QWindow nothing can be found, as it is a QWindow"));
}

TEST_F(ObjectLookups, NamesOfARunNeedNoLookup)
{
    QObject object;
    const ObjectName name(text("Nowhere Button"));
    {
        const ObjectNameCacheHolder outer;
        {
            const ObjectNameCacheHolder inner;
            inner.cache().addEntry(name, wrapAndRegisterQObject(&object));
        }
        EXPECT_EQ(find("Nowhere Button"), &object);
        outer.cache().addEntry(ObjectName(), wrapAndRegisterQObject(&object));
        EXPECT_EQ(find(""), nullptr);
    }
    EXPECT_EQ(find("Nowhere Button"), nullptr) << "nothing is kept beyond the run";
}

TEST_F(ObjectLookups, RunForgetsObjectsThatDie)
{
    const ObjectNameCacheHolder holder;
    {
        QObject object;
        holder.cache().addEntry(ObjectName(text("Nowhere")), wrapAndRegisterQObject(&object));
    }
    EXPECT_EQ(find("Nowhere"), nullptr);
}

TEST_F(ObjectLookups, FurtherTopLevelObjectsComeBehindTheWindows)
{
    QWindow window;
    QWindow child(&window);
    application.registerTopLevelObjects([&] { return ObjectList{wrapAndRegisterQObject(&child)}; });
    EXPECT_EQ(find("QWindow"), &window);
    EXPECT_EQ(find("QWindow:nth(2)"), &child);
    EXPECT_EQ(find("QWindow:nth(3)"), nullptr);
}

TEST_F(ObjectLookups, ClosestWindowsComeInOrderOfTheirDifferences)
{
    QWindow letters;
    letters.setTitle(text("Letters"));
    QWindow lettres;
    lettres.setTitle(text("Lettres"));
    QWindow other;
    other.setTitle(text("Letters"));
    other.setObjectName(text("other"));
    const QList<LookupCandidate> closest = application.closestObjects(text(
                                                                          "QWindow[objectName=\"\"][title=\"Leters\"]"),
                                                                      2);
    ASSERT_EQ(closest.size(), 2);
    EXPECT_EQ(nativeQObject(closest.at(0).object), &letters);
    EXPECT_EQ(nativeQObject(closest.at(1).object), &lettres);
    ASSERT_EQ(closest.at(0).differences.size(), 1);
    const PropertyDifference difference = closest.at(0).differences.first();
    EXPECT_EQ(difference.key, text("title"));
    EXPECT_EQ(difference.expected, text("\"Leters\""));
    EXPECT_EQ(difference.found, text("\"Letters\""));
}

TEST_F(ObjectLookups, DifferencesTellOperatorsAndMissingProperties)
{
    QWindow window;
    window.setTitle(text("a \"b\""));
    const auto expected = [this](const char *name) {
        const QList<LookupCandidate> closest = application.closestObjects(text(name), 1);
        return closest.isEmpty() || closest.first().differences.isEmpty() ? QString()
                                                                          : closest.first().differences.first().expected
                + QLatin1Char('|') + closest.first().differences.first().found;
    };
    EXPECT_EQ(expected("[title*=\"x\"]"), text("*=\"x\"|\"a \\\"b\\\"\""));
    EXPECT_EQ(expected("[title^=\"x\"]"), text("^=\"x\"|\"a \\\"b\\\"\""));
    EXPECT_EQ(expected("[title$=\"x\"]"), text("$=\"x\"|\"a \\\"b\\\"\""));
    EXPECT_EQ(expected("[title=/x/i]"), text("=/x/i|\"a \\\"b\\\"\""));
    EXPECT_EQ(expected("[nonsense=\"x\"]"), text("\"x\"|no such property"));
    EXPECT_EQ(expected("QWidget"), text("\"QWidget\"|\"QWindow\""));
    EXPECT_EQ(expected("QWindow:nth(2)"), text("\"2\"|\"1\""));
}

TEST_F(ObjectLookups, NothingIsCloseToATextThatIsNoName)
{
    QWindow window;
    EXPECT_TRUE(application.closestObjects(text("QWindow ["), 5).isEmpty());
    EXPECT_TRUE(application.closestObjects(QString(), 5).isEmpty());
    EXPECT_TRUE(application.closestObjects(text("@unknown"), 5).isEmpty());
    EXPECT_TRUE(application.closestObjects(text("QWindow"), 0).isEmpty());
}
