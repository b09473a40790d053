#include "agent/valueencoding.h"

#include "agent/objecthandles.h"
#include "hook/class.h"
#include "hook/inspector.h"
#include "protocol/objectmessages.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QBuffer>
#include <QtCore/QDateTime>
#include <QtCore/QDebug>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QSequentialIterable>
#include <QtCore/QUrl>
#include <QtGui/QColor>
#include <QtGui/QPixmap>
#include <QtQml/QJSValue>
#include <QtQml/QQmlListReference>

#include <cmath>
#include <limits>

namespace Vantle::Agent {

namespace {

const QString typeKey = QStringLiteral("type");
const QString textKey = QStringLiteral("text");
const QString objectKey = QStringLiteral("object");

// Values of scripts may hold themselves.
constexpr int deepest = 32;

// A name costs a walk over the scene: a list of thousands of objects comes
// with the first names only.
constexpr int mostNames = 100;

QJsonObject typed(const QString &type, const QString &text)
{
    return {{typeKey, type}, {textKey, text}};
}

QJsonValue fromNumber(double number)
{
    // JSON has no word for these.
    if (!std::isfinite(number))
        return typed(QStringLiteral("double"), QString::number(number));
    return number;
}

QJsonObject fromSize(const QSizeF &size)
{
    return {{typeKey, QStringLiteral("QSizeF")},
            {QStringLiteral("width"), size.width()},
            {QStringLiteral("height"), size.height()}};
}

QJsonObject fromPoint(const QPointF &point)
{
    return {{typeKey, QStringLiteral("QPointF")}, {QStringLiteral("x"), point.x()}, {QStringLiteral("y"), point.y()}};
}

QJsonObject fromRect(const QRectF &rect)
{
    QJsonObject json = fromPoint(rect.topLeft());
    json.insert(typeKey, QStringLiteral("QRectF"));
    json.insert(QStringLiteral("width"), rect.width());
    json.insert(QStringLiteral("height"), rect.height());
    return json;
}

QString debugText(const QVariant &value)
{
    QString text;
    QDebug stream(&text);
    stream.nospace().noquote();
    if (!value.metaType().debugStream(stream, value.constData()))
        stream << value.metaType().name();
    return text.trimmed();
}

/// Whether QML reads members of such a value, as in `font.bold`.
bool hasMembers(QMetaType type)
{
    switch (type.id()) {
    case QMetaType::QFont:
    case QMetaType::QVector2D:
    case QMetaType::QVector3D:
    case QMetaType::QVector4D:
    case QMetaType::QQuaternion:
    case QMetaType::QMatrix4x4: return true;
    default: break;
    }
    const QMetaObject *const members = type.metaObject();
    return type.flags().testFlag(QMetaType::IsGadget) && members && members->propertyCount() > 0;
}

QJsonValue fromOther(const QVariant &value)
{
    const QString type = QString::fromLatin1(value.metaType().name());
    QJsonObject json = typed(type, value.canConvert<QString>() ? value.toString() : debugText(value));
    if (hasMembers(value.metaType()))
        json.insert(QStringLiteral("members"), true);
    return json;
}

/// What needs no look inside; undefined for the rest.
QJsonValue fromPlain(const QVariant &value)
{
    if (value.metaType().flags().testFlag(QMetaType::IsEnumeration))
        return value.toInt();
    switch (value.typeId()) {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
    case QMetaType::Void: return QJsonValue::Null;
    case QMetaType::Bool: return value.toBool();
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::LongLong: return value.toLongLong();
    case QMetaType::ULong:
    case QMetaType::ULongLong: return fromNumber(static_cast<double>(value.toULongLong()));
    case QMetaType::Float:
    case QMetaType::Double: return fromNumber(value.toDouble());
    case QMetaType::QChar:
    case QMetaType::QString: return value.toString();
    case QMetaType::QPoint:
    case QMetaType::QPointF: return fromPoint(value.toPointF());
    case QMetaType::QSize:
    case QMetaType::QSizeF: return fromSize(value.toSizeF());
    case QMetaType::QRect:
    case QMetaType::QRectF: return fromRect(value.toRectF());
    case QMetaType::QColor: return typed(QStringLiteral("QColor"), value.value<QColor>().name(QColor::HexArgb));
    case QMetaType::QUrl: return typed(QStringLiteral("QUrl"), value.toUrl().toString());
    case QMetaType::QDateTime:
        return typed(QStringLiteral("QDateTime"), value.toDateTime().toString(Qt::ISODateWithMs));
    default: return QJsonValue::Undefined;
    }
}

std::optional<QVariant> refuse(QString *problem, const QString &reason)
{
    *problem = reason;
    return std::nullopt;
}

QVariant numberFrom(const QJsonValue &json)
{
    const qint64 whole = json.toInteger(0);
    if (whole != json.toInteger(1))
        return json.toDouble();
    return whole >= std::numeric_limits<int>::min() && whole <= std::numeric_limits<int>::max()
        ? QVariant(static_cast<int>(whole))
        : QVariant(whole);
}

/// A value that tells its type. \p json has no values inside that do so too.
std::optional<QVariant> typedFrom(const QJsonObject &json, QString *problem)
{
    const QString type = json.value(typeKey).toString();
    const auto number = [&](const char *key) { return json.value(QLatin1String(key)).toDouble(); };
    if (type == QLatin1String("QPointF"))
        return QPointF(number("x"), number("y"));
    if (type == QLatin1String("QSizeF"))
        return QSizeF(number("width"), number("height"));
    if (type == QLatin1String("QRectF"))
        return QRectF(number("x"), number("y"), number("width"), number("height"));
    const QString text = json.value(textKey).toString();
    if (type == QLatin1String("QDateTime"))
        return QDateTime::fromString(text, Qt::ISODateWithMs);
    const QMetaType metaType = QMetaType::fromName(type.toLatin1());
    QVariant value(text);
    if (!metaType.isValid() || !value.convert(metaType))
        return refuse(problem, QStringLiteral("there is no value of type \"%1\" with the text \"%2\"").arg(type, text));
    return value;
}

QJsonValue fromPixmap(const QPixmap &pixmap)
{
    QByteArray png;
    QBuffer buffer(&png);
    if (!pixmap.isNull())
        pixmap.save(&buffer, "PNG");
    return QJsonObject{{typeKey, QStringLiteral("QPixmap")},
                       {QStringLiteral("png"), QString::fromLatin1(png.toBase64())},
                       {QStringLiteral("width"), pixmap.width()},
                       {QStringLiteral("height"), pixmap.height()}};
}

} // namespace

QJsonValue ValueEncoding::encode(const QVariant &value)
{
    return encodeAt(0, value);
}

QJsonValue ValueEncoding::encodeAt(int depth, const QVariant &value)
{
    if (depth > deepest)
        return typed(QString::fromLatin1(value.metaType().name()), QStringLiteral("…"));
    if (const QJsonValue plain = fromPlain(value); !plain.isUndefined())
        return plain;
    if (value.metaType().flags().testFlag(QMetaType::PointerToQObject))
        return reference(QtWrapper::wrapAndRegisterQObject(value.value<QObject *>()));
    if (value.metaType() == QMetaType::fromType<QJSValue>())
        return encodeScriptValue(depth, value.value<QJSValue>());
    if (value.canConvert<QPixmap>() && value.typeId() == QMetaType::QPixmap)
        return fromPixmap(value.value<QPixmap>());
    return encodeContainer(depth, value);
}

QJsonValue ValueEncoding::encodeScriptValue(int depth, const QJSValue &value)
{
    // Its properties can't be enumerated, so a map of them would be empty.
    if (value.isError())
        return typed(QStringLiteral("Error"), value.toString());
    if (value.isCallable())
        return typed(QStringLiteral("function"), value.toString());
    if (value.isQObject())
        return reference(QtWrapper::wrapAndRegisterQObject(value.toQObject()));
    const QVariant converted = value.toVariant();
    if (converted.metaType() == QMetaType::fromType<QJSValue>())
        return typed(QStringLiteral("QJSValue"), value.toString());
    return encodeAt(depth + 1, converted);
}

QJsonValue ValueEncoding::encodeContainer(int depth, const QVariant &value)
{
    QJsonArray array;
    const bool isListReference = value.metaType() == QMetaType::fromType<QQmlListReference>();
    if (isListReference || QByteArrayView(value.metaType().name()).startsWith("QQmlListProperty<")) {
        const QQmlListReference list = isListReference ? value.value<QQmlListReference>() : QQmlListReference(value);
        for (qsizetype i = 0; list.canCount() && list.canAt() && i < list.count(); ++i)
            array.append(reference(QtWrapper::wrapAndRegisterQObject(list.at(i))));
        return array;
    }
    if (value.canConvert<QVariantMap>()) {
        QJsonObject members;
        const QVariantMap map = value.toMap();
        for (auto member = map.cbegin(); member != map.cend(); ++member)
            members.insert(member.key(), encodeAt(depth + 1, *member));
        return QJsonObject{{typeKey, QStringLiteral("map")}, {QStringLiteral("value"), members}};
    }
    if (value.typeId() != QMetaType::QByteArray && value.canConvert<QVariantList>()) {
        const QVariantList list = value.toList();
        for (const QVariant &element : list)
            array.append(encodeAt(depth + 1, element));
        return array;
    }
    return fromOther(value);
}

QJsonValue ValueEncoding::encode(const SharedPtr<Object> &object)
{
    if (!object || object->sameAs(Inspector::self()->voidResult()))
        return QJsonValue::Null;
    if (QtWrapper::nativeQObject(object))
        return reference(object);
    void *native = nullptr;
    if (object->objectClass() == QtWrapper::pixmapClass() && object->get(&native))
        return fromPixmap(*static_cast<const QPixmap *>(native));
    return object->objectClass()->writeObject(object);
}

QJsonValue ValueEncoding::reference(const SharedPtr<Object> &object)
{
    const int handle = m_handles->handleFor(object);
    if (handle == 0)
        return QJsonValue::Null;
    const QString className = object->className();
    if (m_naming == WithoutNames)
        return Protocol::ObjectReference{handle, className, std::nullopt}.toJson();
    const QString name = ++m_named <= mostNames ? object->scriptName() : QString();
    return Protocol::ObjectReference{handle, className, name}.toJson();
}

std::optional<QVariant> ValueEncoding::decode(const QJsonValue &json, QString *problem) const
{
    switch (json.type()) {
    case QJsonValue::Null:
    case QJsonValue::Undefined: return QVariant::fromValue(nullptr);
    case QJsonValue::Bool: return json.toBool();
    case QJsonValue::Double: return numberFrom(json);
    case QJsonValue::String: return json.toString();
    case QJsonValue::Array: {
        QVariantList list;
        const QJsonArray array = json.toArray();
        for (const QJsonValue &element : array) {
            const auto value = decode(element, problem);
            if (!value)
                return std::nullopt;
            list.append(*value);
        }
        return list;
    }
    case QJsonValue::Object: break;
    }
    const QJsonObject object = json.toObject();
    if (object.contains(objectKey)) {
        const int handle = object.value(objectKey).toInt();
        const SharedPtr<Object> target = m_handles->objectFor(handle);
        if (!target)
            return refuse(problem, QStringLiteral("the object with the handle %1 is gone").arg(handle));
        return QVariant::fromValue(QtWrapper::nativeQObject(target));
    }
    if (object.value(typeKey).toString() != QLatin1String("map"))
        return typedFrom(object, problem);
    QVariantMap map;
    const QJsonObject members = object.value(QStringLiteral("value")).toObject();
    for (auto member = members.constBegin(); member != members.constEnd(); ++member) {
        const auto value = decode(*member, problem);
        if (!value)
            return std::nullopt;
        map.insert(member.key(), *value);
    }
    return map;
}

std::optional<SharedPtr<Object>> ValueEncoding::decodeArgument(const QJsonValue &json, QString *problem) const
{
    const Inspector *const inspector = Inspector::self();
    const auto value = decode(json, problem);
    if (!value)
        return std::nullopt;
    switch (value->typeId()) {
    case QMetaType::Nullptr: return SharedPtr<Object>();
    case QMetaType::Bool: return inspector->createBoolean(value->toBool());
    case QMetaType::Int: return inspector->createInteger(value->toInt());
    case QMetaType::LongLong:
    case QMetaType::Double: return inspector->createDouble(value->toDouble());
    case QMetaType::QString: return inspector->createString(value->toString());
    default: break;
    }
    if (value->metaType().flags().testFlag(QMetaType::PointerToQObject))
        return QtWrapper::wrapAndRegisterQObject(value->value<QObject *>());
    *problem = QStringLiteral("no function takes a value of the type %1").arg(QLatin1String(value->typeName()));
    return std::nullopt;
}

} // namespace Vantle::Agent
