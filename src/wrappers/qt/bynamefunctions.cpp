#include "wrappers/qt/bynamefunctions_p.h"

#include "hook/inspector.h"
#include "wrappers/qt/functions/interactions_p.h"

#include <vector>

namespace Vantle::QtWrapper {

namespace {

const Class *typeNamed(const QString &name)
{
    Inspector *const inspector = Inspector::self();
    if (!inspector->classByName(name))
        inspector->registerClass(new Class(name));
    return inspector->classByName(name);
}

void append(QList<Argument> *arguments, const QString &typeName, std::initializer_list<const char *> names)
{
    for (const char *name : names)
        arguments->append(Argument(QString::fromLatin1(name), typeNamed(typeName), Argument::ByValue, 0));
}

void append(QList<Argument> *arguments, Takes what)
{
    const QString integer = QStringLiteral("int");
    const QString text = QStringLiteral("QString");
    switch (what) {
    case Takes::Coordinates: append(arguments, integer, {"x", "y"}); return;
    case Takes::Distance: append(arguments, integer, {"dx", "dy"}); return;
    case Takes::WheelDeltas: append(arguments, integer, {"deltaX", "deltaY"}); return;
    case Takes::Size: append(arguments, integer, {"width", "height"}); return;
    case Takes::State: append(arguments, QStringLiteral("WindowState"), {"state"}); return;
    case Takes::Modifiers: append(arguments, QStringLiteral("Qt::KeyboardModifiers"), {"modifiers"}); return;
    case Takes::Button: append(arguments, QStringLiteral("Qt::MouseButton"), {"button"}); return;
    case Takes::Delay: append(arguments, integer, {"delay"}); return;
    case Takes::Hold: append(arguments, integer, {"hold"}); return;
    case Takes::Index: append(arguments, integer, {"index"}); return;
    case Takes::Cell: append(arguments, integer, {"row", "column"}); return;
    case Takes::EntryText: append(arguments, text, {"text"}); return;
    case Takes::ContentPosition: append(arguments, integer, {"contentX", "contentY"}); return;
    case Takes::Key: append(arguments, text, {"key"}); return;
    case Takes::Text: append(arguments, text, {"text"}); return;
    case Takes::Gesture: append(arguments, text, {"gesture"}); return;
    case Takes::Target: append(arguments, text, {"targetName"}); return;
    case Takes::TargetCoordinates: append(arguments, integer, {"targetX", "targetY"}); return;
    }
}

const GlobalMethod *makeOverload(GlobalFunction function, const char *name, std::initializer_list<Takes> takes)
{
    QList<Argument> arguments;
    append(&arguments, QStringLiteral("QString"), {"objectName"});
    for (Takes what : takes)
        append(&arguments, what);
    const Argument result(Inspector::self()->voidResult()->objectClass(), Argument::ByValue, 0);
    auto *const method = new GlobalMethod(function, result, QString::fromLatin1(name), Signature(arguments));
    Inspector::self()->globalClass()->addMethod(method);
    return method;
}

} // namespace

// Each accessor owns its overload, made at the first call.
#define VANTLE_BY_NAME_FUNCTION(accessor, name, ...) \
    const Method *accessor() \
    { \
        static const GlobalMethod *const method = makeOverload(callInteraction<name __VA_OPT__(, ) __VA_ARGS__>, \
                                                               #name, {__VA_ARGS__}); \
        return method; \
    }

using enum Takes;

VANTLE_BY_NAME_FUNCTION(typeByNameFn, type, Text)
VANTLE_BY_NAME_FUNCTION(typeTextByNameFn, typeText, Text)
VANTLE_BY_NAME_FUNCTION(keyPressByNameFn, keyPress, Key)
VANTLE_BY_NAME_FUNCTION(keyReleaseByNameFn, keyRelease, Key)
VANTLE_BY_NAME_FUNCTION(mouseWheelByNameFn, mouseWheel, Coordinates, WheelDeltas, Modifiers)
VANTLE_BY_NAME_FUNCTION(mouseWheelToByNameFn, mouseWheel, Coordinates, WheelDeltas, Modifiers, ContentPosition)
VANTLE_BY_NAME_FUNCTION(scrollToOByNameFn, scrollTo)
VANTLE_BY_NAME_FUNCTION(scrollToOIByNameFn, scrollTo, Index)
VANTLE_BY_NAME_FUNCTION(scrollToORCByNameFn, scrollTo, Cell)
VANTLE_BY_NAME_FUNCTION(scrollToOTByNameFn, scrollTo, EntryText)
VANTLE_BY_NAME_FUNCTION(flickODByNameFn, flick, Distance)
VANTLE_BY_NAME_FUNCTION(closeWindowByNameFn, closeWindow)
VANTLE_BY_NAME_FUNCTION(moveWindowByNameFn, moveWindow, Distance)
VANTLE_BY_NAME_FUNCTION(setWindowSizeByNameFn, setWindowSize, Size)
VANTLE_BY_NAME_FUNCTION(setWindowStateByNameFn, setWindowState, State)
VANTLE_BY_NAME_FUNCTION(gestureOGByNameFn, gesture, Gesture)

VANTLE_BY_NAME_FUNCTION(mouseDragByNameFn, mouseDrag, Coordinates, Distance, Modifiers, Button)
VANTLE_BY_NAME_FUNCTION(longMouseDragByNameFn, longMouseDrag, Coordinates, Distance, Modifiers, Button)

VANTLE_BY_NAME_FUNCTION(dragAndDropOTByNameFn, dragAndDrop, Target)
VANTLE_BY_NAME_FUNCTION(dragAndDropOCTCByNameFn, dragAndDrop, Coordinates, Target, TargetCoordinates)

VANTLE_BY_NAME_FUNCTION(mouseClickOByNameFn, mouseClick)
VANTLE_BY_NAME_FUNCTION(mouseClickOBMByNameFn, mouseClick, Modifiers, Button)
VANTLE_BY_NAME_FUNCTION(mouseClickOCBByNameFn, mouseClick, Coordinates, Button)
VANTLE_BY_NAME_FUNCTION(mouseClickOCBMByNameFn, mouseClick, Coordinates, Modifiers, Button)

VANTLE_BY_NAME_FUNCTION(longMouseClickOByNameFn, longMouseClick)
VANTLE_BY_NAME_FUNCTION(longMouseClickOBMByNameFn, longMouseClick, Modifiers, Button)
VANTLE_BY_NAME_FUNCTION(longMouseClickOCBByNameFn, longMouseClick, Coordinates, Button)
VANTLE_BY_NAME_FUNCTION(longMouseClickOCBMByNameFn, longMouseClick, Coordinates, Modifiers, Button)

VANTLE_BY_NAME_FUNCTION(longMouseClickOHByNameFn, longMouseClick, Hold)
VANTLE_BY_NAME_FUNCTION(longMouseClickOCBMHByNameFn, longMouseClick, Coordinates, Modifiers, Button, Hold)

VANTLE_BY_NAME_FUNCTION(mouseMoveOByNameFn, mouseMove)
VANTLE_BY_NAME_FUNCTION(mouseMoveByNameFn, mouseMove, Coordinates)

VANTLE_BY_NAME_FUNCTION(mousePressOByNameFn, mousePress)
VANTLE_BY_NAME_FUNCTION(mousePressOBMByNameFn, mousePress, Modifiers, Button)
VANTLE_BY_NAME_FUNCTION(mousePressOCBByNameFn, mousePress, Coordinates, Button)
VANTLE_BY_NAME_FUNCTION(mousePressOCBMByNameFn, mousePress, Coordinates, Modifiers, Button)

VANTLE_BY_NAME_FUNCTION(mouseReleaseOByNameFn, mouseRelease)
VANTLE_BY_NAME_FUNCTION(mouseReleaseOBMByNameFn, mouseRelease, Modifiers, Button)
VANTLE_BY_NAME_FUNCTION(mouseReleaseOCBByNameFn, mouseRelease, Coordinates, Button)
VANTLE_BY_NAME_FUNCTION(mouseReleaseOCBMByNameFn, mouseRelease, Coordinates, Modifiers, Button)

VANTLE_BY_NAME_FUNCTION(doubleClickOByNameFn, doubleClick)
VANTLE_BY_NAME_FUNCTION(doubleClickOBMByNameFn, doubleClick, Modifiers, Button)
VANTLE_BY_NAME_FUNCTION(doubleClickOCBByNameFn, doubleClick, Coordinates, Button)
VANTLE_BY_NAME_FUNCTION(doubleClickOCBMByNameFn, doubleClick, Coordinates, Modifiers, Button)

VANTLE_BY_NAME_FUNCTION(tapObjectOByNameFn, tapObject)
VANTLE_BY_NAME_FUNCTION(tapObjectOMByNameFn, tapObject, Modifiers)
VANTLE_BY_NAME_FUNCTION(tapObjectOCByNameFn, tapObject, Coordinates)
VANTLE_BY_NAME_FUNCTION(tapObjectOCMByNameFn, tapObject, Coordinates, Modifiers)

VANTLE_BY_NAME_FUNCTION(doubleTapOByNameFn, doubleTap)
VANTLE_BY_NAME_FUNCTION(doubleTapOMByNameFn, doubleTap, Modifiers)
VANTLE_BY_NAME_FUNCTION(doubleTapOCByNameFn, doubleTap, Coordinates)
VANTLE_BY_NAME_FUNCTION(doubleTapOCMByNameFn, doubleTap, Coordinates, Modifiers)

VANTLE_BY_NAME_FUNCTION(touchAndDragOCDByNameFn, touchAndDrag, Coordinates, Distance)
VANTLE_BY_NAME_FUNCTION(touchAndDragOCDMByNameFn, touchAndDrag, Coordinates, Distance, Modifiers)
VANTLE_BY_NAME_FUNCTION(touchAndDragOCDMDByNameFn, touchAndDrag, Coordinates, Distance, Modifiers, Delay)

#undef VANTLE_BY_NAME_FUNCTION

void registerByNameFunctions()
{
    for (auto *accessor : inputByNameFns)
        accessor();
    for (auto *accessor : windowByNameFns)
        accessor();
    for (auto *accessor : {flickODByNameFn, dragAndDropOTByNameFn, dragAndDropOCTCByNameFn})
        accessor();
}

} // namespace Vantle::QtWrapper
