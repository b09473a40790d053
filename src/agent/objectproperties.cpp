#include "agent/objectproperties.h"

#include "agent/methodcall.h"
#include "agent/valueencoding.h"

#include <QtCore/QMetaProperty>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlProperty>

namespace Vantle::Agent {

namespace {

QString className(const QObject *object)
{
    return QString::fromUtf8(object->metaObject()->className());
}

QQmlProperty propertyOf(QObject *object, const QString &name)
{
    return QQmlProperty(object, name, qmlContext(object));
}

bool hasDynamicProperty(const QObject *object, const QString &name)
{
    return object->dynamicPropertyNames().contains(name.toUtf8());
}

} // namespace

QJsonObject allProperties(QObject *object, ValueEncoding *encoding)
{
    const QPointer<QObject> guard(object);
    QJsonObject values;
    const QMetaObject *const type = object->metaObject();
    for (int i = 0; guard && i < type->propertyCount(); ++i) {
        const QMetaProperty property = type->property(i);
        if (property.isReadable())
            values.insert(QString::fromLatin1(property.name()), encoding->encode(property.read(object)));
    }
    const QList<QByteArray> dynamic = guard ? object->dynamicPropertyNames() : QList<QByteArray>();
    for (const QByteArray &name : dynamic) {
        // What the toolkit keeps for itself.
        if (guard && !name.startsWith("_q_"))
            values.insert(QString::fromUtf8(name), encoding->encode(object->property(name)));
    }
    return values;
}

QJsonObject namedProperties(QObject *object, const QStringList &names, ValueEncoding *encoding, QString *problem)
{
    const QPointer<QObject> guard(object);
    const QString type = className(object);
    QJsonObject values;
    for (const QString &name : names) {
        const QQmlProperty property = guard ? propertyOf(object, name) : QQmlProperty();
        if (property.isProperty())
            values.insert(name, encoding->encode(property.read()));
        else if (guard && hasDynamicProperty(object, name))
            values.insert(name, encoding->encode(object->property(name.toUtf8())));
        else if (guard && hasMethod(object, name))
            values.insert(name, QJsonObject{{QStringLiteral("type"), QStringLiteral("method")},
                                            {QStringLiteral("text"), name}});
        else
            *problem = QStringLiteral("%1 has no property \"%2\"").arg(type, name);
        if (!problem->isEmpty())
            return {};
    }
    return values;
}

QString writeProperty(QObject *object, const QString &name, const QVariant &value)
{
    const QString type = className(object);
    const QQmlProperty property = propertyOf(object, name);
    if (!property.isProperty()) {
        if (!hasDynamicProperty(object, name))
            return QStringLiteral("%1 has no property \"%2\"").arg(type, name);
        object->setProperty(name.toUtf8(), value);
        return {};
    }
    if (!property.isWritable())
        return QStringLiteral("the property \"%1\" of %2 can only be read").arg(name, type);
    if (!property.write(value)) {
        return QStringLiteral("the property \"%1\" of %2 is a %3 and takes no %4")
            .arg(name, type, QString::fromLatin1(property.propertyTypeName()),
                 value.isValid() ? QString::fromLatin1(value.typeName()) : QStringLiteral("null"));
    }
    return {};
}

} // namespace Vantle::Agent
