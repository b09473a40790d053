#pragma once

#include "hook/method.h"
#include "hook/object.h"
#include "wrappers/qt/scrolling.h"

#include <QtCore/QPoint>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/qnamespace.h>

#include <initializer_list>
#include <optional>

/// What the script functions by which a user's input is played back do, behind
/// all of their overloads. Each hands its input over to the InputPlayer and
/// returns at once. Null after a failure, which the script has been told about.
namespace Vantle::QtWrapper {

/// What an overload takes behind the object, in the order in which scripts write it.
enum class Takes {
    Coordinates,
    Distance,
    WheelDeltas,
    Size,
    State,
    Modifiers,
    Button,
    Delay,
    Hold,
    Text,
    Key,
    Index,
    Cell,
    EntryText,
    ContentPosition,
    Gesture,
    Target,
    TargetCoordinates,
};

/// The arguments of one call. What the overload doesn't take is as here.
struct Interaction
{
    SharedPtr<Object> object;
    /// In the object's own coordinates; without them its middle is meant.
    std::optional<QPoint> coordinates;
    QPoint distance;
    QPoint wheelDeltas; ///< degrees
    QSize size;
    int state = 0;
    Qt::KeyboardModifiers modifiers;
    Qt::MouseButton button = Qt::LeftButton;
    int delay = 0;           ///< milliseconds
    std::optional<int> hold; ///< milliseconds; without, as long as a long press takes
    QString text;
    ScrollGoal goal;
    SharedPtr<Object> target;
    std::optional<QPoint> targetCoordinates;
};

using InteractionFunction = SharedPtr<Object> (*)(const Interaction &);

SharedPtr<Object> mouseClick(const Interaction &call);
SharedPtr<Object> longMouseClick(const Interaction &call);
SharedPtr<Object> doubleClick(const Interaction &call);
SharedPtr<Object> mouseDrag(const Interaction &call);
SharedPtr<Object> longMouseDrag(const Interaction &call);
SharedPtr<Object> dragAndDrop(const Interaction &call);
SharedPtr<Object> mouseWheel(const Interaction &call);
SharedPtr<Object> mouseMove(const Interaction &call);
SharedPtr<Object> mousePress(const Interaction &call);
SharedPtr<Object> mouseRelease(const Interaction &call);
SharedPtr<Object> type(const Interaction &call);
SharedPtr<Object> typeText(const Interaction &call);
SharedPtr<Object> keyPress(const Interaction &call);
SharedPtr<Object> keyRelease(const Interaction &call);
SharedPtr<Object> tapObject(const Interaction &call);
SharedPtr<Object> doubleTap(const Interaction &call);
SharedPtr<Object> touchAndDrag(const Interaction &call);
SharedPtr<Object> gesture(const Interaction &call);
SharedPtr<Object> closeWindow(const Interaction &call);
SharedPtr<Object> moveWindow(const Interaction &call);
SharedPtr<Object> setWindowSize(const Interaction &call);
SharedPtr<Object> setWindowState(const Interaction &call);

/// Needs no input, and is done at once.
SharedPtr<Object> scrollTo(const Interaction &call);

/// Carried out by the overload for objects of its class that is registered
/// with the Inspector.
SharedPtr<Object> flick(const Interaction &call);

/// Reads \p arguments: the object or its name, then what \p takes lists.
/// Nothing where a name denotes nothing, or a value is none that a user could
/// mean; the script has been told why.
std::optional<Interaction> readInteraction(const ObjectList &arguments, std::initializer_list<Takes> takes);

/// The function of an overload that takes \p takes behind the object or its name.
template<InteractionFunction function, Takes... takes>
SharedPtr<Object> callInteraction(const ObjectList &arguments, const Class *)
{
    const std::optional<Interaction> call = readInteraction(arguments, {takes...});
    return call ? function(*call) : nullptr;
}

} // namespace Vantle::QtWrapper
