#include "hook/enumclass.h"

namespace Vantle {

EnumClass::EnumClass(const QString &className, const QString &enumName, const Enum::Item *items)
    : Class(className, true)
    , m_enumName(enumName)
    , m_items(items)
{
    setMemberCount(EnumOffset, 1);
}

EnumClass::~EnumClass() = default;

const Enum *EnumClass::createEnum(int index) const
{
    return index == superClassOffset(EnumOffset) ? new Enum(this, m_enumName, m_items, index) : nullptr;
}

} // namespace Vantle
