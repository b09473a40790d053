#include "agent/namecheck.h"

#include "agent/objecttree.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/lookupcandidates.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QJsonArray>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

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

} // namespace

QJsonObject checkNames(const QtWrapper::Application *application)
{
    int count = 0;
    QJsonArray failures;
    const ObjectList objects = allObjects();
    for (const SharedPtr<Object> &object : objects) {
        if (object->isNull())
            continue;
        ++count;
        const QString name = object->scriptName();
        // The program may have destroyed it when it was asked.
        if (const QString reason = failureOf(application, object, name); !reason.isEmpty() && !object->isNull())
            failures.append(QJsonObject{{QStringLiteral("name"), name}, {QStringLiteral("reason"), reason}});
    }
    return {{QStringLiteral("items"), count}, {QStringLiteral("failures"), failures}};
}

} // namespace Vantle::Agent
