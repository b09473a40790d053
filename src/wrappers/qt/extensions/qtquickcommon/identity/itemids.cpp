#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLibraryInfo>
#include <QtCore/QMetaProperty>
#include <QtCore/QPointer>
#include <QtCore/QUrl>
#include <QtCore/QVersionNumber>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQml/private/qqmlcontextdata_p.h>
#include <QtQml/private/qqmldata_p.h>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickView>
#include <QtQuick/private/qquickwindowmodule_p.h>

#include <algorithm>
#include <cstring>
#include <optional>

namespace Vantle::QtWrapper {

namespace {

/// Whether the Qt that runs keeps ids the way this file reads them, which is
/// true of the minor version that it was written for and unknown of others.
bool isKnownQt()
{
    static const bool known = QVersionNumber(QT_VERSION_MAJOR, QT_VERSION_MINOR) == QVersionNumber(6, 4)
        && QLibraryInfo::version().majorVersion() == 6 && QLibraryInfo::version().minorVersion() == 4;
    return known;
}

/// The class written in C++ that \p type is or derives from. The meta-objects
/// of classes written in QML come and go and say nothing about inheritance.
const QMetaObject *nativeBase(const QMetaObject *type)
{
    while (type && (std::strstr(type->className(), "_QMLTYPE_") || std::strstr(type->className(), "_QML_")))
        type = type->superClass();
    return type;
}

/// Whether a property of the context object might have \p item as its value.
bool canHold(const QMetaProperty &property, const QQuickItem *item)
{
    const QMetaType type = property.metaType();
    if (!(type.flags() & QMetaType::PointerToQObject))
        return false;
    const QMetaObject *pointedTo = nativeBase(type.metaObject());
    if (!pointedTo || !item->metaObject()->inherits(pointedTo))
        return false;
    // Its type says any object, but it never is an item; and every read makes
    // the window a new child that stays.
    return !(property.enclosingMetaObject() == &QQuickWindowQmlImpl::staticMetaObject
             && std::strcmp(property.name(), "screen") == 0);
}

using Name = std::optional<QString>;

Name nameInIds(const QQmlContextData *context, const QQuickItem *item)
{
    for (int i = 0; i < context->numIdValues(); ++i) {
        if (context->idValue(i) == item)
            return context->propertyName(i);
    }
    return std::nullopt;
}

Name nameInContextProperties(const QQmlContextData *context, const QVariant &item)
{
    if (!context->publicContext())
        return std::nullopt;
    const QQmlContextPrivate *properties = QQmlContextPrivate::get(context->publicContext());
    for (int i = 0; i < properties->numPropertyValues(); ++i) {
        // Only contexts without ids can have properties, so theirs are the
        // first names in the context's table.
        if (properties->propertyValue(i) == item)
            return context->propertyName(i);
    }
    return std::nullopt;
}

Name nameInContextObject(const QObject *contextObject, const QQuickItem *item, const QVariant &itemValue)
{
    if (!contextObject)
        return std::nullopt;
    // A getter may destroy either of them.
    const QPointer<const QObject> contextGuard(contextObject);
    const QPointer<const QQuickItem> itemGuard(item);
    for (const QMetaObject *type = contextObject->metaObject(); type; type = type->superClass()) {
        for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
            const QMetaProperty property = type->property(i);
            if (!canHold(property, item))
                continue;
            const bool isHeld = property.read(contextObject) == itemValue;
            if (!contextGuard || !itemGuard)
                return std::nullopt;
            if (isHeld)
                return QString::fromUtf8(property.name());
        }
    }
    return std::nullopt;
}

/// What QQmlContext::nameForObject gives, in the same order. That function
/// reads every property of the context object that holds any object, which
/// runs getters of the program and fills windows with children.
QString nameInContext(const QQmlContextData *context, QQuickItem *item)
{
    Name name = nameInIds(context, item);
    if (name)
        return *name;
    const QVariant itemValue = QVariant::fromValue<QObject *>(item);
    name = nameInContextProperties(context, itemValue);
    if (!name)
        name = nameInContextObject(context->contextObject(), item, itemValue);
    return name.value_or(QString());
}

QQmlEngine *engineOfContent(QQuickWindow *window)
{
    // A window whose first children are not QML's shows something else; the
    // bound keeps the cost small where there are thousands.
    constexpr qsizetype childLimit = 10;
    const QList<QQuickItem *> children = window->contentItem()->childItems();
    for (qsizetype i = 0; i < std::min(children.size(), childLimit); ++i) {
        if (QQmlEngine *engine = qmlEngine(children[i]))
            return engine;
    }
    return nullptr;
}

} // namespace

QString idForQuickItem(QQuickItem *item)
{
    if (!isKnownQt()) {
        const QQmlContext *context = qmlContext(item);
        return context ? context->nameForObject(item) : QString();
    }
    // Not through qmlContext(), which makes an object for each context that has none.
    const QQmlData *data = item ? QQmlData::get(item) : nullptr;
    return data && data->outerContext ? nameInContext(data->outerContext, item) : QString();
}

bool mayHaveId(QQuickItem *item, const QByteArray &id)
{
    if (!isKnownQt())
        return true;
    const QQmlData *data = item ? QQmlData::get(item) : nullptr;
    const QQmlContextData *context = data ? data->outerContext : nullptr;
    if (!context)
        return false;
    if (nameInIds(context, item)
        || (context->publicContext() && QQmlContextPrivate::get(context->publicContext())->numPropertyValues() > 0))
        return true;
    const QObject *contextObject = context->contextObject();
    return contextObject && contextObject->metaObject()->indexOfProperty(id) >= 0;
}

bool normalizeQuickUrlProperty(QQuickItem *item, const char *name, QString &value)
{
    const QPointer<QQuickItem> guard(item);
    const QVariant variant = item->property(name);
    if (variant.metaType() != QMetaType::fromType<QUrl>())
        return false;
    const QUrl url = variant.toUrl();
    value = url.toString();
    // The getter may have destroyed the item, and what is left then is the URL.
    const QQmlContext *context = guard && url.isLocalFile() ? QQmlEngine::contextForObject(guard) : nullptr;
    if (!context || !context->baseUrl().isLocalFile())
        return true;

    const QString path = QDir::cleanPath(url.toLocalFile());
    const QString documentPath = QDir::cleanPath(context->baseUrl().toLocalFile());
    if (path.isEmpty() || documentPath.isEmpty())
        return true;
    value = path;
    if (QDir::isRelativePath(path))
        return true;
    const QDir directory(QFileInfo(documentPath).absolutePath());
    // Also true of a neighbour whose name begins like the directory's; such a
    // file is as stable relative to the document as one below it.
    if (path.startsWith(directory.path(), Qt::CaseSensitive))
        value = directory.relativeFilePath(path);
    return true;
}

QQmlEngine *qmlEngineForQuickWindow(QQuickWindow *window)
{
    if (!window)
        return nullptr;
    if (const auto *view = qobject_cast<QQuickView *>(window)) {
        if (QQmlEngine *engine = view->engine())
            return engine;
    }
    if (const QQmlContext *context = QQmlEngine::contextForObject(window)) {
        if (QQmlEngine *engine = context->engine())
            return engine;
    }
    return engineOfContent(window);
}

} // namespace Vantle::QtWrapper
