#pragma once

#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QByteArray>

class QObject;
struct QMetaObject;

namespace Vantle {
class PropertyValue;
}

namespace Vantle::QtWrapper {

/// The class's name without what the QML engine adds to the names of types
/// that it generates: any number of trailing "_QMLTYPE_<digits>" and
/// "_QML_<digits>". Everything else stays as it is.
VANTLEQTWRAPPER_EXPORT QByteArray cleanQmlClassName(const QByteArray &className);
/// Same for the class that \p metaObject, which must not be null, describes.
VANTLEQTWRAPPER_EXPORT QByteArray cleanQmlClassName(const QMetaObject *metaObject);

/// The class's name as scripts write it: cleaned, without a leading "QQuick",
/// and without the "QmlImpl" of what QML calls "Window".
VANTLEQTWRAPPER_EXPORT QByteArray scriptTypeName(const QMetaObject *metaObject);

/// Whether a raw class name is that of a type written in QML.
VANTLEQTWRAPPER_EXPORT bool isCustomQmlTypeName(const QByteArray &className);

/// Whether \p object, which must not be null, is of the type that \p type
/// names. The value is held against the raw name of the object's most derived
/// class, the cleaned name, the cleaned name without a leading "QQuick", and
/// the name that scripts write.
VANTLEQTWRAPPER_EXPORT bool qmlMatchesTypeProperty(QObject *object, const PropertyValue &type);

} // namespace Vantle::QtWrapper
