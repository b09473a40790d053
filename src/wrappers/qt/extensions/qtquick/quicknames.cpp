#include "wrappers/qt/extensions/qtquick/quicknames_p.h"

#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/qualifiednames.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"
#include "wrappers/qt/objectnamecache.h"
#include "wrappers/qt/qmltypes.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QPointer>
#include <QtQml/private/qqmlcontextdata_p.h>
#include <QtQml/private/qqmldata_p.h>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace Vantle::QtWrapper {

namespace {

// What a user reads on an item, in order of preference.
constexpr const char *TextProperties[] = {"text", "title", "label", "placeholderText", "source"};

void setText(ObjectName *name, const QString &key, const QString &text)
{
    name->setProperty(key, PropertyValue(text, PropertyValue::Equals, PropertyValue::Text));
}

// The text of a property as it reads when the item is looked up. False if the
// item has no such property.
// Getters run, as in all that takes the item as a guard: it may be gone afterwards.
bool readOwnText(const QPointer<QQuickItem> &item, const QByteArray &property, QString *text)
{
    const QVariant value = item->property(property);
    if (!value.isValid())
        return false;
    // Enumerations are compared by number.
    const bool isEnumeration = value.metaType().flags().testFlag(QMetaType::IsEnumeration);
    *text = isEnumeration ? QString::number(value.toInt()) : value.toString();
    if (item && property == "source")
        normalizeQuickUrlProperty(item, property, *text);
    return true;
}

// What the user types names nothing: the next statement would change it.
bool isTypedByUser(const QQuickItem &item, const char *key)
{
    return qstrcmp(key, "text") == 0 && item.metaObject()->indexOfProperty("cursorPosition") >= 0;
}

// A page of text singles its item out no better than its place does, and
// nobody can read a statement that holds it.
bool isFitForName(const QString &text)
{
    constexpr qsizetype longest = 80;
    return !text.isEmpty() && text.size() <= longest && !text.contains(u'\n');
}

void setFirstReadableText(ObjectName *name, const QPointer<QQuickItem> &item)
{
    for (const char *key : TextProperties) {
        QString text;
        if (!item)
            return;
        if (isTypedByUser(*item, key) || !readOwnText(item, key, &text) || !isFitForName(text))
            continue;
        setText(name, QString::fromLatin1(key), text);
        return;
    }
}

// Only the table of ids. QQmlContext::nameForObject also reads properties of the
// document's root: for a window that makes new objects, and an item that has
// the focus just now would be called "activeFocusItem".
QString declaredId(QObject *object)
{
    // Items that C++ made, such as a Flickable's content item, have none.
    QQmlContext *const publicContext = qmlContext(object);
    if (!publicContext)
        return {};
    const QQmlRefPointer<QQmlContextData> context = QQmlContextData::get(publicContext);
    for (int i = 0; i < context->numIdValues(); ++i) {
        if (context->idValue(i) == object)
            return context->propertyName(i);
    }
    return {};
}

// The properties that tell items apart in most programs.
ObjectName usualName(const QPointer<QQuickItem> &item)
{
    ObjectName name;
    setText(&name, QStringLiteral("type"), QString::fromUtf8(scriptTypeName(item->metaObject())));

    const QString id = declaredId(item);
    if (!id.isEmpty())
        setText(&name, QStringLiteral("id"), id);
    if (!item->objectName().isEmpty())
        setText(&name, QStringLiteral("objectName"), item->objectName());
    if (id.isEmpty() && item->objectName().isEmpty())
        setFirstReadableText(&name, item);
    if (item && item->isVisible())
        setText(&name, QStringLiteral("visible"), QStringLiteral("true"));
    return name;
}

// The text of a property that an extension wants in the name. False where
// neither the item nor an extension has one.
bool readText(const QPointer<QQuickItem> &item, const QString &key, QString *text)
{
    if (key == QLatin1String("type")) {
        *text = QString::fromUtf8(scriptTypeName(item->metaObject()));
        return true;
    }
    if (key == QLatin1String("id")) {
        *text = declaredId(item);
        return true;
    }
    if (key == QLatin1String("unnamed")) {
        *text = item->objectName().isEmpty() ? QStringLiteral("1") : QStringLiteral("0");
        return true;
    }
    return readOwnText(item, key.toLatin1(), text) || VantleQtQuickHook::propertyFor(item, key, text);
}

// Where the item stands, and which of several it is, is not a property of it.
bool isAboutPlace(const QString &key)
{
    return key == QLatin1String("container") || key == QLatin1String("occurrence");
}

// The name as the extensions of the item's window want it. They run scripts,
// which may destroy the item: then there is no name.
ObjectName extendedName(const QPointer<QQuickItem> &item, const ObjectName &usual)
{
    QList<QString> keys = usual.properties().keys();
    if (!VantleQtQuickHook::extraPropertiesFor(item, &keys))
        return item ? usual : ObjectName();
    ObjectName name;
    for (const QString &key : std::as_const(keys)) {
        QString text;
        if (usual.properties().contains(key))
            name.setProperty(key, usual.property(key));
        else if (item && !isAboutPlace(key) && readText(item, key, &text))
            setText(&name, key, text);
    }
    return item ? name : ObjectName();
}

// Where the item is looked for. Only what is above the item will do: below
// anything else it would never be found, and two containers could name each
// other without end. The content item stands for its window.
QObject *containerOf(QQuickItem *item)
{
    const QPointer<QQuickItem> guard(item);
    QQuickWindow *const window = item->window();
    if (!window || window->contentItem() == item)
        return nullptr;
    QQuickItem *const container = VantleQtQuickHook::containerFor(item);
    if (!guard || !guard->window())
        return nullptr;
    if (container && container != guard->window()->contentItem() && container->isAncestorOf(guard))
        return container;
    return guard->window();
}

} // namespace

