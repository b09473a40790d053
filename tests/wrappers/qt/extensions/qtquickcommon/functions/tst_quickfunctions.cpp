#include "wrappers/qt/extensions/qtquickcommon/functions/quickfunctions.h"

#include "hook/inspector.h"
#include "silentlogger.h"
#include "support/waiting.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"
#include "wrappers/qt/extensions/qtquickcommon/functions/flickplayback.h"
#include "wrappers/qt/extensions/qtquickcommon/functions/screenshots.h"
#include "wrappers/qt/wrapping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtGui/QPixmap>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickflickable_p.h>

#include <string>
#include <vector>

using namespace Vantle;
using namespace Vantle::QtWrapper;
using testing::ElementsAre;

namespace {

using Methods = std::vector<const GlobalMethod *>;

class QuickFunctions : public testing::Test
{
protected:
    QuickFunctions()
    {
        setupQtQuick();
        Inspector::self()->takeError();
    }

    static const Class *type(const char *name) { return Inspector::self()->classByName(QString::fromLatin1(name)); }

    static Methods functions(const char *name, GlobalFunction function)
    {
        Methods found;
        for (const GlobalMethod *method : Inspector::self()->globalClass()->methods()) {
            if (method->name() == QLatin1String(name) && method->function() == function)
                found.push_back(method);
        }
        return found;
    }

    static QString resultClass(const SharedPtr<Object> &result)
    {
        return result ? result->className() : QStringLiteral("nothing");
    }

    SharedPtr<Object> call(const char *name, const ObjectList &arguments)
    {
        const SharedPtr<Object> result = inspector->callGlobalMethod(QString::fromLatin1(name), arguments);
        error = inspector->takeError();
        return result;
    }

    void show()
    {
        window.resize(100, 100);
        window.show();
        ASSERT_TRUE(VantleTest::waitUntil([this] { return window.isExposed(); }));
    }

    VantleTest::SilentLogger logger;
    Application application;
    Inspector *inspector = Inspector::self();
    QQuickWindow window;
    QString error;
};

void expectObject(const Argument &argument, const char *name, const char *type)
{
    EXPECT_EQ(argument.name(), QString::fromLatin1(name));
    EXPECT_EQ(argument.type(), Inspector::self()->classByName(QString::fromLatin1(type)));
    EXPECT_EQ(argument.passing(), 2U);
    EXPECT_EQ(argument.flags(), 0);
}

} // namespace

TEST_F(QuickFunctions, HoldTwoOverloadsOfGrabWidgetToldApartBySignature)
{
    qsizetype count = 0;
    for (const GlobalMethod *method : inspector->globalClass()->methods())
        count += method->name() == QLatin1String("grabWidget");
    EXPECT_EQ(count, 2);

    const Methods ofItem = functions("grabWidget", grabItemFunction);
    const Methods ofWindow = functions("grabWidget", grabWindowFunction);
    ASSERT_EQ(ofItem.size(), 1U);
    ASSERT_EQ(ofWindow.size(), 1U);
    ASSERT_EQ(ofItem.front()->signature().arguments().size(), 1);
    ASSERT_EQ(ofWindow.front()->signature().arguments().size(), 1);
    expectObject(ofItem.front()->signature().arguments().first(), "object", "QQuickItem");
    expectObject(ofWindow.front()->signature().arguments().first(), "window", "QQuickWindow");
    for (const GlobalMethod *method : {ofItem.front(), ofWindow.front()}) {
        EXPECT_EQ(method->result().name(), QString());
        EXPECT_EQ(method->result().type(), type("QPixmap"));
        EXPECT_EQ(method->result().passing(), 0U);
        EXPECT_EQ(method->result().flags(), 0);
    }
}

TEST_F(QuickFunctions, HoldFlickForItems)
{
    const Methods flicks = functions("flick", flickFunction);
    ASSERT_EQ(flicks.size(), 1U);
    const QList<Argument> arguments = flicks.front()->signature().arguments();
    ASSERT_EQ(arguments.size(), 3);
    expectObject(arguments.first(), "object", "QQuickItem");
    EXPECT_EQ(arguments.at(1).type(), type("int"));
    EXPECT_EQ(arguments.at(2).type(), type("int"));
}

