#include "wrappers/qt/extensions/qtquick/computedproperties_p.h"

#include "wrappers/qt/extensions/qtquick/labels_p.h"
#include "wrappers/qt/extensions/qtquick/viewentries_p.h"

#include <QtCore/QHash>
#include <QtCore/QMetaProperty>
#include <QtCore/QPointer>
#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <QtQml/qqml.h>
#include <QtQuick/QQuickItem>
#include <QtQuick/private/qquickaccessibleattached_p.h>

namespace Vantle::QtWrapper {

namespace {

using Text = std::optional<QString>;

Text textOrNothing(const QString &text)
{
    return text.isEmpty() ? Text() : Text(text);
}

Text numberOrNothing(int number)
{
    return number < 0 ? Text() : Text(QString::number(number));
}

// Controls set one of their own, their text or value, while a screen reader runs.
Text accessibleName(QQuickItem *item)
{
    const auto *const accessible = qobject_cast<QQuickAccessibleAttached *>(
        qmlAttachedPropertiesObject<QQuickAccessibleAttached>(item, false));
    return accessible && accessible->wasNameExplicitlySet() ? textOrNothing(accessible->name()) : Text();
}

// The icon of a control is a value with properties, that of others an object.
QVariant iconProperty(QQuickItem *item, const char *property)
{
    const QVariant icon = item->property("icon");
    if (const auto *const object = qvariant_cast<QObject *>(icon))
        return object->property(property);
    const QMetaObject *const type = icon.metaType().metaObject();
    const int index = type ? type->indexOfProperty(property) : -1;
    return index >= 0 ? type->property(index).readOnGadget(icon.constData()) : QVariant();
}

Text iconName(QQuickItem *item)
{
    return textOrNothing(iconProperty(item, "name").toString());
}

// Not the whole path, which differs between machines.
Text iconFile(QQuickItem *item)
{
    return textOrNothing(iconProperty(item, "source").toUrl().fileName());
}

Text toolTip(QQuickItem *item)
{
    const QObjectList &children = item->children();
    for (QObject *child : children) {
        if (child->inherits("QQuickToolTipAttached") || child->inherits("QQuickToolTip"))
            return textOrNothing(child->property("text").toString());
    }
    return {};
}

Text index(QQuickItem *item)
{
    const std::optional<ViewEntry> entry = viewEntryOf(item);
    return entry ? numberOrNothing(entry->index) : Text();
}

Text row(QQuickItem *item)
{
    const std::optional<ViewEntry> entry = viewEntryOf(item);
    return entry ? numberOrNothing(entry->row) : Text();
}

Text column(QQuickItem *item)
{
    const std::optional<ViewEntry> entry = viewEntryOf(item);
    return entry ? numberOrNothing(entry->column) : Text();
}

Text label(QQuickItem *item)
{
    return textOrNothing(labelOf(item));
}

using Computation = Text (*)(QQuickItem *);

Computation computationOf(const QString &key)
{
    static const QHash<QString, Computation> computations{
        {QStringLiteral("accessibleName"), accessibleName},
        {QStringLiteral("iconName"), iconName},
        {QStringLiteral("iconFile"), iconFile},
        {QStringLiteral("toolTip"), toolTip},
        {QStringLiteral("label"), label},
        {QStringLiteral("index"), index},
        {QStringLiteral("row"), row},
        {QStringLiteral("column"), column},
    };
    return computations.value(key);
}

} // namespace

std::optional<QString> computedProperty(QQuickItem *item, const QString &key)
{
    const Computation compute = computationOf(key);
    return compute ? compute(item) : Text();
}

bool isComputedProperty(const QString &key)
{
    return computationOf(key);
}

} // namespace Vantle::QtWrapper
