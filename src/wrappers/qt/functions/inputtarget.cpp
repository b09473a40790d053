#include "wrappers/qt/functions/inputtarget_p.h"

#include "hook/delegates.h"
#include "wrappers/qt/wrapping.h"

#include <array>
#include <cmath>

namespace Vantle::QtWrapper {

namespace {

const GeometryDelegate *geometryOf(const SharedPtr<Object> &object)
{
    return object ? DelegateFactory::self()->geometryDelegate(object->objectClass()) : nullptr;
}

QWindow *toWindow(const SharedPtr<Object> &object)
{
    return qobject_cast<QWindow *>(nativeQObject(object));
}

/// The whole pixel of the screen that the recorder would call \p point of
/// \p object. In a scaled scene there may be none; then the exact middle of
/// that pixel, which is at \p middle.
QPointF pixelMeaning(const GeometryDelegate *geometry, const SharedPtr<Object> &object, QPoint point, QPointF middle)
{
    const std::array<double, 2> xs{std::floor(middle.x()), std::ceil(middle.x())};
    const std::array<double, 2> ys{std::floor(middle.y()), std::ceil(middle.y())};
    for (const double x : xs) {
        for (const double y : ys) {
            if (geometry->mapFromGlobal(object, static_cast<int>(x), static_cast<int>(y)) == point)
                return {x, y};
        }
    }
    return middle;
}

QString pointText(QPointF point)
{
    return QStringLiteral("(%1, %2)").arg(QString::number(point.x()), QString::number(point.y()));
}

} // namespace

QWindow *windowShowing(const SharedPtr<Object> &object)
{
    const GeometryDelegate *const geometry = geometryOf(object);
    return geometry ? toWindow(geometry->mapToWindow(object, QPointF()).window) : nullptr;
}

QRectF areaOf(const QWindow *window)
{
    return {window->mapToGlobal(QPointF()), QSizeF(window->size())};
}

std::optional<QPointF> mapToScreen(const SharedPtr<Object> &object, QPointF point)
{
    const GeometryDelegate *const geometry = geometryOf(object);
    if (!geometry)
        return std::nullopt;
    const GeometryDelegate::WindowPoint mapped = geometry->mapToWindow(object, point);
    const QWindow *const window = toWindow(mapped.window);
    return window ? std::optional(window->mapToGlobal(mapped.point)) : std::nullopt;
}

std::optional<PointOfAction> pointOfAction(const SharedPtr<Object> &object, const std::optional<QPoint> &point,
                                           QString *problem, Reach reach)
{
    QWindow *const window = windowShowing(object);
    if (!window) {
        *problem = QStringLiteral("it is in no window");
        return std::nullopt;
    }
    const GeometryDelegate *const geometry = geometryOf(object);
    PointOfAction result{window, QPointF(geometry->screenRect(object).center())};
    if (point) {
        const std::optional<QPointF> middle = mapToScreen(object, QPointF(*point) + QPointF(0.5, 0.5));
        result.global = pixelMeaning(geometry, object, *point, *middle);
    }
    if (!toWindow(object))
        result.area = QRectF(geometry->screenRect(object)) & areaOf(window);
    if (reach == Reach::Window && !areaOf(window).contains(result.global)) {
        *problem = QStringLiteral("the point %1 of the window, where it would be done, is outside of it")
                       .arg(pointText(result.local()));
        return std::nullopt;
    }
    return result;
}

QString describeObject(const SharedPtr<Object> &object)
{
    const QString name = object ? object->scriptName() : QString();
    return !name.isEmpty() || !object ? name : QStringLiteral("an object of type %1").arg(object->className());
}

} // namespace Vantle::QtWrapper
