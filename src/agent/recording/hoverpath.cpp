#include "agent/recording/hoverpath.h"

#include "wrappers/qt/extensions/qtquick/pressroad.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/hittesting.h"

#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickitem_p.h>

namespace Vantle::Agent {

namespace {

// Enough for any way that somebody remembers; a longer one loses its beginning.
constexpr std::size_t longestWay = 400;

void collectVisible(const QQuickItem *item, QSet<const QQuickItem *> *visible)
{
    if (!item->isVisible())
        return;
    visible->insert(item);
    const QList<QQuickItem *> children = item->childItems();
    for (const QQuickItem *child : children)
        collectVisible(child, visible);
}

/// Whether a view has made \p item for an entry of its model, as it does when it scrolls.
bool isMadeByView(const QQuickItem *item)
{
    const QQuickItem *const parent = item->parentItem();
    return parent && parent->parentItem() && parent->parentItem()->inherits("QQuickFlickable");
}

/// Whether anything around \p item takes note of a pointer that only hovers.
bool isHoverSensitive(QQuickItem *item)
{
    for (; item; item = item->parentItem()) {
        const QQuickItemPrivate *const priv = QQuickItemPrivate::get(item);
        if (priv->hoverEnabled || priv->hasEnabledHoverHandlers())
            return true;
    }
    return false;
}

bool isWithin(const QQuickItem *item, const QQuickItem *ancestor)
{
    return item == ancestor || ancestor->isAncestorOf(item);
}

QQuickItem *hoveredAt(const QQuickWindow *window, QPointF scenePoint)
{
    if (QQuickItem *const taker = QtWrapper::pressTakerAt(window, scenePoint, Qt::LeftButton))
        return taker;
    return QtWrapper::recursiveQuickItemAt(window->contentItem(), scenePoint);
}

} // namespace

void HoverPath::noteMove(QQuickWindow *window, QPointF scenePoint)
{
    if (m_way.empty()) {
        m_visible.clear();
        const QWindowList windows = QGuiApplication::topLevelWindows();
        for (const QWindow *other : windows) {
            if (const auto *const quickWindow = qobject_cast<const QQuickWindow *>(other))
                collectVisible(quickWindow->contentItem(), &m_visible);
        }
    }
    if (m_way.size() == longestWay)
        m_way.erase(m_way.begin(), m_way.begin() + longestWay / 2);
    m_way.push_back({window, scenePoint});
}

void HoverPath::reset()
{
    m_way.clear();
}

QList<HoverPath::Stop> HoverPath::stopsFor(QQuickItem *item) const
{
    QList<Stop> stops;
    std::size_t end = m_way.size();
    while (QQuickItem *const newcomer = newcomerAround(item)) {
        Stop stop;
        if (!findOpener(newcomer, &end, &stop))
            break;
        stops.prepend(stop);
        item = stop.item;
    }
    return stops;
}

/// The outermost item around \p item, or itself, that was not there when the
/// pointer set off; null if all were, and for what views make.
QQuickItem *HoverPath::newcomerAround(QQuickItem *item) const
{
    QQuickItem *newcomer = nullptr;
    for (; item && !m_way.empty() && !m_visible.contains(item); item = item->parentItem())
        newcomer = item;
    return newcomer && !isMadeByView(newcomer) ? newcomer : nullptr;
}

/// Where the pointer was last, ahead of \p *end, before it came to \p newcomer.
bool HoverPath::findOpener(const QQuickItem *newcomer, std::size_t *end, Stop *stop) const
{
    while (*end > 0) {
        const Place &place = m_way.at(--*end);
        if (!place.window || newcomer->contains(newcomer->mapFromScene(place.scenePoint)))
            continue;
        QQuickItem *const hovered = hoveredAt(place.window, place.scenePoint);
        if (!hovered || isWithin(hovered, newcomer) || !isHoverSensitive(hovered))
            continue;
        // In the middle of the way over it, since a corner may be no part of it.
        std::size_t first = *end;
        while (first > 0 && m_way.at(first - 1).window == place.window
               && hoveredAt(place.window, m_way.at(first - 1).scenePoint) == hovered)
            --first;
        *stop = {hovered, m_way.at((first + *end) / 2).scenePoint};
        *end = first;
        return true;
    }
    return false;
}

} // namespace Vantle::Agent
