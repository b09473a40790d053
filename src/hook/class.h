#pragma once

#include "hook/serializable.h"

#include <QtCore/QString>

namespace Vantle {

/// Run-time description of a type that scripts can meet: a native class or a
/// value type. Descriptions live as long as the process, so plain pointers to
/// them never dangle.
class VANTLEHOOK_EXPORT Class : public Serializable
{
public:
    /// \p super is the description of the base class, null at the top of a chain.
    explicit Class(const QString &className, const Class *super = nullptr);
    ~Class() override;

    const QString &className() const noexcept { return m_className; }
    const Class *super() const noexcept { return m_super; }

    /// True when this is \p other or derives from it; false for a null \p other.
    bool isSubClassOf(const Class *other) const noexcept;

    QJsonObject describe() const override;

private:
    Q_DISABLE_COPY_MOVE(Class)

    QString m_className;
    const Class *m_super;
};

} // namespace Vantle
