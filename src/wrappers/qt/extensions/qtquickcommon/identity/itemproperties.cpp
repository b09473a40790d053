#include "wrappers/qt/extensions/qtquickcommon/identity/itemproperties_p.h"

#include "hook/inspector.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"
#include "wrappers/qt/qmltypes.h"

#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtQuick/QQuickItem>

namespace Vantle::QtWrapper {

namespace {

bool isEnumeration(const QVariant &value)
{
    return value.metaType().flags().testFlag(QMetaType::IsEnumeration);
}

bool matches(QQuickItem *item, const QString &key, const PropertyValue &value)
{
    if (key == QLatin1String("type"))
        return qmlMatchesTypeProperty(item, value);
    QString text;
    return itemPropertyValue(item, key, &text) && value.matches(text);
}

} // namespace

bool itemPropertyValue(QQuickItem *item, const QString &key, QString *value)
{
    if (key == QLatin1String("objectName")) {
        *value = item->objectName();
        return true;
    }
    if (key == QLatin1String("unnamed")) {
        *value = item->objectName().isEmpty() ? QStringLiteral("1") : QStringLiteral("0");
        return true;
    }
    if (key == QLatin1String("id")) {
        *value = idForQuickItem(item);
        return true;
    }
    const QPointer<QQuickItem> guard(item);
    const QVariant property = item->property(key.toLatin1());
    if (!property.isValid())
        return VantleQtQuickHook::propertyFor(guard, key, value);
    if (isEnumeration(property)) {
        *value = QString::number(property.toInt());
        return true;
    }
    *value = property.toString();
    if (guard && key == QLatin1String("source"))
        normalizeQuickUrlProperty(item, "source", *value);
    return true;
}

QList<QString> mismatchedProperties(QQuickItem *item, const ObjectName::Properties &properties)
{
    QList<QString> keys;
    findMismatchedProperties(item, properties, &keys);
    return keys;
}

void findMismatchedProperties(QQuickItem *item, const ObjectName::Properties &properties, QList<QString> *keys)
{
    keys->clear();
    if (!item)
        return;
    const bool mayVanish = properties.size() > 1;
    const QPointer<QQuickItem> guard(mayVanish ? item : nullptr);
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        if (property.key() == QLatin1String("occurrence"))
            continue;
        if ((mayVanish && !guard) || !matches(item, property.key(), *property))
            keys->append(property.key());
    }
}

QQuickItem *toQuickItem(const SharedPtr<Object> &object)
{
    static const Class *const itemClass =
        Inspector::self()->classByName(QString::fromUtf8(QQuickItem::staticMetaObject.className()));
    void *native = nullptr;
    if (!object || !object->isA(itemClass) || !object->get(&native))
        return nullptr;
    return static_cast<QQuickItem *>(static_cast<QObject *>(native));
}

bool searchesInvisible(const ObjectName::Properties &properties)
{
    const auto visible = properties.constFind(QStringLiteral("visible"));
    return visible == properties.cend() || visible->stringValue() == QLatin1String("false");
}

} // namespace Vantle::QtWrapper
