#include "agent/objecttree.h"

#include "agent/scenenames.h"
#include "hook/delegates.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QVariant>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>

namespace Vantle::Agent {

namespace {

// Readers of JSON give up where values are nested more than a thousand deep,
// and each level here nests two.
constexpr int deepest = 400;

bool isVisible(const QObject *object)
{
    return object->property("visible").toBool();
}

class TreeWriter
{
public:
    explicit TreeWriter(QtWrapper::Application *application) : m_application(application), m_names(application) {}

    Protocol::TreeNode write(const SharedPtr<Object> &object, int depth = 0)
    {
        Protocol::TreeNode node;
        const QtWrapper::NameGenerator *const generator = m_application->nameGenerator();
        node.className = object->className();
        generator->propertyText(object, QStringLiteral("type"), &node.type);
        node.name = m_names.nameOf(object);
        generator->propertyText(object, QStringLiteral("id"), &node.id);
        node.geometry = screenRect(object);
        node.notReady = notReadyReason(object);
        if (const QObject *const native = QtWrapper::nativeQObject(object))
            node.visible = isVisible(native);
        if (depth == deepest)
            return node;
        const ObjectList children = object->children();
        for (const SharedPtr<Object> &child : children) {
            if (!isTopLevelWindow(child))
                node.children.append(write(child, depth + 1));
        }
        return node;
    }

private:
    // A window that another one owns stands in the tree by itself.
    static bool isTopLevelWindow(const SharedPtr<Object> &object)
    {
        const auto *const window = qobject_cast<QWindow *>(QtWrapper::nativeQObject(object));
        return window && !window->parent();
    }

    QtWrapper::Application *m_application;
    SceneNames m_names;
};

} // namespace

ObjectList topLevelWindows()
{
    ObjectList objects;
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows)
        objects.push_back(QtWrapper::wrapAndRegisterQObject(window));
    return objects;
}

Protocol::Description describeObject(const SharedPtr<Object> &object)
{
    Protocol::Description description;
    description.className = object->className();
    description.name = object->scriptName();
    description.geometry = screenRect(object);
    description.notReady = notReadyReason(object);
    // Naming and readiness run code of the program.
    if (const QObject *const native = QtWrapper::nativeQObject(object)) {
        const QVariant enabled = native->property("enabled");
        description.visible = isVisible(native);
        description.enabled = !enabled.isValid() || enabled.toBool();
    }
    return description;
}

QList<Protocol::TreeNode> objectTree(QtWrapper::Application *application)
{
    TreeWriter writer(application);
    QList<Protocol::TreeNode> nodes;
    const ObjectList windows = topLevelWindows();
    for (const SharedPtr<Object> &window : windows)
        nodes.append(writer.write(window));
    return nodes;
}

QString notReadyReason(const SharedPtr<Object> &object)
{
    const InteractionDelegate *const delegate = DelegateFactory::self()->interactionDelegate(object->objectClass());
    return delegate ? delegate->notReadyReason(object) : QStringLiteral("nobody can act on such an object");
}

QRect screenRect(const SharedPtr<Object> &object)
{
    const GeometryDelegate *const delegate = DelegateFactory::self()->geometryDelegate(object->objectClass());
    return delegate ? delegate->screenRect(object) : QRect(0, 0, -1, -1);
}

} // namespace Vantle::Agent
