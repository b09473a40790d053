#include "hook/object.h"

#include "hook/class.h"

namespace Vantle {

Shared::~Shared() = default;

ObjectList::ObjectList() = default;
ObjectList::ObjectList(std::initializer_list<SharedPtr<Object>> objects) : m_objects(objects) {}
ObjectList::ObjectList(const ObjectList &) = default;
ObjectList::ObjectList(ObjectList &&) noexcept = default;
ObjectList &ObjectList::operator=(const ObjectList &) = default;
ObjectList &ObjectList::operator=(ObjectList &&) noexcept = default;
ObjectList::~ObjectList() = default;

void ObjectList::push_back(const SharedPtr<Object> &object)
{
    m_objects.push_back(object);
}

SharedPtr<Object> ObjectList::at(std::size_t index) const
{
    return index < m_objects.size() ? m_objects[index] : SharedPtr<Object>();
}

Object::~Object() = default;

bool Object::isNull() const
{
    void *native = nullptr;
    return !get(&native) || !native;
}

bool Object::sameAs(const SharedPtr<Object> &other) const
{
    if (!other)
        return false;
    if (other.get() == this)
        return true;
    void *mine = nullptr;
    void *theirs = nullptr;
    return get(&mine) && other->get(&theirs) && mine && mine == theirs;
}

QString Object::scriptName() const
{
    return {};
}

ObjectList Object::children() const
{
    return {};
}

QString Object::className() const
{
    return objectClass()->className();
}

bool Object::isA(const Class *type) const
{
    return objectClass()->isSubClassOf(type);
}

} // namespace Vantle
