#include "wrappers/qt/extensions/qtquickcommon/identity/itemwalk_p.h"

#include <algorithm>

namespace Vantle::QtWrapper {

ItemWalk::ItemWalk(const QList<QQuickItem *> &roots, Hazard hazard) : m_hazard(hazard)
{
    pushLevel(roots, true);
}

bool ItemWalk::next()
{
    while (!m_levels.empty()) {
        Level &level = m_levels.back();
        while (++level.index < level.items.size()) {
            if (!level.hasVanished(level.index))
                return true;
        }
        m_levels.pop_back();
    }
    return false;
}

QQuickItem *ItemWalk::item() const
{
    const Level &level = m_levels.back();
    return level.hasVanished(level.index) ? nullptr : level.items[level.index];
}

void ItemWalk::enterChildren()
{
    QQuickItem *const parent = item();
    if (!parent)
        return;
    const QList<QQuickItem *> children = parent->childItems();
    if (children.isEmpty())
        return;
    // Chains of only children are deep: a level that is done makes room at once.
    if (m_levels.back().index + 1 == m_levels.back().items.size())
        m_levels.pop_back();
    pushLevel(children, false);
}

void ItemWalk::pushLevel(const QList<QQuickItem *> &items, bool areRoots)
{
    Level level;
    level.items = items;
    level.areRoots = areRoots;
    if (m_hazard == ItemsMayVanish)
        level.guards = QList<QPointer<QQuickItem>>(items.cbegin(), items.cend());
    m_levels.push_back(std::move(level));
}

ItemWalk::Hazard hazardOf(const ObjectName::Properties &properties)
{
    // Qt alone answers these; all others may be read by a getter or a script.
    const auto isHarmless = [](const QString &key) {
        return key == QLatin1String("type") || key == QLatin1String("objectName") || key == QLatin1String("unnamed")
            || key == QLatin1String("occurrence");
    };
    const bool harmless = std::all_of(properties.keyBegin(), properties.keyEnd(), isHarmless);
    return harmless ? ItemWalk::ItemsStay : ItemWalk::ItemsMayVanish;
}

} // namespace Vantle::QtWrapper
