#include "agent/snapshot.h"

#include "agent/objecttree.h"
#include "agent/pictures.h"
#include "agent/scenedigest.h"
#include "agent/scenenames.h"
#include "wrappers/qt/lookupcandidates.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QBuffer>
#include <QtCore/QJsonArray>
#include <QtCore/QMetaProperty>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QUrl>
#include <QtGui/QColor>
#include <QtGui/QWindow>
#include <QtQml/QJSValue>

#include <optional>

namespace Vantle::Agent {

namespace {

constexpr int significantDigits = 15;

/// What follows the real pointer, the window manager or the clock, and so may
/// differ between two programs in the same state.
bool isOfTheMoment(const QObject *object, const QByteArray &property)
{
    static const QSet<QByteArray> anywhere{"hovered", "containsMouse", "mouseX", "mouseY", "cursorVisible"};
    static const QSet<QByteArray> ofWindows{"x", "y", "active", "screen"};
    return anywhere.contains(property) || (object->isWindowType() && ofWindows.contains(property));
}

bool isSecret(const QObject *object)
{
    const QVariant echo = object->property("echoMode");
    return echo.isValid() && echo.toInt() != 0;
}

bool mayBePlain(const QMetaProperty &property)
{
    if (property.isEnumType())
        return true;
    switch (property.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
    case QMetaType::QString:
    case QMetaType::QUrl:
    case QMetaType::QColor:
    case QMetaType::QVariant: // what QML calls var
        return true;
    default: return false;
    }
}

/// A number, text or truth value as text; nothing for a value of another kind.
std::optional<QString> plainText(QVariant value)
{
    if (value.typeId() == qMetaTypeId<QJSValue>()) {
        const QJSValue script = value.value<QJSValue>();
        if (!script.isBool() && !script.isNumber() && !script.isString())
            return std::nullopt;
        value = script.toVariant();
    }
    switch (value.typeId()) {
    case QMetaType::Float:
    case QMetaType::Double: return QString::number(value.toDouble(), 'g', significantDigits);
    case QMetaType::QColor: return value.value<QColor>().name(QColor::HexArgb);
    case QMetaType::QUrl: return value.toUrl().toString();
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::QString: return value.toString();
    default: break;
    }
    // Enumerations.
    bool isNumber = false;
    const int number = value.toInt(&isNumber);
    return isNumber ? std::optional(QString::number(number)) : std::nullopt;
}

QJsonObject valuesOf(QObject *object)
{
    const QPointer<QObject> guard(object);
    const bool hidesTexts = isSecret(object);
    QJsonObject values;
    const QMetaObject *const type = object->metaObject();
    const int count = type->propertyCount();
    for (int i = 0; guard && i < count; ++i) {
        const QMetaProperty property = type->property(i);
        if (!property.isReadable() || !mayBePlain(property) || isOfTheMoment(object, property.name())
            || (hidesTexts && property.typeId() == QMetaType::QString))
            continue;
        if (const auto text = plainText(property.read(object)))
            values.insert(QString::fromLatin1(property.name()), *text);
    }
    return values;
}

QString pictureText(const SharedPtr<Object> &window)
{
    QString problem;
    const QPixmap picture = pictureOf(window, &problem);
    QByteArray png;
    QBuffer buffer(&png);
    if (!picture.isNull())
        picture.save(&buffer, "PNG");
    return QString::fromLatin1(png.toBase64());
}

bool shows(const SharedPtr<Object> &window)
{
    const auto *const native = qobject_cast<QWindow *>(QtWrapper::nativeQObject(window));
    return native && native->isVisible();
}

class SnapshotWriter
{
public:
    explicit SnapshotWriter(QtWrapper::Application *application) : m_names(application) {}

    void add(const SharedPtr<Object> &object)
    {
        QObject *const native = QtWrapper::nativeQObject(object);
        if (!native)
            return;
        const QString className = object->className();
        const QString name = m_names.nameOf(object);
        // Naming runs code of the program.
        if (!object->isNull())
            m_objects.append(QJsonObject{{QStringLiteral("name"), name},
                                         {QStringLiteral("class"), className},
                                         {QStringLiteral("values"), valuesOf(native)}});
    }

    void addPicture(const SharedPtr<Object> &window)
    {
        if (!shows(window))
            return;
        m_windows.append(QJsonObject{{QStringLiteral("name"), m_names.nameOf(window)},
                                     {QStringLiteral("png"), pictureText(window)}});
    }

    QJsonObject result() const
    {
        return {{QStringLiteral("objects"), m_objects}, {QStringLiteral("windows"), m_windows}};
    }

private:
    SceneNames m_names;
    QJsonArray m_objects;
    QJsonArray m_windows;
};

} // namespace

QJsonObject snapshotOf(QtWrapper::Application *application)
{
    SnapshotWriter writer(application);
    const ObjectList windows = topLevelWindows();
    for (const SharedPtr<Object> &window : windows) {
        writer.addPicture(window);
        writer.add(window);
        const ObjectList below = QtWrapper::objectsBelow(window);
        for (const SharedPtr<Object> &object : below)
            writer.add(object);
    }
    QJsonObject result = writer.result();
    result.insert(QStringLiteral("digest"), digestOfScene().toJson());
    return result;
}

} // namespace Vantle::Agent
