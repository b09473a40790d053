#include "hook/class.h"

#include "hook/inspector.h"
#include "hook/method.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>

namespace Vantle {

namespace {

template<typename Member>
const Member *memberAt(const QList<const Member *> &members, int index)
{
    return index >= 0 && index < members.size() ? members.at(index) : nullptr;
}

template<typename Member>
const Member *memberNamed(const QList<const Member *> &members, const QString &name)
{
    for (const Member *member : members) {
        if (member->name() == name)
            return member;
    }
    return nullptr;
}

/// The first member that \p find finds in \p type or above it.
template<typename Find>
auto findInHierarchy(const Class *type, Find find) -> decltype(find(type))
{
    for (; type; type = type->super()) {
        if (auto *const member = find(type))
            return member;
    }
    return nullptr;
}

void raiseMissing(const Class *type, const QString &what)
{
    Inspector::self()->raiseError(QStringLiteral("An object of type %1 has no %2").arg(type->className(), what));
}

QString quoted(const QString &name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

} // namespace

Serializable::~Serializable() = default;

/// Descriptions by kind, made together at the first question.
struct Class::Members
{
    QList<const Method *> constructors;
    QList<const Method *> methods;
    QList<const Property *> properties;
    QList<const Method *> events;
    QList<const Enum *> enums;
};

Class::Class(const QString &className, const Class *super)
    : m_className(className)
    , m_super(super)
    , m_isSuperKnown(true)
    , m_isValueClass(false)
{
}

Class::Class(const QString &className, bool isValueClass)
    : m_className(className)
    , m_super(nullptr)
    , m_isSuperKnown(false)
    , m_isValueClass(isValueClass)
{
}

Class::~Class() = default;

const Class *Class::super() const noexcept
{
    if (!m_isSuperKnown) {
        m_isSuperKnown = true;
        m_super = initSuperClass();
    }
    return m_super;
}

bool Class::isSubClassOf(const Class *other) const noexcept
{
    if (!other)
        return false;
    for (const Class *c = this; c; c = c->super()) {
        if (c == other)
            return true;
    }
    return false;
}

int Class::superClassOffset(OffsetType type) const noexcept
{
    int offset = 0;
    for (const Class *c = super(); c; c = c->super())
        offset += c->m_memberCounts[static_cast<std::size_t>(type)];
    return offset;
}

void Class::setMemberCount(OffsetType type, int count) noexcept
{
    m_memberCounts[static_cast<std::size_t>(type)] = count;
}

const Class::Members &Class::members() const
{
    if (m_members)
        return *m_members;
    m_members = std::make_unique<Members>();
    const auto create = [this](OffsetType type, auto *list, auto createMember) {
        const int first = superClassOffset(type);
        for (int i = first; i < first + m_memberCounts[static_cast<std::size_t>(type)]; ++i) {
            if (const auto *const member = (this->*createMember)(i))
                list->append(member);
        }
    };
    create(ConstructorOffset, &m_members->constructors, &Class::createConstructor);
    create(MethodOffset, &m_members->methods, &Class::createMethod);
    create(PropertyOffset, &m_members->properties, &Class::createProperty);
    create(EventOffset, &m_members->events, &Class::createEvent);
    create(EnumOffset, &m_members->enums, &Class::createEnum);
    return *m_members;
}

const QList<const Method *> &Class::constructors() const
{
    return members().constructors;
}

const QList<const Method *> &Class::methods() const
{
    return members().methods;
}

const QList<const Property *> &Class::properties() const
{
    return members().properties;
}

const QList<const Method *> &Class::events() const
{
    return members().events;
}

const QList<const Enum *> &Class::enums() const
{
    return members().enums;
}

QJsonObject Class::describe() const
{
    QJsonObject description{{QStringLiteral("name"), m_className}};
    if (super())
        description.insert(QStringLiteral("super"), super()->className());
    QJsonArray enumerations;
    for (const Enum *enumeration : enums())
        enumerations.append(enumeration->describe());
    if (!enumerations.isEmpty())
        description.insert(QStringLiteral("enums"), enumerations);
    return description;
}

QJsonValue Class::writeObject(const SharedPtr<Object> &object) const
{
    const QString name = object ? object->scriptName() : QString();
    return name.isEmpty() ? QJsonValue() : QJsonValue(name);
}

SharedPtr<Object> Class::readObject(const QJsonValue &) const
{
    return nullptr;
}

void *Class::convertToInterface(const SharedPtr<Object> &object, const Class *type) const
{
    void *native = nullptr;
    return object && object->isA(type) && object->get(&native) ? native : nullptr;
}

SharedPtr<Object> Class::invoke(const SharedPtr<Object> &, const Method *method, const ObjectList &) const
{
    raiseMissing(this, QStringLiteral("method ") + quoted(method ? method->name() : QString()));
    return nullptr;
}

SharedPtr<Object> Class::invoke(const SharedPtr<Object> &object, int index, const ObjectList &arguments) const
{
    const Method *const method = findInHierarchy(this, [index](const Class *type) {
        return memberAt(type->methods(), index - type->superClassOffset(MethodOffset));
    });
    if (method)
        return invoke(object, method, arguments);
    raiseMissing(this, QStringLiteral("method %1").arg(index));
    return nullptr;
}

SharedPtr<Object> Class::invoke(const SharedPtr<Object> &object, const QString &name, const ObjectList &arguments) const
{
    const Method *const method = findInHierarchy(this, [&name](const Class *type) {
        return memberNamed(type->methods(), name);
    });
    if (method)
        return invoke(object, method, arguments);
    raiseMissing(this, QStringLiteral("method ") + quoted(name));
    return nullptr;
}

bool Class::setProperty(const SharedPtr<Object> &, const Property *property, const SharedPtr<Object> &) const
{
    raiseMissing(this, QStringLiteral("property ") + quoted(property ? property->name() : QString()));
    return false;
}

bool Class::setProperty(const SharedPtr<Object> &object, int index, const SharedPtr<Object> &value) const
{
    const Property *const property = findInHierarchy(this, [index](const Class *type) {
        return memberAt(type->properties(), index - type->superClassOffset(PropertyOffset));
    });
    if (property)
        return setProperty(object, property, value);
    raiseMissing(this, QStringLiteral("property %1").arg(index));
    return false;
}

bool Class::setProperty(const SharedPtr<Object> &object, const QString &name, const SharedPtr<Object> &value) const
{
    const Property *const property = findInHierarchy(this, [&name](const Class *type) {
        return memberNamed(type->properties(), name);
    });
    if (property)
        return setProperty(object, property, value);
    raiseMissing(this, QStringLiteral("property ") + quoted(name));
    return false;
}

SharedPtr<Object> Class::getProperty(const SharedPtr<Object> &, const Property *property) const
{
    raiseMissing(this, QStringLiteral("property ") + quoted(property ? property->name() : QString()));
    return nullptr;
}

SharedPtr<Object> Class::getProperty(const SharedPtr<Object> &object, int index) const
{
    const Property *const property = findInHierarchy(this, [index](const Class *type) {
        return memberAt(type->properties(), index - type->superClassOffset(PropertyOffset));
    });
    if (property)
        return getProperty(object, property);
    raiseMissing(this, QStringLiteral("property %1").arg(index));
    return nullptr;
}

SharedPtr<Object> Class::getProperty(const SharedPtr<Object> &object, const QString &name) const
{
    const Property *const property = findInHierarchy(this, [&name](const Class *type) {
        return memberNamed(type->properties(), name);
    });
    if (property)
        return getProperty(object, property);
    raiseMissing(this, QStringLiteral("property ") + quoted(name));
    return nullptr;
}

SharedPtr<Object> Class::construct(const Method *, const ObjectList &) const
{
    Inspector::self()->raiseError(QStringLiteral("A script cannot make an object of type %1").arg(m_className));
    return nullptr;
}

SharedPtr<Object> Class::construct(const ObjectList &arguments) const
{
    for (const Method *constructor : constructors()) {
        if (Inspector::self()->accepts(constructor->signature(), arguments))
            return construct(constructor, arguments);
    }
    return construct(nullptr, arguments);
}

SharedPtr<Object> Class::wrap(void *) const
{
    return nullptr;
}

void Class::deleteObjectData(void *) const
{
}

bool Class::canConvertTo(const SharedPtr<Object> &object, const Class *type) const
{
    return canCastTo(object, type) || canConvertToInternal(object, type);
}

SharedPtr<Object> Class::convertTo(const SharedPtr<Object> &object, const Class *type) const
{
    return canCastTo(object, type) ? castTo(object, type) : convertToInternal(object, type);
}

std::partial_ordering Class::compare(const SharedPtr<Object> &a, const SharedPtr<Object> &b) const
{
    return sameObjects(a, b) ? std::partial_ordering::equivalent : std::partial_ordering::unordered;
}

bool Class::sameObjects(const SharedPtr<Object> &a, const SharedPtr<Object> &b) const
{
    return a ? a->sameAs(b) : !b;
}

bool Class::canConvertToTolerant(const SharedPtr<Object> &object, const Class *type) const
{
    return canConvertTo(object, type);
}

SharedPtr<Object> Class::convertToTolerant(const SharedPtr<Object> &object, const Class *type) const
{
    return convertTo(object, type);
}

const Class *Class::realType(const SharedPtr<Object> &object) const
{
    return object ? object->objectClass() : this;
}

const Class *Class::initSuperClass() const
{
    return nullptr;
}

const Method *Class::createConstructor(int) const
{
    return nullptr;
}

const Method *Class::createMethod(int) const
{
    return nullptr;
}

const Property *Class::createProperty(int) const
{
    return nullptr;
}

const Method *Class::createEvent(int) const
{
    return nullptr;
}

const Enum *Class::createEnum(int) const
{
    return nullptr;
}

bool Class::canCastTo(const SharedPtr<Object> &object, const Class *type) const
{
    return object && realType(object)->isSubClassOf(type);
}

SharedPtr<Object> Class::castTo(const SharedPtr<Object> &object, const Class *type) const
{
    return canCastTo(object, type) ? object : SharedPtr<Object>();
}

bool Class::canConvertToInternal(const SharedPtr<Object> &, const Class *) const
{
    return false;
}

SharedPtr<Object> Class::convertToInternal(const SharedPtr<Object> &, const Class *) const
{
    return nullptr;
}

} // namespace Vantle
