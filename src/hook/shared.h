#pragma once

#include "hook/hookglobal.h"

#include <concepts>
#include <cstddef>
#include <utility>

namespace Vantle {

/// Base of everything that is held through SharedPtr.
///
/// The count is a plain integer: objects are shared within the thread that
/// owns the user interface and never across threads. A new object starts at 0
/// and is deleted when its last SharedPtr lets go of it. Copies of an object
/// start with a count of their own.
class VANTLEHOOK_EXPORT Shared
{
public:
    Shared() noexcept = default;
    Shared(const Shared &) noexcept {}
    Shared &operator=(const Shared &) noexcept { return *this; }
    virtual ~Shared();

    void addReference() const noexcept { ++m_referenceCount; }
    /// Gives up one reference and deletes the object with the last one.
    void releaseReference() const
    {
        if (--m_referenceCount != 0)
            return;
        // Whatever the destructor calls may take and drop references to the
        // object meanwhile, which must not delete it again.
        m_referenceCount = beingDeleted;
        delete this;
    }
    qint32 referenceCount() const noexcept { return m_referenceCount; }

private:
    static constexpr qint32 beingDeleted = 1 << 30;

    mutable qint32 m_referenceCount = 0;
};

/// Counted pointer to a Shared object. Null by default; dereferencing a null
/// pointer is an error of the caller.
template<typename T>
class SharedPtr
{
public:
    SharedPtr() noexcept = default;
    SharedPtr(std::nullptr_t) noexcept {}
    explicit SharedPtr(T *object) noexcept : m_object(object) { acquire(); }
    SharedPtr(const SharedPtr &other) noexcept : m_object(other.m_object) { acquire(); }
    SharedPtr(SharedPtr &&other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    template<typename U>
        requires std::convertible_to<U *, T *>
    SharedPtr(const SharedPtr<U> &other) noexcept : m_object(other.get())
    {
        acquire();
    }
    ~SharedPtr() { release(); }

    SharedPtr &operator=(const SharedPtr &other) noexcept
    {
        SharedPtr(other).swap(*this);
        return *this;
    }
    SharedPtr &operator=(SharedPtr &&other) noexcept
    {
        SharedPtr(std::move(other)).swap(*this);
        return *this;
    }

    void swap(SharedPtr &other) noexcept { std::swap(m_object, other.m_object); }

    T *get() const noexcept { return m_object; }
    T *operator->() const noexcept { return m_object; }
    T &operator*() const noexcept { return *m_object; }
    bool isNull() const noexcept { return m_object == nullptr; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    friend bool operator==(const SharedPtr &a, const SharedPtr &b) noexcept { return a.m_object == b.m_object; }

private:
    void acquire() const noexcept
    {
        if (m_object)
            m_object->addReference();
    }
    void release()
    {
        if (T *object = std::exchange(m_object, nullptr))
            object->releaseReference();
    }

    T *m_object = nullptr;
};

} // namespace Vantle
