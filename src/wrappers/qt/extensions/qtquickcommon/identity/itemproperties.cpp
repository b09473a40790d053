#include "wrappers/qt/extensions/qtquickcommon/identity/itemproperties_p.h"

#include "hook/inspector.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemwalk_p.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"
#include "wrappers/qt/qmltypes.h"

#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtCore/private/qobject_p.h>
#include <QtQuick/QQuickItem>

namespace Vantle::QtWrapper {

namespace {

bool isEnumeration(const QVariant &value)
{
    return value.metaType().flags().testFlag(QMetaType::IsEnumeration);
}

// QObject::objectName() hands out a copy and looks for bindings that might
// depend on it, which is half the cost of a lookup in a large scene.
const QString &storedObjectName(QQuickItem *item)
{
    static const QString none;
    const auto *const extra = QObjectPrivate::get(item)->extraData;
    return extra ? extra->objectName.valueBypassingBindings() : none;
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
    PropertyComparison comparison(properties);
    comparison.countMismatched(item);
    return comparison.mismatchedKeys();
}

PropertyComparison::PropertyComparison(const ObjectName::Properties &properties)
{
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        if (property.key() != QLatin1String("occurrence"))
            m_expected.push_back({kindOf(property.key()), property.key(), &*property});
    }
    m_needsGuard = m_expected.size() > 1 && hazardOf(properties) == ItemWalk::ItemsMayVanish;
}

PropertyComparison::Kind PropertyComparison::kindOf(const QString &key)
{
    if (key == QLatin1String("type"))
        return Kind::Type;
    if (key == QLatin1String("objectName"))
        return Kind::ObjectName;
    if (key == QLatin1String("id"))
        return Kind::Id;
    return key == QLatin1String("visible") ? Kind::Visible : Kind::Other;
}

qsizetype PropertyComparison::countMismatched(QQuickItem *item)
{
    const QPointer<QQuickItem> guard(m_needsGuard ? item : nullptr);
    qsizetype count = 0;
    for (Expected &expected : m_expected) {
        expected.isMismatched = item && ((m_needsGuard && !guard) || !matches(item, expected));
        count += expected.isMismatched;
    }
    return count;
}

QList<QString> PropertyComparison::mismatchedKeys() const
{
    QList<QString> keys;
    for (const Expected &expected : m_expected) {
        if (expected.isMismatched)
            keys.append(expected.key);
    }
    return keys;
}

bool PropertyComparison::matches(QQuickItem *item, const Expected &expected)
{
    if (expected.kind == Kind::Type)
        return isOfType(item, *expected.value);
    if (expected.kind == Kind::ObjectName)
        return expected.value->matches(storedObjectName(item));
    if (expected.kind == Kind::Visible && hasVisibilityOfItems(item))
        return expected.value->matches(item->isVisible() ? QStringLiteral("true") : QStringLiteral("false"));
    if (expected.kind == Kind::Id && isOutOfQuestion(item, *expected.value))
        return false;
    // A class may go, and another one come to its place, when the program runs.
    m_isOfType.type = m_hasVisibilityOfItems.type = nullptr;
    QString text;
    return itemPropertyValue(item, expected.key, &text) && expected.value->matches(text);
}

bool PropertyComparison::isOutOfQuestion(QQuickItem *item, const PropertyValue &id)
{
    return id.modifiers() == PropertyValue::Equals && !id.stringValue().isEmpty()
        && !mayHaveId(item, id.stringValue().toUtf8());
}

bool PropertyComparison::isOfType(QQuickItem *item, const PropertyValue &type)
{
    if (const QMetaObject *const itsClass = item->metaObject(); itsClass != m_isOfType.type)
        m_isOfType = {itsClass, qmlMatchesTypeProperty(item, type)};
    return m_isOfType.holds;
}

// Nearly every name says whether its item is visible, so this is asked without
// the detour by the property's name, unless a class has replaced the property.
bool PropertyComparison::hasVisibilityOfItems(QQuickItem *item)
{
    static const int ofItems = QQuickItem::staticMetaObject.indexOfProperty("visible");
    if (const QMetaObject *const itsClass = item->metaObject(); itsClass != m_hasVisibilityOfItems.type)
        m_hasVisibilityOfItems = {itsClass, itsClass->indexOfProperty("visible") == ofItems};
    return m_hasVisibilityOfItems.holds;
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
