#include "wrappers/qt/extensions/qtquickcommon/recording/qtstatementrecorder.h"

#include "hook/class.h"
#include "hook/method.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/bynamefunctions.h"
#include "wrappers/qt/namesfile.h"
#include "wrappers/qt/wrapping.h"

#include <gtest/gtest.h>

#include <QtCore/QDateTime>
#include <QtCore/QVariant>

#include <set>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

constexpr int QtControl = 0x04000000;
constexpr int QtShiftAlt = 0x0a000000;

QVariant valueOf(const SharedPtr<Object> &argument)
{
    void *value = nullptr;
    if (!argument->get(&value))
        return {};
    if (argument->className() == QLatin1String("int"))
        return *static_cast<int *>(value);
    if (argument->className() == QLatin1String("QString"))
        return *static_cast<QString *>(value);
    return {};
}

class StatementRecording : public testing::Test
{
protected:
    StatementRecording() { recorder.setClassesWithoutCoordinates({"Button", "Label"}); }

    /// Fails the test unless there is just the one statement, which this takes.
    void expectStatement(const Method *method, const QVariantList &arguments)
    {
        ASSERT_EQ(recorder.statements.size(), 1u);
        const EventData statement = recorder.statements.front();
        recorder.statements.clear();
        EXPECT_EQ(statement.method(), method) << qPrintable(statement.method()->name());
        EXPECT_EQ(statement.objectName(), QStringLiteral("Window Thing"));
        QVariantList actual;
        for (const SharedPtr<Object> &argument : statement.arguments())
            actual.append(valueOf(argument));
        EXPECT_EQ(actual, arguments) << qPrintable(statement.method()->name());
    }

    void click(const Class *type, MouseButton::Value button, Modifier::Value modifiers, bool longClick = false)
    {
        recorder.mouseClick(object, name, type, 3, -4, button, modifiers, time, longClick);
    }
    void doubleClick(const Class *type, MouseButton::Value button, Modifier::Value modifiers)
    {
        recorder.doubleClick(object, name, type, 3, -4, button, modifiers, time);
    }
    void tap(const Class *type, Modifier::Value modifiers)
    {
        recorder.tapObject(object, name, type, 3, -4, modifiers, time);
    }
    void doubleTap(const Class *type, Modifier::Value modifiers)
    {
        recorder.doubleTap(object, name, type, 3, -4, modifiers, time);
    }

    const Class baseClass{QStringLiteral("Base")};
    const Class plainClass{QStringLiteral("Plain"), &baseClass};
    const Class buttonClass{QStringLiteral("Button"), &baseClass};

    Application application;
    QtStatementRecorder recorder;
    QObject thing;
    const SharedPtr<Object> object = wrapAndRegisterQObject(&thing);
    const QByteArray name = "Window Thing";
    const quint64 time = 1000;
};

} // namespace

TEST_F(StatementRecording, AllOverloadsAreTellableApart)
{
    const std::set<const Method *> methods{
        typeByNameFn(),
        mouseWheelByNameFn(),
        flickODByNameFn(),
        closeWindowByNameFn(),
        moveWindowByNameFn(),
        setWindowSizeByNameFn(),
        setWindowStateByNameFn(),
        gestureOGByNameFn(),
        mouseDragByNameFn(),
        longMouseDragByNameFn(),
        mouseClickOByNameFn(),
        mouseClickOBMByNameFn(),
        mouseClickOCBByNameFn(),
        mouseClickOCBMByNameFn(),
        longMouseClickOByNameFn(),
        longMouseClickOBMByNameFn(),
        longMouseClickOCBByNameFn(),
        longMouseClickOCBMByNameFn(),
        doubleClickOByNameFn(),
        doubleClickOBMByNameFn(),
        doubleClickOCBByNameFn(),
        doubleClickOCBMByNameFn(),
        tapObjectOByNameFn(),
        tapObjectOMByNameFn(),
        tapObjectOCByNameFn(),
        tapObjectOCMByNameFn(),
        doubleTapOByNameFn(),
        doubleTapOMByNameFn(),
        doubleTapOCByNameFn(),
        doubleTapOCMByNameFn(),
        touchAndDragOCDByNameFn(),
        touchAndDragOCDMByNameFn(),
        touchAndDragOCDMDByNameFn(),
    };
    EXPECT_EQ(methods.size(), 33u);
    EXPECT_EQ(methods.count(nullptr), 0u);
}

