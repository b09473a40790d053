#include "wrappers/qt/extensions/qtquickcommon/recording/eventobjects_p.h"

#include "hook/delegates.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"
#include "wrappers/qt/wrapping.h"

namespace Vantle::QtWrapper {

namespace {

const GeometryDelegate *geometryOf(const SharedPtr<Object> &object)
{
    return DelegateFactory::self()->geometryDelegate(object->objectClass());
}

} // namespace

void setEventObject(SyntheticEvent *result, const SharedPtr<Object> &object)
{
    result->object = object;
    result->objectName = object->scriptName().toUtf8();
    result->objectClass = object->objectClass();
    const InteractionDelegate *interaction = DelegateFactory::self()->interactionDelegate(result->objectClass);
    result->ready = interaction && interaction->notReadyReason(object).isEmpty();
}

void setEventObjectAt(SyntheticEvent *result, SharedPtr<Object> object, const QPoint &global)
{
    while (const GeometryDelegate *geometry = geometryOf(object)) {
        const QPoint local = geometry->mapFromGlobal(object, global.x(), global.y());
        const SharedPtr<Object> child = geometry->childAt(object, local.x(), local.y());
        if (!child) {
            result->x = local.x();
            result->y = local.y();
            break;
        }
        object = child;
    }
    setEventObject(result, object);
}

void setEventFocusObject(SyntheticEvent *result, QObject *receiver)
{
    SharedPtr<Object> object = wrapAndRegisterQObject(receiver);
    while (const GeometryDelegate *geometry = geometryOf(object)) {
        const SharedPtr<Object> focus = geometry->focusChild(object);
        if (!focus || focus->sameAs(object))
            break;
        object = focus;
    }
    setEventObject(result, object);
}

} // namespace Vantle::QtWrapper
