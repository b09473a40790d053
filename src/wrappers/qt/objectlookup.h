#pragma once

#include "hook/object.h"
#include "hook/objectname.h"
#include "wrappers/qt/lookupcandidates.h"
#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>

#include <functional>

class QObject;

namespace Vantle {
class Class;
}

namespace Vantle::QtWrapper {

class NameGenerator;
class NamesFile;

/// Lists objects that stand in no container.
using ObjectLister = std::function<ObjectList()>;

/// Looks for what \p name, which comes without its container, means below
/// \p container. A null pointer if there is none; then \p mismatched holds the
/// keys on which the closest object fails, none if nobody can tell.
using ObjectFinder =
    std::function<SharedPtr<Object>(QObject *container, const ObjectName &name, QList<QString> &mismatched)>;

/// What a name fits that leaves open which of several objects it means.
struct Ambiguity
{
    QString step; ///< the step of the name that fits several, as text; empty if none does
    qsizetype count = 0;
    ObjectList objects; ///< the first of them
};

/// Finds objects by the text of their names: windows by itself, what is below
/// a container through the finder that is registered for the container's class.
/// What has no container and is no window is looked for in all windows, those
/// that show first, and then in order of creation.
///
/// Belongs to the thread that owns the user interface.
class VANTLEQTWRAPPER_EXPORT ObjectLookup
{
public:
    /// Both belong to the caller and must live as long as the lookup.
    ObjectLookup(const NameGenerator *generator, const NamesFile *names);

    void registerFinder(const Class *containerClass, ObjectFinder finder);
    void registerTopLevelObjects(ObjectLister lister);

    /// What a name without container is looked for among: the windows in order
    /// of creation, then what was registered.
    ObjectList topLevelObjects() const;

    /// The object that \p text denotes; a null pointer if it denotes nothing,
    /// and then \p problem, which must not be null, says why.
    SharedPtr<Object> find(const QString &text, QString *problem) const;
    /// See Application::ambiguity().
    Ambiguity ambiguity(const QString &text, qsizetype limit) const;
    /// See Application::closestObjects().
    QList<LookupCandidate> closest(const QString &text, qsizetype limit) const;

private:
    SharedPtr<Object> findNamed(const ObjectName &name, QString *problem) const;
    SharedPtr<Object> findTopLevel(const ObjectName &name, QString *problem) const;
    SharedPtr<Object> findInWindows(const ObjectName &name, int *remaining, QList<QString> *closest) const;
    QList<LookupCandidate> closestBelow(const SharedPtr<Object> &container, const ObjectName::Properties &properties,
                                        qsizetype limit) const;
    ObjectFinder finderFor(const SharedPtr<Object> &container) const;
    SharedPtr<Object> findBelow(const SharedPtr<Object> &container, const ObjectName &name, QString *problem) const;

    const NameGenerator *m_generator;
    const NamesFile *m_names;
    QHash<const Class *, ObjectFinder> m_finders;
    QList<ObjectLister> m_listers;
};

} // namespace Vantle::QtWrapper