ObjectName QuickItemNameSource::objectName(QObject *object) const
{
    const QPointer<QQuickItem> item(static_cast<QQuickItem *>(object));
    const ObjectName usual = usualName(item);
    ObjectName name = item ? extendedName(item, usual) : ObjectName();
    if (!item || name.isEmpty())
        return {};
    if (QObject *const container = containerOf(item))
        setText(&name, QStringLiteral("container"), wrapAndRegisterQObject(container)->scriptName());
    return item ? name : ObjectName();
}

QString QuickItemNameSource::realName(QObject *object) const
{
    ObjectName name = objectName(object);
    if (name.isEmpty() || !name.property(QStringLiteral("container")).stringValue().isEmpty())
        return name.qualifiedName();
    const SharedPtr<Object> item = wrapAndRegisterQObject(object);
    Application *const application = Application::self();
    const ObjectList objects = application->topLevelObjects();
    int occurrence = 1;
    for (const SharedPtr<Object> &other : objects) {
        if (other->sameAs(item)) {
            if (occurrence > 1)
                setText(&name, QStringLiteral("occurrence"), QString::number(occurrence));
            break;
        }
        if (application->nameGenerator()->mismatchedProperties(other, name.properties()).isEmpty())
            ++occurrence;
    }
    return name.qualifiedName();
}

QString QuickItemNameSource::scriptName(QObject *object) const
{
    return UnverifiedNames::areWanted() ? realName(object) : qualifiedQuickItemName(wrapAndRegisterQObject(object));
}

bool QuickItemNameSource::propertyValue(QObject *object, const QString &key, QString *value) const
{
    const QPointer<QQuickItem> item(static_cast<QQuickItem *>(object));
    if (key == QLatin1String("id")) {
        *value = idForQuickItem(item);
        return true;
    }
    if (!NameSource::propertyValue(item, key, value))
        return VantleQtQuickHook::propertyFor(item, key, value);
    if (item && key == QLatin1String("source"))
        normalizeQuickUrlProperty(item, "source", *value);
    return true;
}

QString QuickWindowNameSource::idOf(QWindow *window) const
{
    return declaredId(window);
}

} // namespace Vantle::QtWrapper
