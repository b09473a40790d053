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
    if (const int occurrence = occurrenceOf(window, name); occurrence > 1)
        setText(&name, QStringLiteral("occurrence"), QString::number(occurrence));
    return name;
}

bool WindowNameSource::propertyValue(QObject *object, const QString &key, QString *value) const
{
    if (key != QLatin1String("id"))
        return NameSource::propertyValue(object, key, value);
    *value = idOf(static_cast<QWindow *>(object));
    return true;
}

// Which of the top-level windows that \p name fits \p window is, counted from 1
// in order of creation; 0 for a window that isn't among them. Counts as the
// lookup does: a name that says little also fits windows with longer names.
int WindowNameSource::occurrenceOf(QWindow *window, const ObjectName &name) const
{
    if (window->parent())
        return 0;
    // The list is in order of creation.
    const QWindowList windows = QGuiApplication::topLevelWindows();
    int occurrence = 0;
    for (QWindow *other : windows) {
        if (other == window)
            return occurrence + 1;
        if (mismatchedProperties(other, name.properties()).isEmpty())
            ++occurrence;
    }
    return 0;
}

QString WindowNameSource::idOf(QWindow *) const
{
    return {};
}

} // namespace Vantle::QtWrapper
