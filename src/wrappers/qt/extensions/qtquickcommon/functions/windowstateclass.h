#pragma once

#include "hook/class.h"

namespace Vantle::QtWrapper {

/// The run-time class of the window states: one enumeration and nothing else.
/// Its values are those of a record's `windowState`.
class WindowStateClass : public Class
{
public:
    WindowStateClass();
    ~WindowStateClass() override;

    /// "WindowStateValue", the class's only enumeration; null for any other index.
    const Enum *createEnum(int index) const override;
};

} // namespace Vantle::QtWrapper
