#include "wrappers/qt/bynamefunctions.h"

#include "hook/inspector.h"
#include "wrappers/qt/application.h"

#include <gtest/gtest.h>

#include <QtCore/QSet>
#include <QtCore/QStringList>

#include <ostream>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

struct Overload
{
    const Method *(*accessor)();
    const char *name;
    /// What stands behind the object's name, as "name:type".
    const char *arguments;
};

void PrintTo(const Overload &overload, std::ostream *stream)
{
    *stream << overload.name << '(' << overload.arguments << ')';
}

const Overload overloads[] = {
    {typeByNameFn, "type", "text:QString"},
    {typeTextByNameFn, "typeText", "text:QString"},
    {keyPressByNameFn, "keyPress", "key:QString"},
    {keyReleaseByNameFn, "keyRelease", "key:QString"},
    {mouseWheelByNameFn, "mouseWheel", "x:int y:int deltaX:int deltaY:int modifiers:Qt::KeyboardModifiers"},
    {mouseWheelToByNameFn, "mouseWheel",
     "x:int y:int deltaX:int deltaY:int modifiers:Qt::KeyboardModifiers contentX:int contentY:int"},
    {scrollToOByNameFn, "scrollTo", ""},
    {scrollToOIByNameFn, "scrollTo", "index:int"},
    {scrollToORCByNameFn, "scrollTo", "row:int column:int"},
    {scrollToOTByNameFn, "scrollTo", "text:QString"},
    {flickODByNameFn, "flick", "dx:int dy:int"},
    {closeWindowByNameFn, "closeWindow", ""},
    {moveWindowByNameFn, "moveWindow", "dx:int dy:int"},
    {setWindowSizeByNameFn, "setWindowSize", "width:int height:int"},
    {setWindowStateByNameFn, "setWindowState", "state:WindowState"},
    {gestureOGByNameFn, "gesture", "gesture:QString"},

    {mouseDragByNameFn, "mouseDrag",
     "x:int y:int dx:int dy:int modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},
    {longMouseDragByNameFn, "longMouseDrag",
     "x:int y:int dx:int dy:int modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},

    {dragAndDropOTByNameFn, "dragAndDrop", "targetName:QString"},
    {dragAndDropOCTCByNameFn, "dragAndDrop", "x:int y:int targetName:QString targetX:int targetY:int"},

    {mouseClickOByNameFn, "mouseClick", ""},
    {mouseClickOBMByNameFn, "mouseClick", "modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},
    {mouseClickOCBByNameFn, "mouseClick", "x:int y:int button:Qt::MouseButton"},
    {mouseClickOCBMByNameFn, "mouseClick", "x:int y:int modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},

    {longMouseClickOByNameFn, "longMouseClick", ""},
    {longMouseClickOBMByNameFn, "longMouseClick", "modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},
    {longMouseClickOCBByNameFn, "longMouseClick", "x:int y:int button:Qt::MouseButton"},
    {longMouseClickOCBMByNameFn, "longMouseClick",
     "x:int y:int modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},
    {longMouseClickOHByNameFn, "longMouseClick", "hold:int"},
    {longMouseClickOCBMHByNameFn, "longMouseClick",
     "x:int y:int modifiers:Qt::KeyboardModifiers button:Qt::MouseButton hold:int"},

    {mouseMoveOByNameFn, "mouseMove", ""},
    {mouseMoveByNameFn, "mouseMove", "x:int y:int"},

    {mousePressOByNameFn, "mousePress", ""},
    {mousePressOBMByNameFn, "mousePress", "modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},
    {mousePressOCBByNameFn, "mousePress", "x:int y:int button:Qt::MouseButton"},
    {mousePressOCBMByNameFn, "mousePress", "x:int y:int modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},

    {mouseReleaseOByNameFn, "mouseRelease", ""},
    {mouseReleaseOBMByNameFn, "mouseRelease", "modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},
    {mouseReleaseOCBByNameFn, "mouseRelease", "x:int y:int button:Qt::MouseButton"},
    {mouseReleaseOCBMByNameFn, "mouseRelease", "x:int y:int modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},

    {doubleClickOByNameFn, "doubleClick", ""},
    {doubleClickOBMByNameFn, "doubleClick", "modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},
    {doubleClickOCBByNameFn, "doubleClick", "x:int y:int button:Qt::MouseButton"},
    {doubleClickOCBMByNameFn, "doubleClick", "x:int y:int modifiers:Qt::KeyboardModifiers button:Qt::MouseButton"},

    {tapObjectOByNameFn, "tapObject", ""},
    {tapObjectOMByNameFn, "tapObject", "modifiers:Qt::KeyboardModifiers"},
    {tapObjectOCByNameFn, "tapObject", "x:int y:int"},
    {tapObjectOCMByNameFn, "tapObject", "x:int y:int modifiers:Qt::KeyboardModifiers"},

    {doubleTapOByNameFn, "doubleTap", ""},
    {doubleTapOMByNameFn, "doubleTap", "modifiers:Qt::KeyboardModifiers"},
    {doubleTapOCByNameFn, "doubleTap", "x:int y:int"},
    {doubleTapOCMByNameFn, "doubleTap", "x:int y:int modifiers:Qt::KeyboardModifiers"},

    {touchAndDragOCDByNameFn, "touchAndDrag", "x:int y:int dx:int dy:int"},
    {touchAndDragOCDMByNameFn, "touchAndDrag", "x:int y:int dx:int dy:int modifiers:Qt::KeyboardModifiers"},
    {touchAndDragOCDMDByNameFn, "touchAndDrag", "x:int y:int dx:int dy:int modifiers:Qt::KeyboardModifiers delay:int"},
};

class ByNameFunction : public testing::TestWithParam<Overload>
{
};

} // namespace

TEST_P(ByNameFunction, HasItsNameAndArguments)
{
    const Method *const method = GetParam().accessor();
    ASSERT_NE(method, nullptr);
    EXPECT_EQ(method->name(), QString::fromLatin1(GetParam().name));

    QStringList expected{QStringLiteral("objectName:QString")};
    expected += QString::fromLatin1(GetParam().arguments).split(u' ', Qt::SkipEmptyParts);
    QStringList actual;
    const QList<Argument> arguments = method->signature().arguments();
    for (const Argument &argument : arguments) {
        ASSERT_NE(argument.type(), nullptr);
        EXPECT_EQ(argument.type(), Inspector::self()->classByName(argument.type()->className()));
        EXPECT_EQ(argument.passing(), static_cast<unsigned>(Argument::ByValue));
        EXPECT_EQ(argument.flags(), 0);
        actual.append(argument.name() + u':' + argument.type()->className());
    }
    EXPECT_EQ(actual.join(u' ').toStdString(), expected.join(u' ').toStdString());
}

TEST_P(ByNameFunction, GivesNoResult)
{
    EXPECT_EQ(GetParam().accessor()->result().type(), Inspector::self()->voidResult()->objectClass());
}

TEST_P(ByNameFunction, IsTheSameAtEveryCall)
{
    EXPECT_EQ(GetParam().accessor(), GetParam().accessor());
}

TEST_P(ByNameFunction, IsRegisteredExactlyOnce)
{
    const Method *const method = GetParam().accessor();
    registerByNameFunctions();
    registerByNameFunctions();
    {
        const Application application;
    }
    const Application another;
    EXPECT_EQ(Inspector::self()->globalClass()->methods().count(static_cast<const GlobalMethod *>(method)), 1);
}

INSTANTIATE_TEST_SUITE_P(All, ByNameFunction, testing::ValuesIn(overloads));

TEST(ByNameFunctions, AreAllDifferent)
{
    QSet<const Method *> methods;
    for (const Overload &overload : overloads)
        methods.insert(overload.accessor());
    EXPECT_EQ(methods.size(), static_cast<qsizetype>(std::size(overloads)));
}

TEST(ByNameFunctions, AreRegisteredWithTheApplication)
{
    const Application application;
    qsizetype byName = 0;
    for (const GlobalMethod *method : Inspector::self()->globalClass()->methods()) {
        const QList<Argument> arguments = method->signature().arguments();
        if (!arguments.isEmpty() && arguments.first().name() == QStringLiteral("objectName"))
            ++byName;
    }
    EXPECT_EQ(byName, static_cast<qsizetype>(std::size(overloads)));
}
