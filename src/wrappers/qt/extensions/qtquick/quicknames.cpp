#include "wrappers/qt/extensions/qtquick/quicknames_p.h"

#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/itemtexts_p.h"
#include "wrappers/qt/extensions/qtquick/namechoice_p.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/qualifiednames.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"
#include "wrappers/qt/objectnamecache.h"
#include "wrappers/qt/qmltypes.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QPointer>
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

void setFirstReadableText(ObjectName *name, const QPointer<QQuickItem> &item)
{
    for (const char *key : TextProperties) {
        QString text;
        if (!item)
            return;
        const bool isText = qstrcmp(key, "text") == 0;
        if (!readOwnText(item, key, &text) || !isFitForName(text) || !item || (isText && isTextOfUser(item)))
            continue;
        setText(name, QString::fromLatin1(key), text);
        return;
    }
}

// What the item says of itself, without a look at others that say the same.
ObjectName ownName(const QPointer<QQuickItem> &item)
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

bool standsInScene(const QQuickItem *item)
{
    const QQuickWindow *const window = item->window();
    return window && window->contentItem() != item;
}

// What extensions want \p item to be looked for in. Only what is above the item
// will do: below anything else it would never be found, and two containers
// could name each other without end. The content item stands for its window.
QQuickItem *wantedContainer(const QPointer<QQuickItem> &item)
{
    QQuickItem *const container = VantleQtQuickHook::containerFor(item);
    const bool isAbove = container && item && item->window() && container != item->window()->contentItem()
        && container->isAncestorOf(item);
    return isAbove ? container : nullptr;
}

std::shared_ptr<NameChooser> chooserFor(QQuickWindow *window, const NamingSnapshot &snapshot)
{
    auto chooser = std::static_pointer_cast<NameChooser>(snapshot.findings());
    if (!chooser || chooser->window() != window) {
        chooser = std::make_shared<NameChooser>(window);
        snapshot.findings() = chooser;
    }
    return chooser;
}

// The name that singles the item out among all of its window.
ObjectName chosenName(const QPointer<QQuickItem> &item, QPointer<QQuickItem> *container)
{
    const NamingSnapshot snapshot;
    const NameChoice choice = chooserFor(item->window(), snapshot)->choose(item, *container);
    if (!item)
        return {};
    if (!*container)
        *container = choice.container;
    ObjectName name;
    setText(&name, QStringLiteral("type"), QString::fromUtf8(scriptTypeName(item->metaObject())));
    for (auto text = choice.texts.cbegin(); text != choice.texts.cend(); ++text)
        setText(&name, text.key(), *text);
    if (item->isVisible())
        setText(&name, QStringLiteral("visible"), QStringLiteral("true"));
    return name;
}

} // namespace

ObjectName QuickItemNameSource::objectName(QObject *object) const
{
    const NamingSnapshot snapshot;
    const QPointer<QQuickItem> item(static_cast<QQuickItem *>(object));
    QPointer<QQuickItem> container;
    if (standsInScene(item))
        container = wantedContainer(item);
    if (!item)
        return {};
    const bool isChosen = standsInScene(item) && !UnverifiedNames::areWanted();
    const ObjectName usual = isChosen ? chosenName(item, &container) : ownName(item);
    ObjectName name = item ? extendedName(item, usual) : ObjectName();
    if (!item || name.isEmpty())
        return {};
    if (standsInScene(item)) {
        QObject *const place = container ? static_cast<QObject *>(container) : item->window();
        setText(&name, QStringLiteral("container"), wrapAndRegisterQObject(place)->scriptName());
    }
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
    const NamingSnapshot snapshot;
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
