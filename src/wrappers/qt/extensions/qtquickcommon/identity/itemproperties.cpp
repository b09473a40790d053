#include "wrappers/qt/extensions/qtquickcommon/identity/itemproperties_p.h"

#include "hook/inspector.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemwalk_p.h"
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
    PropertyComparison(properties).findMismatched(item, &keys);
    return keys;
}

PropertyComparison::PropertyComparison(const ObjectName::Properties &properties)
{
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        if (property.key() == QLatin1String("occurrence"))
            continue;
        const Kind kind = property.key() == QLatin1String("type") ? Kind::Type
            : property.key() == QLatin1String("objectName")       ? Kind::ObjectName
                                                                  : Kind::Other;
        m_expected.push_back({kind, property.key(), &*property});
    }
    m_needsGuard = m_expected.size() > 1 && hazardOf(properties) == ItemWalk::ItemsMayVanish;
}

void PropertyComparison::findMismatched(QQuickItem *item, QList<QString> *keys)
{
    keys->clear();
    if (!item)
        return;
    const QPointer<QQuickItem> guard(m_needsGuard ? item : nullptr);
    for (const Expected &expected : m_expected) {
        if ((m_needsGuard && !guard) || !matches(item, expected))
            keys->append(expected.key);
    }
}

bool PropertyComparison::matches(QQuickItem *item, const Expected &expected)
{
    if (expected.kind == Kind::Type)
        return isOfType(item, *expected.value);
    if (expected.kind == Kind::ObjectName)
        return expected.value->matches(item->objectName());
    // A class may go, and another one come to its place, when the program runs.
    m_lastClass = nullptr;
    QString text;
    return itemPropertyValue(item, expected.key, &text) && expected.value->matches(text);
}

bool PropertyComparison::isOfType(QQuickItem *item, const PropertyValue &type)
{
    if (const QMetaObject *const itsClass = item->metaObject(); itsClass != m_lastClass) {
        m_isLastOfType = qmlMatchesTypeProperty(item, type);
        m_lastClass = itsClass;
    }
    return m_isLastOfType;
}

QQuickItem *toQuickItem(const SharedPtr<Object> &object)
{
    static const Class *const itemClass = Inspector::self()->classByName(
        QString::fromUtf8(QQuickItem::staticMetaObject.className()));
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
