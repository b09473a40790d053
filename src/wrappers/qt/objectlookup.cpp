#include "wrappers/qt/objectlookup.h"

#include "hook/class.h"
#include "wrappers/qt/namegenerator.h"
#include "wrappers/qt/namesfile.h"
#include "wrappers/qt/objectnamecache.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QStringList>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>

namespace Vantle::QtWrapper {

namespace {

// What the closest candidate fails on, as the end of a sentence.
QString differenceText(const QList<QString> &mismatched)
{
    if (mismatched.isEmpty())
        return {};
    return QStringLiteral("; the closest one differs in %1").arg(mismatched.join(QLatin1String(", ")));
}

// The step of a name that an unknown alias stands in, empty if there is none.
// Names with known aliases have been expanded before.
QString unknownAlias(const ObjectName &name)
{
    return name.properties().size() == 1 ? name.property(QStringLiteral("alias")).stringValue() : QString();
}

} // namespace

ObjectLookup::ObjectLookup(const NameGenerator *generator, const NamesFile *names)
    : m_generator(generator)
    , m_names(names)
{
}

void ObjectLookup::registerFinder(const Class *containerClass, ObjectFinder finder)
{
    m_finders.insert(containerClass, std::move(finder));
}

void ObjectLookup::registerTopLevelObjects(ObjectLister lister)
{
    m_listers.append(std::move(lister));
}

ObjectList ObjectLookup::topLevelObjects() const
{
    ObjectList objects;
    // In order of creation, which is the one that occurrences count in.
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows)
        objects.push_back(wrapAndRegisterQObject(window));
    for (const ObjectLister &lister : m_listers) {
        const ObjectList others = lister();
        for (const SharedPtr<Object> &object : others)
            objects.push_back(object);
    }
    return objects;
}

SharedPtr<Object> ObjectLookup::find(const QString &text, QString *problem) const
{
    problem->clear();
    ObjectName::ParseError error;
    const ObjectName name = ObjectName::parse(text, &error);
    if (error) {
        *problem = QStringLiteral("%1 is no name: column %2: %3")
                       .arg(text, QString::number(error.column), error.message);
        return {};
    }
    if (name.isEmpty()) {
        *problem = QStringLiteral("the name is empty");
        return {};
    }
    if (const ObjectNameCache *const cache = ObjectNameCache::current()) {
        if (const SharedPtr<Object> object = cache->objectFor(name))
            return object;
    }
    return findNamed(m_names->expanded(name), problem);
}

QList<LookupCandidate> ObjectLookup::closest(const QString &text, qsizetype limit) const
{
    ObjectName name = m_names->expanded(ObjectName(text));
    if (name.isEmpty() || !unknownAlias(name).isEmpty())
        return {};
    const QString containerName = name.property(QStringLiteral("container")).stringValue();
    if (containerName.isEmpty())
        return closestCandidates(*m_generator, topLevelObjects(), name.properties(), limit);
    QString unwanted;
    const SharedPtr<Object> container = find(containerName, &unwanted);
    if (!container)
        return closest(containerName, limit);
    name.removeProperty(QStringLiteral("container"));
    return closestCandidates(*m_generator, objectsBelow(container), name.properties(), limit);
}

SharedPtr<Object> ObjectLookup::findNamed(const ObjectName &name, QString *problem) const
{
    const QString containerKey = QStringLiteral("container");
    if (const QString alias = unknownAlias(name); !alias.isEmpty()) {
        *problem = QStringLiteral("there is no alias @%1").arg(alias);
        return {};
    }
    const QString containerName = name.property(containerKey).stringValue();
    if (containerName.isEmpty())
        return findTopLevel(name, problem);
    const SharedPtr<Object> container = find(containerName, problem);
    if (!container)
        return {};
    ObjectName own = name;
    own.removeProperty(containerKey);
    const SharedPtr<Object> object = findBelow(container, own, problem);
    if (!object)
        *problem = QStringLiteral("below %1 %2").arg(containerName, *problem);
    return object;
}

SharedPtr<Object> ObjectLookup::findTopLevel(const ObjectName &name, QString *problem) const
{
    const ObjectList objects = topLevelObjects();
    int remaining = name.occurrenceValue();
    QList<QString> closest = name.properties().keys();
    closest.removeOne(QStringLiteral("occurrence"));
    for (const SharedPtr<Object> &object : objects) {
        if (object->isNull())
            continue;
        const QList<QString> mismatched = m_generator->mismatchedProperties(object, name.properties());
        if (mismatched.isEmpty() && remaining > 0 && --remaining == 0)
            return object;
        if (mismatched.size() < closest.size())
            closest = mismatched;
    }
    *problem = QStringLiteral("there is no window %1%2").arg(name.qualifiedName(), differenceText(closest));
    return {};
}

SharedPtr<Object> ObjectLookup::findBelow(const SharedPtr<Object> &container, const ObjectName &name,
                                          QString *problem) const
{
    ObjectFinder finder;
    for (const Class *type = container->objectClass(); type && !finder; type = type->super())
        finder = m_finders.value(type);
    if (!finder) {
        *problem = QStringLiteral("nothing can be found, as it is a %1").arg(container->className());
        return {};
    }
    QList<QString> mismatched;
    QObject *const native = nativeQObject(container);
    const SharedPtr<Object> object = native ? finder(native, name, mismatched) : SharedPtr<Object>();
    if (!object)
        *problem = QStringLiteral("there is no %1%2").arg(name.qualifiedName(), differenceText(mismatched));
    return object;
}

} // namespace Vantle::QtWrapper
