#pragma once

#include "hook/object.h"
#include "hook/serializable.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <array>
#include <compare>
#include <memory>

class QJsonValue;

namespace Vantle {

class Enum;
class Method;
class Property;

/// Run-time description of a type that scripts can meet: a native class or a
/// value type. Descriptions live as long as the process, so plain pointers to
/// them never dangle.
///
/// A class offers members: constructors, methods, properties, events and
/// enumerations. Their descriptions are made when they are first asked for, by
/// the create... operations, and each is known by an index that goes on where
/// those of the base classes end.
///
/// What a class of the toolkit or of values does differently it overrides; the
/// behaviour given here is that of objects about which nothing more is known.
/// Belongs to the thread that owns the objects.
class VANTLEHOOK_EXPORT Class : public Serializable
{
public:
    /// A kind of member, as far as its indices are concerned.
    enum OffsetType : qint32 {
        ConstructorOffset = 0,
        MethodOffset = 1,
        PropertyOffset = 2,
        EventOffset = 3,
        EnumOffset = 4,
    };

    /// \p super is the description of the base class, null at the top of a chain.
    explicit Class(const QString &className, const Class *super = nullptr);
    /// Whether it \p isValueClass: its objects hold values, not native objects.
    /// The base class is what initSuperClass() says when it is first asked for.
    Class(const QString &className, bool isValueClass);
    ~Class() override;

    const QString &className() const noexcept { return m_className; }
    const Class *super() const noexcept;
    bool isValueClass() const noexcept { return m_isValueClass; }

    /// True when this is \p other or derives from it; false for a null \p other.
    bool isSubClassOf(const Class *other) const noexcept;

    /// How many members of that kind the base classes have: the index of the first own one.
    int superClassOffset(OffsetType type) const noexcept;

    /// The class's own members of each kind. What createX() gave no description for is left out.
    const QList<const Method *> &constructors() const;
    const QList<const Method *> &methods() const;
    const QList<const Property *> &properties() const;
    const QList<const Method *> &events() const;
    const QList<const Enum *> &enums() const;

    QJsonObject describe() const override;

    // The order of what follows is fixed.

    /// The object as text or number for another process; null if it has none.
    virtual QJsonValue writeObject(const SharedPtr<Object> &object) const;
    /// The object that writeObject() wrote; null if none can be made of \p value.
    virtual SharedPtr<Object> readObject(const QJsonValue &value) const;
    /// The native pointer of \p object as one to \p type; null if it is no object of that class.
    virtual void *convertToInterface(const SharedPtr<Object> &object, const Class *type) const;

    /// Calls a method of \p object. Null after a failure, which the script has been told about.
    virtual SharedPtr<Object> invoke(const SharedPtr<Object> &object, const Method *method,
                                     const ObjectList &arguments) const;
    virtual SharedPtr<Object> invoke(const SharedPtr<Object> &object, int index, const ObjectList &arguments) const;
    virtual SharedPtr<Object> invoke(const SharedPtr<Object> &object, const QString &name,
                                     const ObjectList &arguments) const;

    /// Whether the property has been set; if not, the script has been told why.
    virtual bool setProperty(const SharedPtr<Object> &object, const Property *property,
                             const SharedPtr<Object> &value) const;
    virtual bool setProperty(const SharedPtr<Object> &object, int index, const SharedPtr<Object> &value) const;
    virtual bool setProperty(const SharedPtr<Object> &object, const QString &name,
                             const SharedPtr<Object> &value) const;

    /// A property's value. Null after a failure, which the script has been told about.
    virtual SharedPtr<Object> getProperty(const SharedPtr<Object> &object, const Property *property) const;
    virtual SharedPtr<Object> getProperty(const SharedPtr<Object> &object, int index) const;
    virtual SharedPtr<Object> getProperty(const SharedPtr<Object> &object, const QString &name) const;

    /// A new object. Null after a failure, which the script has been told about.
    virtual SharedPtr<Object> construct(const Method *constructor, const ObjectList &arguments) const;
    virtual SharedPtr<Object> construct(const ObjectList &arguments) const;

    /// The script object of a native one; null if the class can't make any.
    virtual SharedPtr<Object> wrap(void *native) const;
    /// Frees what wrap() took over. The class at hand owns nothing.
    virtual void deleteObjectData(void *native) const;

    /// Whether \p object, of this class, can stand where one of \p type is
    /// wanted, and the object that does; null if it can't.
    virtual bool canConvertTo(const SharedPtr<Object> &object, const Class *type) const;
    virtual SharedPtr<Object> convertTo(const SharedPtr<Object> &object, const Class *type) const;

    virtual std::partial_ordering compare(const SharedPtr<Object> &a, const SharedPtr<Object> &b) const;
    /// Two null pointers are the same.
    virtual bool sameObjects(const SharedPtr<Object> &a, const SharedPtr<Object> &b) const;

    /// As canConvertTo() and convertTo(), but also where a script that is not
    /// strict about types may mean something else: a number for an enumerator.
    virtual bool canConvertToTolerant(const SharedPtr<Object> &object, const Class *type) const;
    virtual SharedPtr<Object> convertToTolerant(const SharedPtr<Object> &object, const Class *type) const;

    /// The most derived class that is known of \p object.
    virtual const Class *realType(const SharedPtr<Object> &object) const;
    /// The base class, for a class that wasn't given one.
    virtual const Class *initSuperClass() const;

    /// The description of one member, on the heap and never freed; null for an
    /// index that is not the class's own.
    virtual const Method *createConstructor(int index) const;
    virtual const Method *createMethod(int index) const;
    virtual const Property *createProperty(int index) const;
    virtual const Method *createEvent(int index) const;
    virtual const Enum *createEnum(int index) const;

    /// Whether \p object is one of \p type, and it as such; null if it isn't.
    virtual bool canCastTo(const SharedPtr<Object> &object, const Class *type) const;
    virtual SharedPtr<Object> castTo(const SharedPtr<Object> &object, const Class *type) const;

    /// What convertTo() can do beyond base classes.
    virtual bool canConvertToInternal(const SharedPtr<Object> &object, const Class *type) const;
    virtual SharedPtr<Object> convertToInternal(const SharedPtr<Object> &object, const Class *type) const;

protected:
    /// How many members of that kind the class itself has. To be set by its constructor.
    void setMemberCount(OffsetType type, int count) noexcept;

private:
    Q_DISABLE_COPY_MOVE(Class)

    struct Members;
    const Members &members() const;

    QString m_className;
    mutable const Class *m_super;
    mutable bool m_isSuperKnown;
    bool m_isValueClass;
    std::array<int, 5> m_memberCounts = {};
    mutable std::unique_ptr<Members> m_members;
};

} // namespace Vantle
