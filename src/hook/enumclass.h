#pragma once

#include "hook/class.h"
#include "hook/method.h"

namespace Vantle {

/// A value class that stands for one enumeration: its objects hold an `int`.
class VANTLEHOOK_EXPORT EnumClass final : public Class
{
public:
    /// \p items as for Enum.
    EnumClass(const QString &className, const QString &enumName, const Enum::Item *items);
    ~EnumClass() override;

    const Enum *createEnum(int index) const override;

private:
    QString m_enumName;
    const Enum::Item *m_items;
};

} // namespace Vantle
