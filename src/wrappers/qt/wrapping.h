#pragma once

#include "hook/object.h"
#include "wrappers/qt/wrapperglobal.h"

class QObject;
class QPixmap;
struct QMetaObject;

namespace Vantle {
class Class;
}

namespace Vantle::QtWrapper {

/// The script object of \p object. While any reference to it is held, further
/// calls give the same one. A null \p object gives a wrapper for which
/// isNull() holds, never a null pointer, and so does one that is so far into
/// its destructor that it emits destroyed().
VANTLEQTWRAPPER_EXPORT SharedPtr<Object> wrapAndRegisterQObject(QObject *object);

/// The class that describes \p metaObject, made and registered with the
/// Inspector at the first call, base classes included. Null for null.
VANTLEQTWRAPPER_EXPORT const Class *classForMetaObject(const QMetaObject *metaObject);

/// The native object behind \p object, null if it is dead, null or no QObject.
VANTLEQTWRAPPER_EXPORT QObject *nativeQObject(const SharedPtr<Object> &object);

/// The class of the pixmaps that go to scripts, "QPixmap". Registered with the
/// Inspector at the first call, which Application makes.
VANTLEQTWRAPPER_EXPORT const Class *pixmapClass();

/// \p pixmap, which may be null, as a value for scripts. Never a null pointer.
/// Two results are the same as long as their pixmaps are copies of one.
VANTLEQTWRAPPER_EXPORT SharedPtr<Object> createResultObject(const QPixmap &pixmap);

/// Lists the objects one level below a native object.
using ChildrenFinder = ObjectList (*)(QObject *object);

/// Makes \p finder answer Object::children for objects of \p metaObject and
/// the classes below it. Without one an object's QObject children count.
VANTLEQTWRAPPER_EXPORT void registerChildrenFinder(const QMetaObject *metaObject, ChildrenFinder finder);

} // namespace Vantle::QtWrapper
