#pragma once

#include "hook/object.h"
#include "hook/serializable.h"

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QString>

namespace Vantle {

/// One argument of a signature, or the result of a method.
class VANTLEHOOK_EXPORT Argument
{
public:
    /// How an argument is handed over.
    enum Passing : unsigned {
        ByValue = 0,
        ByConstReference = 1,
        ByPointer = 2,
    };

    /// A named argument. \p passing is one of Passing; \p flags is reserved and 0.
    Argument(const QString &name, const Class *type, unsigned int passing, int flags);
    /// An unnamed argument, such as a result.
    Argument(const Class *type, unsigned int passing, int flags);

    const QString &name() const noexcept { return m_name; }
    /// The argument's type; null for a type that the registry didn't know.
    const Class *type() const noexcept { return m_type; }
    unsigned int passing() const noexcept { return m_passing; }
    int flags() const noexcept { return m_flags; }

    QJsonObject describe() const;

private:
    QString m_name;
    const Class *m_type;
    unsigned int m_passing;
    int m_flags;
};

/// The arguments of a method, in order.
class VANTLEHOOK_EXPORT Signature
{
public:
    Signature() = default;
    explicit Signature(const Argument &argument);
    explicit Signature(const QList<Argument> &arguments);

    const QList<Argument> &arguments() const noexcept { return m_arguments; }

private:
    QList<Argument> m_arguments;
};

/// One overload of a function that scripts can call.
class VANTLEHOOK_EXPORT Method : public Serializable
{
public:
    Method(const Argument &result, const QString &name, const Signature &signature);
    ~Method() override;

    const QString &name() const noexcept { return m_name; }
    const Argument &result() const noexcept { return m_result; }
    const Signature &signature() const noexcept { return m_signature; }

    QJsonObject describe() const override;

private:
    Argument m_result;
    QString m_name;
    Signature m_signature;
};

/// What runs when a script calls a global function: gets the arguments in the
/// order of the signature. On failure it has called Inspector::raiseError and
/// returns null.
using GlobalFunction = SharedPtr<Object> (*)(const ObjectList &arguments, const Class *context);

/// One overload of a function that belongs to no class.
class VANTLEHOOK_EXPORT GlobalMethod : public Method
{
public:
    /// A null \p function makes an overload that scripts can't call.
    GlobalMethod(GlobalFunction function, const Argument &result, const QString &name, const Signature &signature);
    ~GlobalMethod() override;

    GlobalFunction function() const noexcept { return m_function; }

private:
    GlobalFunction m_function;
};

/// The holder of the functions that belong to no class.
class VANTLEHOOK_EXPORT GlobalClass
{
public:
    GlobalClass();
    ~GlobalClass();

    /// Takes over \p method, which lives as long as the process. Null does nothing.
    void addMethod(const GlobalMethod *method);
    /// All functions in the order in which they were added.
    const QList<const GlobalMethod *> &methods() const noexcept { return m_methods; }

private:
    Q_DISABLE_COPY_MOVE(GlobalClass)

    QList<const GlobalMethod *> m_methods;
};

/// A property of the objects of a class.
class VANTLEHOOK_EXPORT Property : public Serializable
{
public:
    /// \p type is null for a type that the registry doesn't know.
    Property(const QString &name, const Class *type);
    ~Property() override;

    const QString &name() const noexcept { return m_name; }
    const Class *type() const noexcept { return m_type; }

    QJsonObject describe() const override;

private:
    QString m_name;
    const Class *m_type;
};

/// An enumeration that scripts can see, by the names and values of its enumerators.
class VANTLEHOOK_EXPORT Enum : public Serializable
{
public:
    /// One enumerator; its name is in ASCII.
    struct Item
    {
        const char *name;
        qint32 value;
    };

    /// \p items end with one whose name is null. They are not copied and must
    /// live as long as the enumeration, as must \p owner. \p index is that
    /// among the enumerations of \p owner and its base classes.
    Enum(const Class *owner, const QString &name, const Item *items, int index);
    ~Enum() override;

    const Class *owner() const noexcept { return m_owner; }
    const QString &name() const noexcept { return m_name; }
    int index() const noexcept { return m_index; }

    /// The enumerators in order, without the closing item.
    QList<Item> items() const;
    /// The name of the first enumerator of that value, null if there is none.
    const char *nameOf(qint32 value) const noexcept;

    QJsonObject describe() const override;

private:
    const Class *m_owner;
    QString m_name;
    const Item *m_items;
    int m_index;
};

} // namespace Vantle
