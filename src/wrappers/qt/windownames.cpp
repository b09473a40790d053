#include "wrappers/qt/windownames.h"

#include "wrappers/qt/qmltypes.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>

namespace Vantle::QtWrapper {

namespace {

void setText(ObjectName *name, const QString &key, const QString &text)
{
    name->setProperty(key, PropertyValue(text, PropertyValue::Equals, PropertyValue::Text));
}

} // namespace

ObjectName WindowNameSource::describe(QWindow *window) const
{
    ObjectName name;
    setText(&name, QStringLiteral("type"), QString::fromUtf8(scriptTypeName(window->metaObject())));
    if (const QString objectName = window->objectName(); !objectName.isEmpty())
        setText(&name, QStringLiteral("objectName"), objectName);
    else if (const QString id = idOf(window); !id.isEmpty())
        setText(&name, QStringLiteral("id"), id);
    else if (const QString title = window->title(); !title.isEmpty())
        setText(&name, QStringLiteral("title"), title);
    return name;
}

ObjectName WindowNameSource::objectName(QObject *object) const
{
    auto *const window = static_cast<QWindow *>(object);
    ObjectName name = describe(window);

    // The list of windows is in order of creation.
    int occurrence = 0;
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *other : windows) {
        if (other == window || describe(other) == name)
            ++occurrence;
        if (other == window)
            break;
    }
    if (occurrence > 1)
        setText(&name, QStringLiteral("occurrence"), QString::number(occurrence));
    return name;
}

QString WindowNameSource::idOf(QWindow *) const
{
    return {};
}

} // namespace Vantle::QtWrapper