TEST_F(StatementRecording, TypedTextIsWrittenAsItStands)
{
    recorder.type(object, name, "<Ctrl+A>\xc3\xa4\"\\", time);
    expectStatement(typeByNameFn(), {QStringLiteral("<Ctrl+A>\u00e4\"\\")});
    recorder.type(object, name, "", time);
    expectStatement(typeByNameFn(), {QString()});
}

TEST_F(StatementRecording, WheelHasCoordinatesDeltasAndModifiers)
{
    recorder.mouseWheel(object, name, 3, -4, 0, 15, Modifier::Control, time);
    expectStatement(mouseWheelByNameFn(), {3, -4, 0, 15, QtControl});
}

TEST_F(StatementRecording, FlickHasItsDistance)
{
    recorder.flick(object, name, -7, 100, time);
    expectStatement(flickODByNameFn(), {-7, 100});
}

TEST_F(StatementRecording, WindowStatementsHaveWhatChanged)
{
    recorder.closeWindow(object, name, time);
    expectStatement(closeWindowByNameFn(), {});
    recorder.moveWindow(object, name, -5, 6, time);
    expectStatement(moveWindowByNameFn(), {-5, 6});
    recorder.setWindowSize(object, name, 640, 480, time);
    expectStatement(setWindowSizeByNameFn(), {640, 480});
    recorder.setWindowState(object, name, 4, time);
    expectStatement(setWindowStateByNameFn(), {4});
}

TEST_F(StatementRecording, GestureIsWrittenAsXmlWithoutModifiers)
{
    TouchBuilder::MultiTouchInfo info(200, 100, TouchBuilder::Pixels);
    info.steps.push_back({20, {{1, 2.5f, 3, 1, -1, 0}}});
    recorder.gesture(object, name, info, Modifier::Control, time);
    expectStatement(gestureOGByNameFn(), {QString::fromUtf8(info.toXml("  ", 1))});
}

TEST_F(StatementRecording, DragWritesEverythingAlways)
{
    recorder.mouseDrag(object, name, 1, 2, 30, -40, MouseButton::RightButton, Modifier::None, time, false);
    expectStatement(mouseDragByNameFn(), {1, 2, 30, -40, 0, 2});
    recorder.mouseDrag(object, name, 1, 2, 30, -40, MouseButton::MiddleButton, Modifier::Shift | Modifier::Alt, time,
                       true);
    expectStatement(longMouseDragByNameFn(), {1, 2, 30, -40, QtShiftAlt, 4});
}

TEST_F(StatementRecording, ClickWithCoordinatesAlwaysWritesTheButton)
{
    click(&plainClass, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOCBByNameFn(), {3, -4, 1});
    click(&plainClass, MouseButton::RightButton, Modifier::None);
    expectStatement(mouseClickOCBByNameFn(), {3, -4, 2});
    click(&plainClass, MouseButton::MiddleButton, Modifier::Control);
    expectStatement(mouseClickOCBMByNameFn(), {3, -4, QtControl, 4});
}

TEST_F(StatementRecording, ClickWithoutCoordinatesWritesButtonAndModifiersUnlessItIsPlain)
{
    click(&buttonClass, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOByNameFn(), {});
    click(&buttonClass, MouseButton::RightButton, Modifier::None);
    expectStatement(mouseClickOBMByNameFn(), {0, 2});
    click(&buttonClass, MouseButton::LeftButton, Modifier::Control);
    expectStatement(mouseClickOBMByNameFn(), {QtControl, 1});
}

TEST_F(StatementRecording, LongClickDiffersInItsMethodAlone)
{
    click(&plainClass, MouseButton::LeftButton, Modifier::None, true);
    expectStatement(longMouseClickOCBByNameFn(), {3, -4, 1});
    click(&plainClass, MouseButton::LeftButton, Modifier::Control, true);
    expectStatement(longMouseClickOCBMByNameFn(), {3, -4, QtControl, 1});
    click(&buttonClass, MouseButton::LeftButton, Modifier::None, true);
    expectStatement(longMouseClickOByNameFn(), {});
    click(&buttonClass, MouseButton::RightButton, Modifier::None, true);
    expectStatement(longMouseClickOBMByNameFn(), {0, 2});
}

