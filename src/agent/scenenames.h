#pragma once

#include "hook/object.h"
#include "hook/objectname.h"
#include "wrappers/qt/objectnamecache.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>

#include <memory>

namespace Vantle::QtWrapper {
class Application;
}

namespace Vantle::Agent {

/// The names of many objects at once: what Object::scriptName() gives for each.
///
/// A name on its own costs a walk over the scene, to find out which of several
/// equal objects is meant. Here each container is walked once and its objects
/// are filed by their texts. For one use: what the program changes meanwhile
/// may not show.
class SceneNames
{
public:
    /// \p application must outlive the names.
    explicit SceneNames(QtWrapper::Application *application);
    ~SceneNames();

    QString nameOf(const SharedPtr<Object> &object);

private:
    Q_DISABLE_COPY_MOVE(SceneNames)

    class Container;
    Container *containerNamed(const QString &name);

    QtWrapper::NamingSnapshot m_snapshot;
    QtWrapper::Application *m_application;
    QHash<QString, std::shared_ptr<Container>> m_containers;
};

} // namespace Vantle::Agent
