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
        application.registerFinder(
            classForMetaObject(&QWindow::staticMetaObject),
            [this](QObject *container, const ObjectName &name, QList<QString> &mismatched) {
                asked.append(name.qualifiedName());
                if (name.property(QStringLiteral("type")).stringValue() == QLatin1String("Thing"))
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
    EXPECT_EQ(problem, text("there is no window QWindow[title=\"y\"]; the closest one differs in title"));
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
