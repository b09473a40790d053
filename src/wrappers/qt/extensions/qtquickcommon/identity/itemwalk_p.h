#pragma once

#include "hook/objectname.h"

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtQuick/QQuickItem>

#include <vector>

namespace Vantle::QtWrapper {

/// A walk over items and what is below them: parents before their children,
/// siblings in the order of QQuickItem::childItems().
///
/// This order is what an occurrence counts in, so naming and lookup share it.
/// Needs no stack of calls, since scenes may be nested deeply.
class ItemWalk
{
public:
    enum Hazard : bool {
        ItemsStay,      ///< nothing of the program runs between two steps
        ItemsMayVanish, ///< something may: items are guarded, and passed over once they are gone
    };

    ItemWalk(const QList<QQuickItem *> &roots, Hazard hazard);

    /// Goes on to the next item, the first one at the first call. False at the end.
    bool next();
    /// Where the walk stands. Null for a null root, and once the item is gone.
    QQuickItem *item() const;
    bool isAtRoot() const { return m_levels.back().areRoots; }
    /// Lets the walk go on with the children that the item has now. To be
    /// followed by next().
    void enterChildren();

private:
    // Keeps the list that its items had when they were met: what the program
    // does to the tree meanwhile does not disturb the walk.
    struct Level
    {
        QList<QQuickItem *> items;
        QList<QPointer<QQuickItem>> guards; // for each item, or none at all
        qsizetype index = -1;
        bool areRoots = false;

        bool hasVanished(qsizetype at) const { return !guards.isEmpty() && items[at] && guards[at].isNull(); }
    };

    void pushLevel(const QList<QQuickItem *> &items, bool areRoots);

    std::vector<Level> m_levels;
    Hazard m_hazard;
};

/// Whether comparing an item with \p properties can run code of the program or
/// of an extension.
ItemWalk::Hazard hazardOf(const ObjectName::Properties &properties);

} // namespace Vantle::QtWrapper
