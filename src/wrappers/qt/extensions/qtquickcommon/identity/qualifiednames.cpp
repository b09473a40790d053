#include "wrappers/qt/extensions/qtquickcommon/identity/qualifiednames.h"

#include "hook/inspector.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemwalk_p.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/qualifiednames_p.h"
#include "wrappers/qt/objectnamecache.h"

#include <QtQuick/QQuickItem>

namespace Vantle::QtWrapper {

namespace {

const QString containerKey = QStringLiteral("container");

/// Adds the occurrence to \p name if it takes one to tell the item from others
/// below \p container, and says so if the item is not found there at all.
void singleOut(ObjectName *name, const SharedPtr<Object> &object, const SharedPtr<Object> &container)
{
    QQuickItem *const item = toQuickItem(object);
    const PropertyValue containerName = name->property(containerKey);
    name->removeProperty(containerKey);
    quint32 count = 0;
    const bool found = countOccurrences(item, containerChildItems(container), name->properties(),
                                        searchesInvisible(name->properties()), count);
    name->setProperty(containerKey, containerName);
    if (count > 1) {
        name->setProperty(QStringLiteral("occurrence"),
                          PropertyValue(QString::number(count), PropertyValue::Equals, PropertyValue::Text));
    }
    if (!found) {
        QtQuickCommon::logWarning("qualifiedItemName: failed to find myself with the generated name (%s). "
                                  "Might indicate a problem.",
                                  qUtf8Printable(name->qualifiedName()));
    }
}

} // namespace

QString qualifiedQuickItemName(SharedPtr<Object> object)
{
    Application *const application = Application::self();
    NameGenerator *const generator = application->nameGenerator();
    const ObjectNameCacheHolder holder;

    ObjectName name = generator->objectName(object, false);
    if (name.isEmpty()) {
        holder.cache().addEntry(ObjectName(QString()), object);
        return {};
    }
    const QString containerName = name.property(containerKey).stringValue();
    if (containerName.isEmpty())
        return generator->realName(object, true);
    const SharedPtr<Object> container = application->objectForName(containerName);
    if (!container) {
        QtQuickCommon::logWarning("qualifiedItemName: failed to find container for generated name (%s).",
                                  qUtf8Printable(containerName));
        return generator->realName(object, true);
    }

    singleOut(&name, object, container);
    const QString qualified = name.qualifiedName();
    const QString mapped = application->mappedNameFor(object, qualified);
    const QString text = mapped.isEmpty() ? qualified : mapped;
    holder.cache().addEntry(ObjectName(text), object);
    return text;
}

QList<QQuickItem *> containerChildItems(const SharedPtr<Object> &container)
{
    static const Class *const itemClass = Inspector::self()->classByName(QStringLiteral("QQuickItem"));
    QList<QQuickItem *> items;
    const ObjectList children = container->children();
    for (const SharedPtr<Object> &child : children) {
        // A child may die while the list is made; then it is no candidate.
        QQuickItem *const item = child->isA(itemClass) ? toQuickItem(child) : nullptr;
        if (item)
            items.append(item);
    }
    return items;
}

bool countOccurrences(QQuickItem *target, const QList<QQuickItem *> &candidates,
                      const ObjectName::Properties &properties, bool searchInvisible, quint32 &count)
{
    ItemWalk walk(candidates, hazardOf(properties));
    PropertyComparison comparison(properties);
    while (walk.next()) {
        QQuickItem *const item = walk.item();
        const bool isMatch = comparison.countMismatched(item) == 0;
        // An item that died while it was compared is none that the lookup meets.
        if (isMatch && (!item || walk.item()))
            ++count;
        if (item == target)
            return true;
        if (walk.item() && (searchInvisible || item->isVisible()))
            walk.enterChildren();
    }
    return false;
}

} // namespace Vantle::QtWrapper
