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

} // namespace Vantle
