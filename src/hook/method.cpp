#include "hook/method.h"

#include "hook/class.h"

#include <QtCore/QJsonArray>

namespace Vantle {

Argument::Argument(const QString &name, const Class *type, unsigned int passing, int flags)
    : m_name(name)
    , m_type(type)
    , m_passing(passing)
    , m_flags(flags)
{
}

Argument::Argument(const Class *type, unsigned int passing, int flags) : Argument(QString(), type, passing, flags)
{
}

QJsonObject Argument::describe() const
{
    QJsonObject description;
    if (!m_name.isEmpty())
        description.insert(QStringLiteral("name"), m_name);
    description.insert(QStringLiteral("type"), m_type ? m_type->className() : QStringLiteral("void"));
    return description;
}

Signature::Signature(const Argument &argument) : m_arguments{argument}
{
}
Signature::Signature(const QList<Argument> &arguments) : m_arguments(arguments)
{
}

Method::Method(const Argument &result, const QString &name, const Signature &signature)
    : m_result(result)
    , m_name(name)
    , m_signature(signature)
{
}

Method::~Method() = default;

QJsonObject Method::describe() const
{
    QJsonArray arguments;
    for (const Argument &argument : m_signature.arguments())
        arguments.append(argument.describe());
    return {
        {QStringLiteral("name"), m_name},
        {QStringLiteral("arguments"), arguments},
        {QStringLiteral("result"), m_result.describe()},
    };
}

GlobalMethod::GlobalMethod(GlobalFunction call, const Argument &result, const QString &name, const Signature &signature)
    : Method(result, name, signature)
    , m_function(call)
{
}

GlobalMethod::~GlobalMethod() = default;

GlobalClass::GlobalClass() = default;

GlobalClass::~GlobalClass() = default;

void GlobalClass::addMethod(const GlobalMethod *method)
{
    if (method)
        m_methods.append(method);
}

Property::Property(const QString &name, const Class *type) : m_name(name), m_type(type)
{
}

Property::~Property() = default;

QJsonObject Property::describe() const
{
    return {
        {QStringLiteral("name"), m_name},
        {QStringLiteral("type"), m_type ? m_type->className() : QString()},
    };
}

Enum::Enum(const Class *owner, const QString &name, const Item *items, int index)
    : m_owner(owner)
    , m_name(name)
    , m_items(items)
    , m_index(index)
{
}

Enum::~Enum() = default;

QList<Enum::Item> Enum::items() const
{
    QList<Item> list;
    for (const Item *item = m_items; item->name; ++item)
        list.append(*item);
    return list;
}

const char *Enum::nameOf(qint32 value) const noexcept
{
    for (const Item *item = m_items; item->name; ++item) {
        if (item->value == value)
            return item->name;
    }
    return nullptr;
}

QJsonObject Enum::describe() const
{
    QJsonArray values;
    for (const Item *item = m_items; item->name; ++item) {
        values.append(QJsonObject{
            {QStringLiteral("name"), QString::fromLatin1(item->name)},
            {QStringLiteral("value"), item->value},
        });
    }
    return {{QStringLiteral("name"), m_name}, {QStringLiteral("values"), values}};
}

} // namespace Vantle