TEST_F(QuickFunctions, StandInTheOrderOfTheirRegistration)
{
    std::vector<std::string> order;
    for (const GlobalMethod *method : inspector->globalClass()->methods()) {
        const QList<Argument> &arguments = method->signature().arguments();
        if (arguments.isEmpty() || arguments.first().passing() != Argument::ByPointer)
            continue;
        std::string text = method->name().toStdString() + ' ' + arguments.first().type()->className().toStdString();
        if (method->name() == QLatin1String("dragAndDrop")) {
            for (const Argument &argument : arguments.mid(1)) {
                if (argument.passing() == Argument::ByPointer)
                    text += " to " + argument.type()->className().toStdString();
            }
        } else if (arguments.first().type() == type("QWindow")) {
            continue; // the host's own
        } else if (method->name() != QLatin1String("flick") && method->name() != QLatin1String("grabWidget")) {
            text = "interaction " + arguments.first().type()->className().toStdString();
        }
        if (order.empty() || order.back() != text)
            order.push_back(text);
    }
    EXPECT_THAT(order,
                ElementsAre("interaction QQuickItem", "dragAndDrop QQuickItem to QQuickItem",
                            "dragAndDrop QWindow to QQuickItem", "flick QQuickItem", "grabWidget QQuickItem",
                            "grabWidget QQuickWindow"));
}

TEST_F(QuickFunctions, AreRegisteredOnceHoweverOftenTheHostStartsAgain)
{
    const qsizetype before = inspector->globalClass()->methods().size();
    setupQtQuick();
    EXPECT_EQ(inspector->globalClass()->methods().size(), before);
}

TEST_F(QuickFunctions, GrabWidgetIsCalledByTheKindOfObject)
{
    show();
    QQuickItem item(window.contentItem());
    item.setSize(QSizeF(10, 10));
    EXPECT_EQ(resultClass(call("grabWidget", {wrapAndRegisterQObject(&item)})), QStringLiteral("QPixmap"));
    EXPECT_EQ(resultClass(call("grabWidget", {wrapAndRegisterQObject(&window)})), QStringLiteral("QPixmap"));
    EXPECT_EQ(error, QString());

    item.setWidth(0);
    EXPECT_TRUE(call("grabWidget", {wrapAndRegisterQObject(&item)}).isNull());
    EXPECT_EQ(error, QStringLiteral("Cannot create screenshot for object with empty bounding box"));
}

TEST_F(QuickFunctions, GrabWidgetOfWhatCannotBeGrabbedIsNothingWithoutAnError)
{
    EXPECT_TRUE(call("grabWidget", {wrapAndRegisterQObject(&window)}).isNull());
    EXPECT_EQ(error, QString());
}

TEST_F(QuickFunctions, GrabWidgetTakesNoPlainWindow)
{
    QWindow plain;
    EXPECT_TRUE(call("grabWidget", {wrapAndRegisterQObject(&plain)}).isNull());
    EXPECT_EQ(error,
              QStringLiteral("No overload fits the call grabWidget(QWindow). There are: "
                             "grabWidget(object: QQuickItem); grabWidget(window: QQuickWindow)"));
}

TEST_F(QuickFunctions, FlickIsCalledWithAnItemAndTwoNumbers)
{
    show();
    QQuickFlickable flickable(window.contentItem());
    flickable.setSize(QSizeF(50, 50));
    const ObjectList arguments{wrapAndRegisterQObject(&flickable), inspector->createInteger(3),
                               inspector->createInteger(-4)};
    EXPECT_EQ(call("flick", arguments), inspector->voidResult()) << error.toStdString();
    EXPECT_EQ(flickable.contentX(), 3);
    EXPECT_EQ(flickable.contentY(), -4);
}

TEST_F(QuickFunctions, InteractionsOfItemsAreCarriedOutOnItemsThatAreReady)
{
    QQuickItem item;
    EXPECT_TRUE(call("mouseClick", {wrapAndRegisterQObject(&item)}).isNull());
    EXPECT_EQ(error, QStringLiteral("Cannot mouseClick on Item:visible: the item is in no window"));
}

// Last, as it leaves its traces behind.
TEST(QuickFunctionsTwice, AreThereTwice)
{
    const Application application;
    setupQtQuick();
    const qsizetype before = Inspector::self()->globalClass()->methods().size();
    setupQuickFunctions();
    const qsizetype added = Inspector::self()->globalClass()->methods().size() - before;
    EXPECT_EQ(added, 48 + 2 + 2 + 1 + 2);
}
