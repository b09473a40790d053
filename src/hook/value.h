#pragma once

#include "hook/class.h"
#include "hook/object.h"

namespace Vantle {

/// Wrapper that holds a value itself, of the value class \p type.
template<typename T>
class Value final : public Object
{
public:
    Value(const Class *type, T value) : m_type(type), m_value(std::move(value)) {}

    const Class *objectClass() const override { return m_type; }
    bool get(void **value) const override
    {
        *value = &m_value;
        return true;
    }
    bool sameAs(const SharedPtr<Object> &other) const override
    {
        if (!other || other->objectClass() != m_type)
            return false;
        void *theirs = nullptr;
        return other->get(&theirs) && *static_cast<const T *>(theirs) == m_value;
    }

private:
    const Class *m_type;
    mutable T m_value;
};

} // namespace Vantle
