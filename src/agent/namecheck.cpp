#include "agent/namecheck.h"

#include "agent/objecttree.h"
#include "hook/objectname.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"
#include "wrappers/qt/lookupcandidates.h"
#include "wrappers/qt/objectnamecache.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QJsonArray>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickitem_p.h>

namespace Vantle::Agent {

namespace {

/// Windows, what they are filled with, and everything below that.
ObjectList allObjects()
{
    ObjectList all;
    const ObjectList windows = topLevelWindows();
    for (const SharedPtr<Object> &window : windows) {
        all.push_back(window);
        if (const auto *const quickWindow = qobject_cast<QQuickWindow *>(QtWrapper::nativeQObject(window)))
            all.push_back(QtWrapper::wrapAndRegisterQObject(quickWindow->contentItem()));
        const ObjectList below = QtWrapper::objectsBelow(window);
        for (const SharedPtr<Object> &object : below)
            all.push_back(object);
    }
    return all;
}

/// Why the name of \p object doesn't lead to it; empty if it does.
QString failureOf(const QtWrapper::Application *application, const SharedPtr<Object> &object, const QString &name)
{
    if (name.isEmpty())
        return QStringLiteral("the %1 has no name").arg(object->className());
    QString problem;
    const SharedPtr<Object> found = application->objectForName(name, &problem);
    if (!found)
        return problem;
    return found->sameAs(object) ? QString()
                                 : QStringLiteral("leads to another object, of type %1").arg(found->className());
}

/// Whether a click of the user may mean \p object: an item that could answer
/// presses now, and that recordings name.
bool takesPresses(const SharedPtr<Object> &object)
{
    auto *const item = qobject_cast<QQuickItem *>(QtWrapper::nativeQObject(object));
    if (!item || !item->isVisible() || !item->isEnabled())
        return false;
    if (item->acceptedMouseButtons() == Qt::NoButton && !QQuickItemPrivate::get(item)->hasPointerHandlers())
        return false;
    bool ignored = false;
    return !VantleQtQuickHook::isIgnored(item, &ignored) || !ignored;
}

/// Whether \p name only counts which of several equal objects is meant, in any of its steps.
bool isCounted(const QString &name)
{
    for (ObjectName step(name); !step.isEmpty();
         step = ObjectName(step.property(QStringLiteral("container")).stringValue())) {
        if (step.occurrenceValue() > 1)
            return true;
    }
    return false;
}

} // namespace

QJsonObject checkNames(const QtWrapper::Application *application)
{
    const QtWrapper::NamingSnapshot snapshot;
    int count = 0;
    int pressable = 0;
    QJsonArray failures;
    QJsonArray counted;
    const ObjectList objects = allObjects();
    for (const SharedPtr<Object> &object : objects) {
        if (object->isNull())
            continue;
        ++count;
        const QString name = object->scriptName();
        // The program may have destroyed it when it was asked.
        if (const QString reason = failureOf(application, object, name); !reason.isEmpty() && !object->isNull())
            failures.append(QJsonObject{{QStringLiteral("name"), name}, {QStringLiteral("reason"), reason}});
        if (!takesPresses(object))
            continue;
        ++pressable;
        if (isCounted(name))
            counted.append(name);
    }
    return {{QStringLiteral("items"), count},
            {QStringLiteral("failures"), failures},
            {QStringLiteral("pressable"), pressable},
            {QStringLiteral("counted"), counted}};
}

} // namespace Vantle::Agent
