#pragma once

#include "hook/eventdata.h"
#include "hook/inputvalues.h"
#include "hook/object.h"
#include "hook/touchbuilder.h"

#include <QtCore/QByteArray>

#include <list>

namespace Vantle {

class Class;

namespace QtWrapper {

/// What recorded patterns are written to: one operation for each kind of
/// statement.
///
/// Patterns always pass all they know; an implementation leaves out what the
/// statement doesn't need and appends the result to `statements`. Names and
/// texts are UTF-8, coordinates and distances logical pixels, times
/// milliseconds since the Unix epoch.
class StatementRecorder
{
public:
    virtual ~StatementRecorder();

    /// Typed text, a special key, or text committed by an input method.
    virtual void type(SharedPtr<Object> object, const QByteArray &objectName, const QByteArray &text,
                      quint64 timestamp) = 0;
    virtual void mouseClick(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass, qint32 x,
                            qint32 y, MouseButton::Value button, Modifier::Value modifiers, quint64 timestamp,
                            bool longClick) = 0;
    virtual void mouseDrag(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y, qint32 dx,
                           qint32 dy, MouseButton::Value button, Modifier::Value modifiers, quint64 timestamp,
                           bool longDrag) = 0;
    /// \p deltaX and \p deltaY are degrees.
    virtual void mouseWheel(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y, qint32 deltaX,
                            qint32 deltaY, Modifier::Value modifiers, quint64 timestamp) = 0;
    virtual void doubleClick(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass, qint32 x,
                             qint32 y, MouseButton::Value button, Modifier::Value modifiers, quint64 timestamp) = 0;
    /// \p dx and \p dy say how far the content moved.
    virtual void flick(SharedPtr<Object> object, const QByteArray &objectName, qint32 dx, qint32 dy,
                       quint64 timestamp) = 0;
    virtual void closeWindow(SharedPtr<Object> object, const QByteArray &objectName, quint64 timestamp) = 0;
    virtual void moveWindow(SharedPtr<Object> object, const QByteArray &objectName, qint32 dx, qint32 dy,
                            quint64 timestamp) = 0;
    virtual void setWindowSize(SharedPtr<Object> object, const QByteArray &objectName, qint32 width, qint32 height,
                               quint64 timestamp) = 0;
    virtual void setWindowState(SharedPtr<Object> object, const QByteArray &objectName, qint32 state,
                                quint64 timestamp) = 0;
    virtual void tapObject(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass, qint32 x,
                           qint32 y, Modifier::Value modifiers, quint64 timestamp) = 0;
    /// \p delay is how long the finger stayed still before it set off, in milliseconds.
    virtual void touchAndDrag(SharedPtr<Object> object, const QByteArray &objectName, qint32 x, qint32 y, qint32 dx,
                              qint32 dy, Modifier::Value modifiers, qint32 delay, quint64 timestamp) = 0;
    virtual void doubleTap(SharedPtr<Object> object, const QByteArray &objectName, const Class *objectClass, qint32 x,
                           qint32 y, Modifier::Value modifiers, quint64 timestamp) = 0;
    /// \p info lives only for the call.
    virtual void gesture(SharedPtr<Object> object, const QByteArray &objectName,
                         const TouchBuilder::MultiTouchInfo &info, Modifier::Value modifiers, quint64 timestamp) = 0;

    /// What was written and not yet handed to the observers of EventCompressor, which clears it.
    std::list<EventData> statements;
};

} // namespace QtWrapper
} // namespace Vantle
