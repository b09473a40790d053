#include "wrappers/qt/extensions/qtquickcommon/recording/touchtranslation_p.h"

#include "hook/delegates.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/eventobjects_p.h"
#include "wrappers/qt/wrapping.h"

#include <QtGui/QTouchEvent>

#include <algorithm>
#include <limits>

namespace Vantle::QtWrapper {

namespace {

constexpr qint32 NoTouchId = std::numeric_limits<qint32>::min();
/// Beyond any index that the array of points can have.
constexpr quint64 NoPrimaryIndex = 0x3ffffffffffffff;

qint32 primaryTouchId = NoTouchId;

SyntheticEvent::TouchPoint::State touchPointState(QEventPoint::State state)
{
    switch (state) {
    case QEventPoint::Pressed: return SyntheticEvent::TouchPoint::Pressed;
    case QEventPoint::Released: return SyntheticEvent::TouchPoint::Released;
    default: return SyntheticEvent::TouchPoint::Updated;
    }
}

SyntheticEvent::TouchPoint touchPoint(const QEventPoint &point)
{
    SyntheticEvent::TouchPoint result;
    result.state = touchPointState(point.state());
    result.id = point.id();
    result.globalX = point.globalPosition().x();
    result.globalY = point.globalPosition().y();
    result.width = point.ellipseDiameters().width();
    result.height = point.ellipseDiameters().height();
    result.x = point.position().x();
    result.y = point.position().y();
    result.pressure = point.pressure();
    return result;
}

void beginSequence(SyntheticEvent::TouchEvent *touch)
{
    touch->primaryIndex = 0;
    primaryTouchId = touch->points.empty() ? NoTouchId : touch->points.front().id;
    touch->objectName = touch->object->scriptName().toUtf8();
    if (const GeometryDelegate *geometry = DelegateFactory::self()->geometryDelegate(touch->object->objectClass())) {
        const QRect area = geometry->screenRect(touch->object);
        if (area.width() > -1 && area.height() > -1) {
            touch->areaWidth = area.width();
            touch->areaHeight = area.height();
        }
    }
}

quint64 indexOfPrimaryPoint(const std::vector<SyntheticEvent::TouchPoint> &points)
{
    const auto isPrimary = [](const SyntheticEvent::TouchPoint &point) { return point.id == primaryTouchId; };
    const auto primary = std::find_if(points.begin(), points.end(), isPrimary);
    return primary != points.end() ? static_cast<quint64>(primary - points.begin()) : NoPrimaryIndex;
}

} // namespace

void translateTouchEvent(SyntheticEvent *result, QObject *receiver, const QTouchEvent &event)
{
    SyntheticEvent::TouchEvent &touch = result->touch;
    touch.object = wrapAndRegisterQObject(receiver);
    touch.areaWidth = 0;
    touch.areaHeight = 0;
    touch.points.reserve(static_cast<std::size_t>(event.points().size()));
    for (const QEventPoint &point : event.points())
        touch.points.push_back(touchPoint(point));

    if (event.type() == QEvent::TouchBegin)
        beginSequence(&touch);
    else
        touch.primaryIndex = indexOfPrimaryPoint(touch.points);
    if (event.type() == QEvent::TouchEnd || event.type() == QEvent::TouchCancel)
        primaryTouchId = NoTouchId;

    if (touch.primaryIndex >= touch.points.size()) {
        setEventObject(result, touch.object);
        return;
    }
    const SyntheticEvent::TouchPoint &primary = touch.points[touch.primaryIndex];
    setEventObjectAt(result, touch.object,
                     QPoint(static_cast<int>(primary.centerX()), static_cast<int>(primary.centerY())));
}

} // namespace Vantle::QtWrapper
