#pragma once

#include "hook/hookglobal.h"

class QJsonObject;

namespace Vantle {

/// Something that can describe itself to a process outside, as JSON.
class VANTLEHOOK_EXPORT Serializable
{
public:
    Serializable() = default;
    virtual ~Serializable();

    virtual QJsonObject describe() const = 0;

protected:
    Serializable(const Serializable &) = default;
    Serializable &operator=(const Serializable &) = default;
};

} // namespace Vantle