TEST_F(StatementRecording, DoubleClickIsWrittenLikeAClick)
{
    doubleClick(&plainClass, MouseButton::LeftButton, Modifier::None);
    expectStatement(doubleClickOCBByNameFn(), {3, -4, 1});
    doubleClick(&plainClass, MouseButton::RightButton, Modifier::Control);
    expectStatement(doubleClickOCBMByNameFn(), {3, -4, QtControl, 2});
    doubleClick(&buttonClass, MouseButton::LeftButton, Modifier::None);
    expectStatement(doubleClickOByNameFn(), {});
    doubleClick(&buttonClass, MouseButton::RightButton, Modifier::None);
    expectStatement(doubleClickOBMByNameFn(), {0, 2});
}

TEST_F(StatementRecording, ButtonsThatQtDoesNotKnowAreWrittenAsNone)
{
    click(&plainClass, MouseButton::XButton1, Modifier::None);
    expectStatement(mouseClickOCBByNameFn(), {3, -4, 0});
    click(&buttonClass, MouseButton::None, Modifier::None);
    expectStatement(mouseClickOBMByNameFn(), {0, 0});
}

TEST_F(StatementRecording, ModifierThatQtDoesNotKnowStillMakesTheClickAModifiedOne)
{
    click(&plainClass, MouseButton::LeftButton, Modifier::Command);
    expectStatement(mouseClickOCBMByNameFn(), {3, -4, 0, 1});
}

TEST_F(StatementRecording, TapLeavesOutWhatItHasNot)
{
    tap(&plainClass, Modifier::None);
    expectStatement(tapObjectOCByNameFn(), {3, -4});
    tap(&plainClass, Modifier::Control);
    expectStatement(tapObjectOCMByNameFn(), {3, -4, QtControl});
    tap(&buttonClass, Modifier::None);
    expectStatement(tapObjectOByNameFn(), {});
    tap(&buttonClass, Modifier::Control);
    expectStatement(tapObjectOMByNameFn(), {QtControl});
}

TEST_F(StatementRecording, DoubleTapIsWrittenLikeATap)
{
    doubleTap(&plainClass, Modifier::None);
    expectStatement(doubleTapOCByNameFn(), {3, -4});
    doubleTap(&plainClass, Modifier::Control);
    expectStatement(doubleTapOCMByNameFn(), {3, -4, QtControl});
    doubleTap(&buttonClass, Modifier::None);
    expectStatement(doubleTapOByNameFn(), {});
    doubleTap(&buttonClass, Modifier::Control);
    expectStatement(doubleTapOMByNameFn(), {QtControl});
}

TEST_F(StatementRecording, TouchDragWritesModifiersAheadOfADelay)
{
    const auto drag = [this](Modifier::Value modifiers, int delay) {
        recorder.touchAndDrag(object, name, 1, 2, 30, 40, modifiers, delay, time);
    };
    drag(Modifier::None, 0);
    expectStatement(touchAndDragOCDByNameFn(), {1, 2, 30, 40});
    drag(Modifier::Control, 0);
    expectStatement(touchAndDragOCDMByNameFn(), {1, 2, 30, 40, QtControl});
    drag(Modifier::None, 900);
    expectStatement(touchAndDragOCDMDByNameFn(), {1, 2, 30, 40, 0, 900});
    drag(Modifier::Control, 900);
    expectStatement(touchAndDragOCDMDByNameFn(), {1, 2, 30, 40, QtControl, 900});
    drag(Modifier::None, -1);
    expectStatement(touchAndDragOCDMDByNameFn(), {1, 2, 30, 40, 0, -1});
}

TEST_F(StatementRecording, DerivedClassesCountAsListed)
{
    const Class derived(QStringLiteral("Derived"), &buttonClass);
    const Class deeper(QStringLiteral("Deeper"), &derived);
    click(&deeper, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOByNameFn(), {});
}

TEST_F(StatementRecording, ClassesBelowAListedQmlTypeCountByItsCleanedName)
{
    recorder.setClassesWithoutCoordinates({"Switch"});
    const Class base(QStringLiteral("Switch_QMLTYPE_5"), &baseClass);
    const Class derived(QStringLiteral("LightSwitch_QMLTYPE_9"), &base);
    click(&derived, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOByNameFn(), {});
}

TEST_F(StatementRecording, TheBaseOfAListedClassDoesNotCount)
{
    click(&baseClass, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOCBByNameFn(), {3, -4, 1});
}

TEST_F(StatementRecording, QmlTypesCountByTheirRawAndTheirCleanedName)
{
    const Class cleaned(QStringLiteral("Button_QMLTYPE_12_QML_3"), &baseClass);
    click(&cleaned, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOByNameFn(), {});

    recorder.setClassesWithoutCoordinates({"Button_QMLTYPE_12"});
    const Class raw(QStringLiteral("Button_QMLTYPE_12"), &baseClass);
    click(&raw, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOByNameFn(), {});
    click(&buttonClass, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOCBByNameFn(), {3, -4, 1});
}

