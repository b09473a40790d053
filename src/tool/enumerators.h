#pragma once

#include <QtCore/QtGlobal>

#include <array>

/// The enumerators that scripts are written with.
namespace Vantle::Tool::Enumerators {

/// A value and its name behind the dot.
struct Named
{
    quint32 value;
    const char *name;
};

/// Of `Qt`: those buttons that Qt names after what they do; its others are
/// numbered.
inline constexpr std::array<Named, 6> buttons{{
    {0x01, "LeftButton"},
    {0x02, "RightButton"},
    {0x04, "MiddleButton"},
    {0x08, "BackButton"},
    {0x10, "ForwardButton"},
    {0x20, "TaskButton"},
}};
inline constexpr Named noButton{0, "NoButton"};

/// Of `Qt`, in the order in which they are written.
inline constexpr std::array<Named, 6> modifiers{{
    {0x04000000, "ControlModifier"},
    {0x02000000, "ShiftModifier"},
    {0x08000000, "AltModifier"},
    {0x10000000, "MetaModifier"},
    {0x20000000, "KeypadModifier"},
    {0x40000000, "GroupSwitchModifier"},
}};
inline constexpr Named noModifier{0, "NoModifier"};

/// The buttons and the modifiers that functions play; scripts are offered no
/// others.
inline constexpr quint32 playable = 0x1e000007;

/// Of `WindowState`; each at the place of its value.
inline constexpr std::array<const char *, 5> windowStates{"None", "Normal", "Maximize", "Minimize", "Fullscreen"};

} // namespace Vantle::Tool::Enumerators
