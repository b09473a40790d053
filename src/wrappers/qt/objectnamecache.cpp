#include "wrappers/qt/objectnamecache.h"

namespace Vantle::QtWrapper {

namespace {

int openRuns = 0;
int openSnapshots = 0;
int unverifiedScopes = 0;

std::shared_ptr<void> &theFindings()
{
    // Never destroyed, as the cache.
    static auto *const findings = new std::shared_ptr<void>;
    return *findings;
}

ObjectNameCache &theCache()
{
    // Never destroyed, since the last run may end during exit.
    static auto *const cache = new ObjectNameCache;
    return *cache;
}

} // namespace

void ObjectNameCache::addEntry(const ObjectName &name, SharedPtr<Object> object)
{
    if (!name.isEmpty())
        m_objects.insert(name.qualifiedName(), std::move(object));
}

SharedPtr<Object> ObjectNameCache::objectFor(const ObjectName &name) const
{
    const SharedPtr<Object> object = m_objects.value(name.qualifiedName());
    return object && !object->isNull() ? object : SharedPtr<Object>();
}

const ObjectNameCache *ObjectNameCache::current()
{
    return openRuns > 0 ? &theCache() : nullptr;
}

ObjectNameCacheHolder::ObjectNameCacheHolder()
{
    ++openRuns;
}

ObjectNameCacheHolder::~ObjectNameCacheHolder()
{
    if (--openRuns == 0)
        theCache().m_objects.clear();
}

ObjectNameCache &ObjectNameCacheHolder::cache() const
{
    return theCache();
}

NamingSnapshot::NamingSnapshot()
{
    ++openSnapshots;
}

NamingSnapshot::~NamingSnapshot()
{
    if (--openSnapshots == 0)
        theFindings().reset();
}

std::shared_ptr<void> &NamingSnapshot::findings() const
{
    return theFindings();
}

UnverifiedNames::UnverifiedNames()
{
    ++unverifiedScopes;
}

UnverifiedNames::~UnverifiedNames()
{
    --unverifiedScopes;
}

bool UnverifiedNames::areWanted()
{
    return unverifiedScopes > 0;
}

} // namespace Vantle::QtWrapper