TEST_F(StatementRecording, EveryListedNameIsTriedAndComparedWhole)
{
    const Class label(QStringLiteral("Label"));
    const Class labels(QStringLiteral("Labels"));
    const Class lower(QStringLiteral("label"));
    click(&label, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOByNameFn(), {});
    click(&labels, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOCBByNameFn(), {3, -4, 1});
    click(&lower, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOCBByNameFn(), {3, -4, 1});
}

TEST_F(StatementRecording, ListedNamesEndAtAZeroByte)
{
    recorder.setClassesWithoutCoordinates({QByteArray("Button\0rest", 11)});
    click(&buttonClass, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOByNameFn(), {});
}

TEST_F(StatementRecording, NoClassAndNoListMeanCoordinates)
{
    click(nullptr, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOCBByNameFn(), {3, -4, 1});
    recorder.setClassesWithoutCoordinates({});
    click(&buttonClass, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOCBByNameFn(), {3, -4, 1});
}

TEST_F(StatementRecording, ANewListReplacesTheOld)
{
    recorder.setClassesWithoutCoordinates({"Plain"});
    click(&plainClass, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOByNameFn(), {});
    click(&buttonClass, MouseButton::LeftButton, Modifier::None);
    expectStatement(mouseClickOCBByNameFn(), {3, -4, 1});
}

TEST_F(StatementRecording, DragsIgnoreTheList)
{
    const SharedPtr<Object> none;
    recorder.mouseDrag(none, name, 1, 2, 3, 4, MouseButton::LeftButton, Modifier::None, time, false);
    expectStatement(mouseDragByNameFn(), {1, 2, 3, 4, 0, 1});
}

TEST_F(StatementRecording, NameWithoutAReplacementStaysAsItCame)
{
    recorder.closeWindow(object, "W\xc3\xa4hle \xe4\xbd\xa0", time);
    EXPECT_EQ(recorder.statements.front().objectName(), QStringLiteral("W\u00e4hle \u4f60"));
}

TEST_F(StatementRecording, NameWithAReplacementIsWrittenByIt)
{
    QString error;
    application.setNames(NamesFile::parse(R"({"thing": "Window Thing"})", &error));
    ASSERT_EQ(error, QString());
    recorder.closeWindow(object, name, time);
    recorder.closeWindow(object, "Window Other", time);
    EXPECT_EQ(recorder.statements.front().objectName(), QStringLiteral("@thing"));
    EXPECT_EQ(recorder.statements.back().objectName(), QStringLiteral("Window Other"));
}

TEST_F(StatementRecording, StatementsAreAppendedInOrder)
{
    recorder.closeWindow(object, "first", time);
    recorder.flick(object, "second", 1, 2, time);
    ASSERT_EQ(recorder.statements.size(), 2u);
    EXPECT_EQ(recorder.statements.front().objectName(), QStringLiteral("first"));
    EXPECT_EQ(recorder.statements.back().objectName(), QStringLiteral("second"));
}

TEST_F(StatementRecording, TimeIsTheLocalTimeOfDay)
{
    const QDateTime beforeMidnight(QDate(2024, 3, 9), QTime(23, 59, 59, 999));
    const auto timestamp = static_cast<quint64>(beforeMidnight.toMSecsSinceEpoch());
    recorder.closeWindow(object, name, timestamp);
    recorder.closeWindow(object, name, timestamp + 1);
    EXPECT_EQ(recorder.statements.front().time, QTime(23, 59, 59, 999));
    EXPECT_EQ(recorder.statements.back().time, QTime(0, 0));
    EXPECT_LT(recorder.statements.back().time, recorder.statements.front().time);
}

TEST_F(StatementRecording, TheObjectIsNotKept)
{
    const int references = object->referenceCount();
    click(&plainClass, MouseButton::LeftButton, Modifier::None);
    EXPECT_EQ(object->referenceCount(), references);
}

TEST_F(StatementRecording, NullAndDeadObjectsAreWrittenByTheNameThatCame)
{
    recorder.closeWindow(nullptr, name, time);
    expectStatement(closeWindowByNameFn(), {});

    auto *mortal = new QObject;
    const SharedPtr<Object> dead = wrapAndRegisterQObject(mortal);
    delete mortal;
    recorder.closeWindow(dead, name, time);
    expectStatement(closeWindowByNameFn(), {});
}
