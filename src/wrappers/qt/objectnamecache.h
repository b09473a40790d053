#pragma once

#include "hook/object.h"
#include "hook/objectname.h"
#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QHash>

#include <memory>

namespace Vantle::QtWrapper {

/// The names that were given out during one naming run.
///
/// To name an item, its container is named first and then looked up by that
/// name, and so on outwards: with what is kept here the lookup needs no walk.
/// Nothing is kept beyond the run, so a name is always as fresh as the
/// question for it.
class VANTLEQTWRAPPER_EXPORT ObjectNameCache
{
public:
    /// Remembers that \p name was given to \p object. An empty name is not remembered.
    void addEntry(const ObjectName &name, SharedPtr<Object> object);
    /// The living object that was given \p name last; null if there is none.
    SharedPtr<Object> objectFor(const ObjectName &name) const;

    /// The cache of the run that is going on; null outside of one.
    static const ObjectNameCache *current();

private:
    friend class ObjectNameCacheHolder;

    QHash<QString, SharedPtr<Object>> m_objects;
};

/// Makes what happens during its life one naming run. Runs inside of a run are
/// part of it. Lives on the stack of the thread that owns the user interface.
class VANTLEQTWRAPPER_EXPORT ObjectNameCacheHolder
{
public:
    ObjectNameCacheHolder();
    ~ObjectNameCacheHolder();

    ObjectNameCache &cache() const;

private:
    Q_DISABLE_COPY_MOVE(ObjectNameCacheHolder)
};

/// While one lives, whoever chooses names may take it that the scenes stay as
/// they are, and keep what it has found out about them. Snapshots inside of a
/// snapshot are part of it.
///
/// Held while one object is named, which asks about its containers too, or
/// while all objects of a scene are.
class VANTLEQTWRAPPER_EXPORT NamingSnapshot
{
public:
    NamingSnapshot();
    ~NamingSnapshot();

    /// What is kept for the length of the outermost snapshot; null to begin with.
    std::shared_ptr<void> &findings() const;

private:
    Q_DISABLE_COPY_MOVE(NamingSnapshot)
};

/// While one lives, Object::scriptName() gives names as they are generated,
/// without the walk that finds out which of several equal objects is meant.
///
/// For the pointer's moves: they come by the hundred, and no statement holds
/// the name that one of them came with.
class VANTLEQTWRAPPER_EXPORT UnverifiedNames
{
public:
    UnverifiedNames();
    ~UnverifiedNames();

    static bool areWanted();

private:
    Q_DISABLE_COPY_MOVE(UnverifiedNames)
};

} // namespace Vantle::QtWrapper
