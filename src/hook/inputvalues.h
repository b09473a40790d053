#pragma once

#include "hook/hookglobal.h"

namespace Vantle {

/// A mouse button, in the tool's own values. Conversions from and to Qt's
/// buttons belong to the recording code.
struct VANTLEHOOK_EXPORT MouseButton
{
    enum Value : qint32 {
        None = 0,
        LeftButton = 1,
        MiddleButton = 2,
        RightButton = 4,
        Wheel = 8,
        PrimaryButton = 16,
        SecondaryButton = 32,
        XButton1 = 64,
        XButton2 = 128,
    };

    /// The enumerator's name, or null for anything but exactly one of the values above.
    static const char *name(Value value) noexcept;
};

/// Keyboard modifiers, a set of bits in the tool's own values.
struct VANTLEHOOK_EXPORT Modifier
{
    enum Value : qint32 {
        None = 0,
        Control = 0x80,
        Shift = 0x100,
        Alt = 0x200,
        Win = 0x400,
        Command = 0x800,
    };

    /// All values in ascending order, None first, ended by -1.
    static const qint32 values[];

    /// The enumerator's name, or null for anything but exactly one of the values above.
    static const char *name(Value value) noexcept;
};

constexpr Modifier::Value operator|(Modifier::Value a, Modifier::Value b) noexcept
{
    return static_cast<Modifier::Value>(static_cast<qint32>(a) | static_cast<qint32>(b));
}
constexpr Modifier::Value operator&(Modifier::Value a, Modifier::Value b) noexcept
{
    return static_cast<Modifier::Value>(static_cast<qint32>(a) & static_cast<qint32>(b));
}
constexpr Modifier::Value operator~(Modifier::Value a) noexcept
{
    return static_cast<Modifier::Value>(~static_cast<qint32>(a));
}
constexpr Modifier::Value &operator|=(Modifier::Value &a, Modifier::Value b) noexcept { return a = a | b; }
constexpr Modifier::Value &operator&=(Modifier::Value &a, Modifier::Value b) noexcept { return a = a & b; }

} // namespace Vantle
