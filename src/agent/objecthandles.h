#pragma once

#include "hook/object.h"

#include <QtCore/QHash>

namespace Vantle::Agent {

/// The numbers by which the tool refers to objects of the program.
///
/// An object that is alive has one number for as long as the tool doesn't
/// release it; numbers are never given again. Holding a number doesn't keep the
/// object alive.
class ObjectHandles
{
public:
    /// The number of \p object, above 0; 0 for a null pointer and a dead object.
    int handleFor(const SharedPtr<Object> &object);
    /// The object behind \p handle. A null pointer for an unknown number and
    /// one whose object is gone.
    SharedPtr<Object> objectFor(int handle) const;
    /// Whether \p handle was given out and not released since.
    bool isKnown(int handle) const { return m_objects.contains(handle); }
    /// Forgets \p handle. An unknown one does no harm.
    void release(int handle);

private:
    void forgetTheDead();

    QHash<int, SharedPtr<Object>> m_objects;
    QHash<const Object *, int> m_handles;
    qsizetype m_nextCleaning = 1024;
    int m_last = 0;
};

} // namespace Vantle::Agent
