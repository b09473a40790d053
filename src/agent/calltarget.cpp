#include "agent/calltarget.h"

#include "agent/objecttree.h"
#include "hook/delegates.h"
#include "wrappers/qt/extensions/qtquick/inputdelivery.h"
#include "wrappers/qt/extensions/qtquick/pressroad.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"
#include "wrappers/qt/wrapping.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <cmath>

namespace Vantle::Agent {

namespace {

QQuickItem *itemOf(const SharedPtr<Object> &object)
{
    return qobject_cast<QQuickItem *>(QtWrapper::nativeQObject(object));
}

QWindow *windowOf(const SharedPtr<Object> &object)
{
    return qobject_cast<QWindow *>(QtWrapper::nativeQObject(object));
}

bool isSelfOrAncestor(const QQuickItem *ancestor, const QQuickItem *item)
{
    return ancestor == item || ancestor->isAncestorOf(item);
}

/// Where in the scene the player goes that is to point at \p point of \p item: the
/// whole pixel that a recording calls so, or the middle of the point where a scaled
/// scene has none.
QPointF pixelMeaning(const QQuickItem *item, QPoint point)
{
    const QPointF middle = item->mapToScene(QPointF(point) + QPointF(0.5, 0.5));
    for (const double x : {std::floor(middle.x()), std::ceil(middle.x())}) {
        for (const double y : {std::floor(middle.y()), std::ceil(middle.y())}) {
            const QPointF inside = item->mapFromScene(QPointF(x, y));
            if (QPoint(qFloor(inside.x()), qFloor(inside.y())) == point)
                return {x, y};
        }
    }
    return middle;
}

/// The item that a user hits at \p point of \p window; null if that is empty there.
QQuickItem *itemAt(const QQuickWindow *window, QPointF point)
{
    QQuickItem *const hit = QtWrapper::recursiveQuickItemAt(window->contentItem(), point);
    return hit != window->contentItem() ? hit : nullptr;
}

/// Why nothing can be done to \p window yet. One that is minimised is not on the
/// screen either, but can be brought back.
std::optional<Obstacle> hiddenness(const QWindow *window)
{
    if (!window)
        return std::nullopt;
    if (!window->isVisible())
        return Obstacle{QStringLiteral("the window is not visible")};
    if (!window->isExposed() && !window->windowStates().testFlag(Qt::WindowMinimized))
        return Obstacle{QStringLiteral("the window is not exposed on the screen")};
    return std::nullopt;
}

SharedPtr<Object> blockerOf(const SharedPtr<Object> &object)
{
    const InteractionDelegate *const delegate = DelegateFactory::self()->interactionDelegate(object->objectClass());
    return delegate ? delegate->blocker(object) : nullptr;
}

} // namespace

QString Obstacle::inWords() const
{
    if (!named)
        return reason;
    const QString className = named->className();
    const QString name = named->scriptName();
    return reason.arg(name.isEmpty() ? className : name);
}

QString Obstacle::nameOfCover() const
{
    return cover ? cover->scriptName() : QString();
}

CallTarget::CallTarget(const QString &name, const SharedPtr<Object> &object, Needs needs, const Aim &aim)
    : m_object(name.isEmpty() ? object : nullptr)
    , m_needs(needs)
    , m_aim(aim)
{
    m_target.name = name;
}

SharedPtr<Object> CallTarget::lookWith(const TargetFinder &finder) const
{
    if (isByName())
        return finder.look(m_target);
    return m_object && !m_object->isNull() ? m_object : nullptr;
}

QString CallTarget::nameInMessages() const
{
    return isByName() || !m_object ? m_target.name : m_object->scriptName();
}

std::optional<Obstacle> CallTarget::obstacle(const SharedPtr<Object> &object)
{
    takeAim(object);
    if (m_needs == Needs::Existence)
        return std::nullopt;
    if (m_needs == Needs::Visibility)
        return hiddenness(windowOf(object));
    if (const QString reason = notReadyReason(object); !reason.isEmpty()) {
        m_stillness.forget();
        return Obstacle{reason, nullptr, blockerOf(object)};
    }
    if (const auto popup = popupUnderWay(object))
        return popup;
    if (const auto moving = motion(object))
        return moving;
    return m_needs == Needs::FreePoint ? cover(object) : std::nullopt;
}

void CallTarget::takeAim(const SharedPtr<Object> &object)
{
    // The input that is played goes to the same points.
    const QQuickItem *const item = itemOf(object);
    QPointF point = QPointF(screenRect(object).center());
    if (m_aim.point)
        point = QPointF(*m_aim.point) + QPointF(0.5, 0.5);
    else if (item)
        point = item->mapFromGlobal(point);
    else if (const QWindow *const window = windowOf(object))
        point = window->mapFromGlobal(point);
    const GeometryDelegate *const delegate = DelegateFactory::self()->geometryDelegate(object->objectClass());
    const GeometryDelegate::WindowPoint shown = delegate ? delegate->mapToWindow(object, point)
                                                         : GeometryDelegate::WindowPoint{};
    m_window = windowOf(shown.window);
    m_pointInWindow = QPoint(qFloor(shown.point.x()), qFloor(shown.point.y()));
    if (item)
        m_scenePoint = m_aim.point ? pixelMeaning(item, *m_aim.point) : item->mapToScene(point);
}

/// A popup that is opening or closing takes keys, and presses beside it, for
/// itself. One that does so for long, as a drawer that is held halfway, is no obstacle.
std::optional<Obstacle> CallTarget::popupUnderWay(const SharedPtr<Object> &object)
{
    constexpr qint64 longestWay = 1500;
    const QQuickItem *const item = itemOf(object);
    QQuickItem *const popup = QtWrapper::popupUnderWay(item ? item->window()
                                                            : qobject_cast<QQuickWindow *>(windowOf(object)));
    if (!popup) {
        m_sincePopup.invalidate();
        return std::nullopt;
    }
    if (!m_sincePopup.isValid())
        m_sincePopup.start();
    if (m_sincePopup.elapsed() > longestWay)
        return std::nullopt;
    return Obstacle{QStringLiteral("%1 is still opening or closing"), QtWrapper::wrapAndRegisterQObject(popup)};
}

std::optional<Obstacle> CallTarget::motion(const SharedPtr<Object> &object)
{
    if (m_stillness.isAtRest(object))
        return std::nullopt;
    QQuickItem *const carrier = m_stillness.carrier();
    if (!carrier || carrier == itemOf(object))
        return Obstacle{QStringLiteral("it is still moving")};
    return Obstacle{QStringLiteral("%1, which holds it, is still moving"), QtWrapper::wrapAndRegisterQObject(carrier)};
}

QString CallTarget::whereItIsAimedAt() const
{
    return m_aim.point ? QStringLiteral("its point (%1, %2)").arg(m_aim.point->x()).arg(m_aim.point->y())
                       : QStringLiteral("its middle");
}

std::optional<Obstacle> CallTarget::cover(const SharedPtr<Object> &object)
{
    // So long does what may let the press through count as what covers the object,
    // since it may also be on its way out.
    constexpr qint64 longestDoubt = 700;

    const QQuickItem *const item = itemOf(object);
    const QQuickWindow *const window = item ? item->window() : nullptr;
    if (!window)
        return std::nullopt;
    if (!QRectF(QPointF(), QSizeF(window->size())).contains(m_scenePoint))
        return Obstacle{QStringLiteral("%1 lies outside of the window").arg(whereItIsAimedAt())};
    QQuickItem *hit = itemAt(window, m_scenePoint);
    // Finding out may have run scripts.
    if (itemOf(object) != item || item->window() != window)
        return Obstacle{QStringLiteral("the item does not exist any more")};
    if (hit && isSelfOrAncestor(item, hit))
        return std::nullopt;
    // A label or a decoration on top is in nobody's way.
    const QtWrapper::PressRoad road = QtWrapper::pressRoadTo(item, m_scenePoint, m_aim.button);
    if (road.reachesTarget)
        return std::nullopt;
    if (road.mayReachTarget) {
        if (!m_sinceDoubt.isValid())
            m_sinceDoubt.start();
        if (m_sinceDoubt.elapsed() > longestDoubt)
            return std::nullopt;
    }
    if (road.takenBy && !(hit && isSelfOrAncestor(hit, road.takenBy)))
        hit = road.takenBy;
    if (!hit || hit == window->contentItem())
        return Obstacle{QStringLiteral("it can't be hit at %1").arg(whereItIsAimedAt())};
    const SharedPtr<Object> cover = QtWrapper::wrapAndRegisterQObject(hit);
    return Obstacle{whereItIsAimedAt() + QStringLiteral(" is covered by %1"), cover, cover};
}

} // namespace Vantle::Agent
