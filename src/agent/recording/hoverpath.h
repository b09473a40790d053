#pragma once

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QPointer>
#include <QtCore/QSet>

#include <vector>

class QQuickItem;
class QQuickWindow;

namespace Vantle::Agent {

/// Finds out where the pointer has to have been for an item to be there: a
/// submenu opens when the pointer rests on its entry, a button shows while its
/// row is hovered.
///
/// Remembers the way of the pointer since the user last did something, and what
/// was visible when it set off. An item that has come since then, and that no
/// view has made for an entry, is there because of something that was hovered.
///
/// Lives on the thread of the user interface.
class HoverPath
{
public:
    /// A place that has to be hovered.
    struct Stop
    {
        QPointer<QQuickItem> item;
        QPointF scenePoint;
    };

    /// The pointer is at \p scenePoint of \p window, with no button held.
    void noteMove(QQuickWindow *window, QPointF scenePoint);

    /// The user does something: the way begins anew.
    void reset();

    /// Where the pointer has to go ahead of acting on \p item, in this order. Empty
    /// for null, and if the item was there anyhow.
    QList<Stop> stopsFor(QQuickItem *item) const;

private:
    struct Place
    {
        QPointer<QQuickWindow> window;
        QPointF scenePoint;
    };

    QQuickItem *newcomerAround(QQuickItem *item) const;
    bool findOpener(const QQuickItem *newcomer, std::size_t *end, Stop *stop) const;

    QSet<const QQuickItem *> m_visible; ///< never dereferenced
    std::vector<Place> m_way;
};

} // namespace Vantle::Agent
