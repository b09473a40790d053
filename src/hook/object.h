#pragma once

#include "hook/shared.h"

#include <QtCore/QString>

#include <initializer_list>
#include <vector>

namespace Vantle {

class Class;
class Object;

/// Script arguments, results and children, in order.
class VANTLEHOOK_EXPORT ObjectList
{
public:
    ObjectList();
    ObjectList(std::initializer_list<SharedPtr<Object>> objects);
    ObjectList(const ObjectList &);
    ObjectList(ObjectList &&) noexcept;
    ObjectList &operator=(const ObjectList &);
    ObjectList &operator=(ObjectList &&) noexcept;
    ~ObjectList();

    void push_back(const SharedPtr<Object> &object);
    std::size_t size() const noexcept { return m_objects.size(); }
    bool isEmpty() const noexcept { return m_objects.empty(); }
    /// The object at \p index, or a null pointer where the list has none.
    SharedPtr<Object> at(std::size_t index) const;

    auto begin() const noexcept { return m_objects.begin(); }
    auto end() const noexcept { return m_objects.end(); }

private:
    std::vector<SharedPtr<Object>> m_objects;
};

/// Script-side wrapper of a native object or of a value.
///
/// A wrapper may outlive what it stands for: isNull() then holds, get() gives
/// a null pointer, and every other operation answers as for an object that
/// has nothing to say. Used on the thread that owns the native object.
class VANTLEHOOK_EXPORT Object : public Shared
{
public:
    ~Object() override;

    /// The class that the object had when it was wrapped. Never null.
    virtual const Class *objectClass() const = 0;

    /// Stores the native pointer in \p *value: a QObject* for a wrapped Qt
    /// object, a pointer to the value for a value (`int *` for an integer).
    /// Stores null, and returns false, if there is none any more. The pointer
    /// stays the wrapper's.
    virtual bool get(void **value) const = 0;

    /// True when the native object is gone, or never was.
    virtual bool isNull() const;

    /// Whether both stand for the same native object, or hold equal values of
    /// one class. A null pointer is the same as nothing.
    virtual bool sameAs(const SharedPtr<Object> &other) const;

    /// The name by which scripts find the object again; empty for a value, a
    /// dead object and one that nobody can name.
    virtual QString scriptName() const;

    /// The objects one level below this one, as a user sees the hierarchy.
    virtual ObjectList children() const;

    /// The class's name.
    QString className() const;
    /// Whether the object's class is \p type or derives from it; false for null.
    bool isA(const Class *type) const;
};

} // namespace Vantle
