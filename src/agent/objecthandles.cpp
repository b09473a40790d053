#include "agent/objecthandles.h"

#include <algorithm>

namespace Vantle::Agent {

int ObjectHandles::handleFor(const SharedPtr<Object> &object)
{
    if (!object || object->isNull())
        return 0;
    if (const int known = m_handles.value(object.get()))
        return known;
    forgetTheDead();
    m_objects.insert(++m_last, object);
    m_handles.insert(object.get(), m_last);
    return m_last;
}

SharedPtr<Object> ObjectHandles::objectFor(int handle) const
{
    const SharedPtr<Object> object = m_objects.value(handle);
    return object && !object->isNull() ? object : SharedPtr<Object>();
}

void ObjectHandles::release(int handle)
{
    const SharedPtr<Object> object = m_objects.take(handle);
    m_handles.remove(object.get());
}

// A tool that never releases anything must not make us hold what is gone.
void ObjectHandles::forgetTheDead()
{
    if (m_objects.size() < m_nextCleaning)
        return;
    m_handles.removeIf([](const auto &entry) { return entry.key()->isNull(); });
    m_objects.removeIf([](const auto &entry) { return entry.value()->isNull(); });
    m_nextCleaning = std::max<qsizetype>(m_nextCleaning, 2 * m_objects.size());
}

} // namespace Vantle::Agent
