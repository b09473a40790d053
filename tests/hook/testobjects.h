#pragma once

#include "hook/class.h"
#include "hook/object.h"
#include "support/keepforever.h"

namespace VantleTest {

/// Script object for some native pointer, which may be taken away from it.
class TestObject final : public Vantle::Object
{
public:
    explicit TestObject(const Vantle::Class *type, void *nativePointer = nullptr) : native(nativePointer), m_type(type)
    {
    }

    const Vantle::Class *objectClass() const override { return m_type; }
    bool get(void **value) const override
    {
        *value = native;
        return native != nullptr;
    }

    void *native;

private:
    const Vantle::Class *m_type;
};

/// A class that lives as long as the process, as all classes do.
inline const Vantle::Class *newClass(const QString &name, const Vantle::Class *super = nullptr)
{
    return keepForever(new Vantle::Class(name, super));
}

} // namespace VantleTest
