#include "wrappers/qt/objectlookup.h"

#include "hook/class.h"
#include "wrappers/qt/namegenerator.h"
#include "wrappers/qt/namesfile.h"
#include "wrappers/qt/objectnamecache.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>

#include <algorithm>
#include <utility>

namespace Vantle::QtWrapper {

namespace {

const QString occurrenceKey = QStringLiteral("occurrence");

// Beyond this nobody wants to know how many there are exactly.
constexpr qsizetype mostCounted = 1000;

void setOccurrence(ObjectName *name, int occurrence)
{
    name->setProperty(occurrenceKey,
                      PropertyValue(QString::number(occurrence), PropertyValue::Equals, PropertyValue::Text));
}

/// The windows of the program, those that show ahead of the others: what is
/// called without its window is what a user sees.
ObjectList windowsShownFirst()
{
    QWindowList windows = QGuiApplication::topLevelWindows();
    std::stable_partition(windows.begin(), windows.end(), [](const QWindow *window) { return window->isVisible(); });
    ObjectList objects;
    for (QWindow *window : std::as_const(windows))
        objects.push_back(wrapAndRegisterQObject(window));
    return objects;
}

QString quoted(const QString &name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

QString containerOf(const QString &name)
{
    return ObjectName(name).property(QStringLiteral("container")).stringValue();
}

/// The first step of a name, which says the window.
QString windowOf(QString name)
{
    for (QString container = containerOf(name); !container.isEmpty(); container = containerOf(name))
        name = container;
    return name;
}

/// How it shows that \p object is not below \p container.
PropertyDifference placeDifference(const SharedPtr<Object> &container, const SharedPtr<Object> &object)
{
    const QString expected = container->scriptName();
    const QString found = object->scriptName();
    if (windowOf(expected) != windowOf(found))
        return {QStringLiteral("window"), quoted(windowOf(expected)), quoted(windowOf(found))};
    return {QStringLiteral("container"), quoted(expected), quoted(containerOf(found))};
}

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
        return closestBelow({}, name.properties(), limit);
    QString unwanted;
    const SharedPtr<Object> container = find(containerName, &unwanted);
    if (!container)
        return closest(containerName, limit);
    name.removeProperty(QStringLiteral("container"));
    return closestBelow(container, name.properties(), limit);
}

/// A null \p container stands for the whole program.
QList<LookupCandidate> ObjectLookup::closestBelow(const SharedPtr<Object> &container,
                                                  const ObjectName::Properties &properties, qsizetype limit) const
{
    ObjectList inside = container ? objectsBelow(container) : topLevelObjects();
    ObjectList elsewhere;
    const ObjectList windows = windowsShownFirst();
    for (const SharedPtr<Object> &window : windows) {
        const ObjectList below = objectsBelow(window);
        ObjectList &list = container ? elsewhere : inside;
        for (const SharedPtr<Object> &object : below)
            list.push_back(object);
    }
    QList<LookupCandidate> candidates = closestCandidates(*m_generator, inside, properties, limit);
    if (elsewhere.isEmpty() || properties.contains(occurrenceKey))
        return candidates;
    QSet<const QObject *> insiders;
    for (const SharedPtr<Object> &object : inside)
        insiders.insert(nativeQObject(object));
    // What fits wholly but lies somewhere else comes behind what is only hidden.
    qsizetype place = 0;
    while (place < candidates.size() && isOnlyHidden(candidates.at(place)))
        ++place;
    for (const SharedPtr<Object> &object : elsewhere) {
        if (object->isNull() || insiders.contains(nativeQObject(object))
            || !m_generator->mismatchedProperties(object, properties).isEmpty())
            continue;
        candidates.insert(place, {object, {placeDifference(container, object)}});
        break;
    }
    candidates.resize(std::min(candidates.size(), limit));
    return candidates;
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
    closest.removeOne(occurrenceKey);
    for (const SharedPtr<Object> &object : objects) {
        if (object->isNull())
            continue;
        const QList<QString> mismatched = m_generator->mismatchedProperties(object, name.properties());
        if (mismatched.isEmpty() && remaining > 0 && --remaining == 0)
            return object;
        if (mismatched.size() < closest.size())
            closest = mismatched;
    }
    if (const SharedPtr<Object> object = findInWindows(name, &remaining, &closest))
        return object;
    *problem = QStringLiteral("there is no window %1, and nothing of that name in any window%2")
                   .arg(name.qualifiedName(), differenceText(closest));
    return {};
}

/// The first step of \p name is no window: what it means may be in any of them.
SharedPtr<Object> ObjectLookup::findInWindows(const ObjectName &name, int *remaining, QList<QString> *closest) const
{
    const ObjectList windows = windowsShownFirst();
    for (const SharedPtr<Object> &window : windows) {
        const ObjectFinder finder = finderFor(window);
        QObject *const native = nativeQObject(window);
        if (!finder || !native)
            continue;
        // Occurrences count on from one window to the next.
        ObjectName own = name;
        int count = 0;
        SharedPtr<Object> object;
        do {
            QList<QString> mismatched;
            setOccurrence(&own, ++count);
            object = window->isNull() ? SharedPtr<Object>() : finder(native, own, mismatched);
            if (object && --*remaining == 0)
                return object;
            if (!object && count == 1 && !mismatched.isEmpty() && mismatched.size() < closest->size())
                *closest = mismatched;
        } while (object);
    }
    return {};
}

/// How many objects the steps of a name fit that says no occurrence. Who wants to
/// see none of them wants to know whether there are two.
Ambiguity ObjectLookup::ambiguity(const QString &text, qsizetype limit) const
{
    const ObjectName name = m_names->expanded(ObjectName(text));
    if (name.isEmpty() || !unknownAlias(name).isEmpty())
        return {};
    const QString containerName = name.property(QStringLiteral("container")).stringValue();
    if (!containerName.isEmpty()) {
        const Ambiguity ofContainer = ambiguity(containerName, limit);
        if (!ofContainer.step.isEmpty())
            return ofContainer;
    }
    if (name.properties().contains(occurrenceKey))
        return {};
    Ambiguity result;
    for (ObjectName one = name;;) {
        QString unwanted;
        setOccurrence(&one, static_cast<int>(result.count) + 1);
        const SharedPtr<Object> object = findNamed(one, &unwanted);
        if (!object || result.count == (limit > 0 ? mostCounted : 2))
            break;
        ++result.count;
        if (static_cast<qsizetype>(result.objects.size()) < limit)
            result.objects.push_back(object);
    }
    if (result.count > 1)
        result.step = name.qualifiedName();
    return result;
}

SharedPtr<Object> ObjectLookup::findBelow(const SharedPtr<Object> &container, const ObjectName &name,
                                          QString *problem) const
{
    const ObjectFinder finder = finderFor(container);
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

ObjectFinder ObjectLookup::finderFor(const SharedPtr<Object> &container) const
{
    ObjectFinder finder;
    for (const Class *type = container->objectClass(); type && !finder; type = type->super())
        finder = m_finders.value(type);
    return finder;
}

} // namespace Vantle::QtWrapper
