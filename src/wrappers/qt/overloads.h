#pragma once

#include "hook/method.h"
#include "wrappers/qt/wrapperglobal.h"

/// The overloads of the interaction functions that take objects, as opposed to
/// names of objects, for classes that the host itself doesn't know. They go to
/// the Inspector's global functions and live as long as the process. A class
/// that is named again gets its overloads again.
namespace Vantle::QtWrapper {

/// Adds, for objects of \p type and the classes below it, an overload of each
/// function by which a user's input is played back on an object: clicks, taps,
/// drags, wheel, text and gestures. They take what the overloads by name take,
/// with the object, "object", in place of its name. Null does nothing.
VANTLEQTWRAPPER_EXPORT void registerInteractionOverloadsFor(const Class *type);

/// Adds the same for windows, and overloads of the functions that act on a
/// window as a whole. Further calls do nothing.
VANTLEQTWRAPPER_EXPORT void registerWindowOverloads();

/// Adds the overloads of `dragAndDrop` that take an object of \p source, the
/// point (x, y) in it where the drag begins, an object of \p target and the
/// point (targetX, targetY) in that where it ends; and one without the points,
/// which goes from middle to middle. Null for either does nothing.
VANTLEQTWRAPPER_EXPORT void registerDragAndDropOverloadsWithTarget(const Class *source, const Class *target);

/// Adds the overload of `flick` that takes \p object and two integers, how far
/// the content goes horizontally and vertically, and is carried out by \p call.
VANTLEQTWRAPPER_EXPORT void registerFlickODOverload(GlobalFunction call, const Argument &object);

} // namespace Vantle::QtWrapper
