#include "wrappers/qt/extensions/qtquickcommon/functions/flickplayback.h"

#include "hook/inspector.h"
#include "wrappers/qt/readiness.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QPointer>
#include <QtQuick/private/qquickflickable_p.h>

namespace Vantle::QtWrapper {

namespace {

/// The value of an integer; 0 for an object that holds none.
int toInt(const SharedPtr<Object> &object)
{
    void *value = nullptr;
    return object && object->get(&value) ? *static_cast<int *>(value) : 0;
}

} // namespace

SharedPtr<Object> flickFunction(const ObjectList &arguments, const Class *)
{
    const SharedPtr<Object> object = arguments.at(0);
    const InteractionDelegate *delegate = nullptr;
    if (!ensureValidVisibleAndReady(object, -1, -1, QStringLiteral("flick"), &delegate))
        return nullptr;
    const QString error = flickQuickItem(object, toInt(arguments.at(1)), toInt(arguments.at(2)));
    if (!error.isEmpty()) {
        Inspector::self()->raiseError(error);
        return nullptr;
    }
    return Inspector::self()->voidResult();
}

QString flickQuickItem(const SharedPtr<Object> &object, int dx, int dy)
{
    if (!object)
        return QStringLiteral("Don't know how to flick invalid object");
    if (object->isNull())
        return QStringLiteral("Don't know how to flick null-object of type %1").arg(object->className());
    // The program may destroy the flickable in a slot of any of the signals below.
    const QPointer<QQuickFlickable> flickable(qobject_cast<QQuickFlickable *>(nativeQObject(object)));
    if (!flickable)
        return QStringLiteral("Don't know how to flick an object of type %1 which is not a QtQuick Flickable")
            .arg(object->className());

    Q_EMIT flickable->movementStarted();
    if (flickable)
        flickable->setContentX(flickable->contentX() + dx);
    if (flickable)
        flickable->setContentY(flickable->contentY() + dy);
    if (flickable)
        Q_EMIT flickable->movementEnded();
    return {};
}

} // namespace Vantle::QtWrapper
