#include "wrappers/qt/namegenerator.h"

#include "hook/class.h"
#include "wrappers/qt/qmltypes.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QPointer>
#include <QtCore/QVariant>

namespace Vantle::QtWrapper {

NameSource::~NameSource() = default;

QString NameSource::realName(QObject *object) const
{
    return objectName(object).qualifiedName();
}

QString NameSource::scriptName(QObject *object) const
{
    return realName(object);
}

bool NameSource::propertyValue(QObject *object, const QString &key, QString *value) const
{
    if (key == QLatin1String("unnamed")) {
        *value = object->objectName().isEmpty() ? QStringLiteral("1") : QStringLiteral("0");
        return true;
    }
    const QVariant property = object->property(key.toLatin1());
    if (!property.isValid())
        return false;
    const bool isEnumeration = property.metaType().flags().testFlag(QMetaType::IsEnumeration);
    *value = isEnumeration ? QString::number(property.toInt()) : property.toString();
    return true;
}

QList<QString> NameSource::mismatchedProperties(QObject *object, const ObjectName::Properties &properties) const
{
    const QPointer<QObject> guard(object);
    const auto matches = [&](const QString &key, const PropertyValue &value) {
        if (key == QLatin1String("type"))
            return qmlMatchesTypeProperty(object, value);
        QString text;
        return propertyValue(object, key, &text) && value.matches(text);
    };
    QList<QString> keys;
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        if (property.key() == QLatin1String("occurrence"))
            continue;
        // A getter may have destroyed the object.
        if (!guard || !matches(property.key(), *property))
            keys.append(property.key());
    }
    return keys;
}

/// A living object and who names it; both are set, or neither. Naming runs code
/// of the program, so the source is kept until it is done.
struct NameGenerator::Target
{
    QObject *object = nullptr;
    std::shared_ptr<const NameSource> source;
};

NameGenerator::NameGenerator() = default;
NameGenerator::~NameGenerator() = default;

void NameGenerator::registerSource(const Class *type, std::unique_ptr<NameSource> source)
{
    m_sources.insert(type, std::move(source));
}

NameGenerator::Target NameGenerator::targetFor(const SharedPtr<Object> &object) const
{
    QObject *const native = nativeQObject(object);
    if (!native)
        return {};
    for (const Class *type = object->objectClass(); type; type = type->super()) {
        if (const auto source = m_sources.constFind(type); source != m_sources.constEnd())
            return {native, *source};
    }
    return {};
}

ObjectName NameGenerator::objectName(const SharedPtr<Object> &object, bool) const
{
    const Target target = targetFor(object);
    return target.source ? target.source->objectName(target.object) : ObjectName();
}

QString NameGenerator::realName(const SharedPtr<Object> &object, bool) const
{
    const Target target = targetFor(object);
    return target.source ? target.source->realName(target.object) : QString();
}

QString NameGenerator::scriptName(const SharedPtr<Object> &object) const
{
    const Target target = targetFor(object);
    return target.source ? target.source->scriptName(target.object) : QString();
}

QList<QString> NameGenerator::mismatchedProperties(const SharedPtr<Object> &object,
                                                   const ObjectName::Properties &properties) const
{
    const Target target = targetFor(object);
    return target.source ? target.source->mismatchedProperties(target.object, properties) : properties.keys();
}

bool NameGenerator::propertyText(const SharedPtr<Object> &object, const QString &key, QString *text) const
{
    const Target target = targetFor(object);
    if (!target.source)
        return false;
    if (key != QLatin1String("type"))
        return target.source->propertyValue(target.object, key, text);
    *text = QString::fromUtf8(scriptTypeName(target.object->metaObject()));
    return true;
}

} // namespace Vantle::QtWrapper
