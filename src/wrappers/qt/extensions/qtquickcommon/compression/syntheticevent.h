#pragma once

#include "hook/inputvalues.h"
#include "hook/object.h"
#include "hook/shared.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

#include <QtCore/QByteArray>

#include <vector>

namespace Vantle {

class Class;

namespace QtWrapper {

/// One thing that the user did, independent of the toolkit that reported it.
///
/// A flat value with the fields of every kind of event side by side: `type`
/// says which of them mean anything. Whoever fills a record writes the fields
/// of its kind, and nobody reads any others; these are left uninitialised on
/// purpose, so that a memory checker sees a pattern that looks at the wrong
/// field. `object`, `ready`, `objectName`, `objectClass` and `timestamp` are
/// defined for every kind.
///
/// Texts are UTF-8. Screen and item coordinates are logical pixels.
struct SyntheticEvent
{
    enum Type : qint32 {
        Invalid = -1,
        Mouse = 0,
        InputMethod = 1,
        Key = 2,
        Wheel = 3,
        WindowClose = 4,
        WindowMove = 5,
        WindowResize = 6,
        WindowStateChange = 7,
        Flick = 8,
        Touch = 9,
    };

    enum MouseEventType : qint32 {
        Press = 0,
        Move = 1,
        Release = 2,
    };

    enum KeyEventType : qint32 {
        KeyPress = 0,
        KeyRelease = 1,
    };

    enum FlickState : qint32 {
        FlickStarted = 0,
        FlickEnded = 1,
    };

    enum TouchEventType : qint32 {
        TouchBegin = 0,
        TouchUpdate = 1,
        TouchEnd = 2,
    };

    /// One finger of a touch event.
    struct TouchPoint
    {
        enum State : qint32 {
            Released = 0,
            Updated = 1, ///< moved or stationary
            Pressed = 2,
        };

        State state;
        qint32 id;
        double globalX;
        double globalY;
        double width; ///< of the contact ellipse, like height
        double height;
        double x; ///< in the window, like y
        double y;
        double pressure;

        /// Where touch distances are measured from. Half the diameter is added
        /// although globalX already names the centre of the contact: recorded
        /// distances have always been measured this way.
        double centerX() const noexcept { return globalX + 0.5 * width; }
        double centerY() const noexcept { return globalY + 0.5 * height; }
        /// The longer axis of the contact ellipse.
        double diameter() const noexcept { return height > width ? height : width; }
    };

    /// What only touch events have.
    struct TouchEvent
    {
        TouchEventType touchEventType;
        std::vector<TouchPoint> points;
        /// Index of the primary finger in points; out of range when that finger is not in this event.
        quint64 primaryIndex;
        /// The window that the toolkit delivered to, not the item under the finger.
        SharedPtr<Object> object;
        QByteArray objectName; ///< of the window; on a begin only
        qint32 areaWidth;      ///< of the gesture area; on a begin only, else 0
        qint32 areaHeight;
    };

    /// A record of type Invalid, stamped with the current time.
    VANTLEQTQUICKCOMMON_EXPORT SyntheticEvent();
    VANTLEQTQUICKCOMMON_EXPORT SyntheticEvent(const SyntheticEvent &);
    /// Takes over texts and touch points, which \p other loses. The references
    /// to objects are copied: \p other keeps its own.
    VANTLEQTQUICKCOMMON_EXPORT SyntheticEvent(SyntheticEvent &&other) noexcept;
    VANTLEQTQUICKCOMMON_EXPORT SyntheticEvent &operator=(const SyntheticEvent &);
    VANTLEQTQUICKCOMMON_EXPORT SyntheticEvent &operator=(SyntheticEvent &&other) noexcept;
    VANTLEQTQUICKCOMMON_EXPORT ~SyntheticEvent();

    Type type;

    MouseEventType mouseEventType;
    MouseButton::Value button; ///< None on a move, also while a button is held
    qint32 globalX;            ///< on the screen, like globalY
    qint32 globalY;

    qint32 wheelDeltaX; ///< degrees, like wheelDeltaY
    qint32 wheelDeltaY;

    QByteArray inputMethodText; ///< the committed text

    KeyEventType keyEventType;
    qint32 key; ///< the toolkit's key code
    Modifier::Value modifiers;
    QByteArray text; ///< a printable character, a key name in angle brackets, or nothing

    qint32 oldWindowX;
    qint32 oldWindowY;
    qint32 windowX;
    qint32 windowY;
    qint32 windowWidth;
    qint32 windowHeight;
    qint32 windowState; ///< None 0, Normal 1, Maximize 2, Minimize 3, Fullscreen 4

    SharedPtr<Object> flickObject; ///< the item that was pressed; the flickable itself is `object`
    FlickState flickState;
    qint32 contentX; ///< content position of the flickable at that moment, like contentY
    qint32 contentY;

    TouchEvent touch;

    SharedPtr<Object> object; ///< what the event is recorded against
    bool ready;               ///< whether a user could act on the object
    QByteArray objectName;    ///< its script name
    const Class *objectClass; ///< its run-time class, which outlives all events; may be null
    qint32 x;                 ///< inside the object, like y
    qint32 y;
    quint64 timestamp; ///< milliseconds since the Unix epoch
};

} // namespace QtWrapper
} // namespace Vantle
