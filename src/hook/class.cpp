#include "hook/class.h"

#include <QtCore/QJsonObject>

namespace Vantle {

Serializable::~Serializable() = default;

Class::Class(const QString &className, const Class *super)
    : m_className(className)
    , m_super(super)
{
}

Class::~Class() = default;

bool Class::isSubClassOf(const Class *other) const noexcept
{
    if (!other)
        return false;
    for (const Class *c = this; c; c = c->m_super) {
        if (c == other)
            return true;
    }
    return false;
}

QJsonObject Class::describe() const
{
    QJsonObject description{{QStringLiteral("name"), m_className}};
    if (m_super)
        description.insert(QStringLiteral("super"), m_super->className());
    return description;
}

} // namespace Vantle
