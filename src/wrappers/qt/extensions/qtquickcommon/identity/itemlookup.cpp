#include "wrappers/qt/extensions/qtquickcommon/identity/itemlookup.h"

#include "wrappers/qt/extensions/qtquickcommon/identity/itemlookup_p.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemproperties_p.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemwalk_p.h"
#include "wrappers/qt/wrapping.h"

#include <QtQuick/QQuickItem>

namespace Vantle::QtWrapper {

namespace {

/// Whether this was the match that the name means. A count that starts at 0 or
/// below never comes to its end.
bool countDown(qint32 *remaining)
{
    return *remaining > 0 && --*remaining == 0;
}

} // namespace

SharedPtr<Object> findQuickItem(const QList<QQuickItem *> &roots, const ObjectName &name, QList<QString> &mismatched)
{
    qint32 remaining = name.occurrenceValue();
    return searchItems(roots, name.properties(), &remaining, searchesInvisible(name.properties()), mismatched);
}

SharedPtr<Object> searchItems(const QList<QQuickItem *> &items, const ObjectName::Properties &properties,
                              qint32 *remaining, bool searchInvisible, QList<QString> &mismatched)
{
    ItemWalk walk(items, hazardOf(properties));
    PropertyComparison comparison(properties);
    while (walk.next()) {
        QQuickItem *const item = walk.item();
        if (!searchInvisible && item && !item->isVisible())
            continue;
        const qsizetype failed = comparison.countMismatched(item);
        if (item && !walk.item())
            continue;
        if (failed == 0 && countDown(remaining)) {
            // What the caller had stays for a root, and goes for what is below one.
            if (!walk.isAtRoot())
                mismatched.clear();
            return wrapAndRegisterQObject(item);
        }
        if (mismatched.isEmpty() || failed < mismatched.size())
            mismatched = comparison.mismatchedKeys();
        walk.enterChildren();
    }
    return {};
}

} // namespace Vantle::QtWrapper
