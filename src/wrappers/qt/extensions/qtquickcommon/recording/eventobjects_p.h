#pragma once

#include "hook/object.h"

class QObject;
class QPoint;

namespace Vantle::QtWrapper {

struct SyntheticEvent;

/// Records the event against \p object, which must not be a null pointer:
/// fills `object`, `objectName`, `objectClass` and `ready`. An object whose
/// class has no interaction delegate is never ready.
void setEventObject(SyntheticEvent *result, const SharedPtr<Object> &object);

/// Records the event against the deepest object below \p object at the screen
/// position \p global, and sets `x` and `y` to that position inside it. They
/// are left alone where the deepest object has no geometry delegate.
void setEventObjectAt(SyntheticEvent *result, SharedPtr<Object> object, const QPoint &global);

/// Records the event against the object that has the keyboard focus below
/// \p receiver, or against \p receiver itself.
void setEventFocusObject(SyntheticEvent *result, QObject *receiver);

} // namespace Vantle::QtWrapper
