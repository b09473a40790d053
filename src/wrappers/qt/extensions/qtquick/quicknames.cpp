#include "wrappers/qt/extensions/qtquick/quicknames_p.h"

#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"
#include "wrappers/qt/qmltypes.h"
#include "wrappers/qt/wrapping.h"

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

void setFirstReadableText(ObjectName *name, QQuickItem *item)
{
    for (const char *key : TextProperties) {
        QString text = item->property(key).toString();
        if (text.isEmpty())
            continue;
        if (qstrcmp(key, "source") == 0)
            normalizeQuickUrlProperty(item, key, text);
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

QString containerName(QQuickItem *item)
{
    QQuickWindow *const window = item->window();
    if (!window || window->contentItem() == item)
        return {};
    return Application::self()->nameGenerator()->realName(wrapAndRegisterQObject(window), true);
}

} // namespace

ObjectName QuickItemNameSource::objectName(QObject *object) const
{
    auto *const item = static_cast<QQuickItem *>(object);
    ObjectName name;
    setText(&name, QStringLiteral("type"), QString::fromUtf8(scriptTypeName(item->metaObject())));

    const QString id = declaredId(item);
    if (!id.isEmpty())
        setText(&name, QStringLiteral("id"), id);
    if (!item->objectName().isEmpty())
        setText(&name, QStringLiteral("objectName"), item->objectName());
    if (id.isEmpty() && item->objectName().isEmpty())
        setFirstReadableText(&name, item);
    if (item->isVisible())
        setText(&name, QStringLiteral("visible"), QStringLiteral("true"));

    if (const QString container = containerName(item); !container.isEmpty())
        setText(&name, QStringLiteral("container"), container);
    return name;
}

QString QuickWindowNameSource::idOf(QWindow *window) const
{
    return declaredId(window);
}

} // namespace Vantle::QtWrapper
