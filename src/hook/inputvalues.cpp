#include "hook/inputvalues.h"

namespace Vantle {

const char *MouseButton::name(Value value) noexcept
{
    switch (value) {
    case None: return "None";
    case LeftButton: return "LeftButton";
    case MiddleButton: return "MiddleButton";
    case RightButton: return "RightButton";
    case Wheel: return "Wheel";
    case PrimaryButton: return "PrimaryButton";
    case SecondaryButton: return "SecondaryButton";
    case XButton1: return "XButton1";
    case XButton2: return "XButton2";
    }
    return nullptr;
}

const qint32 Modifier::values[] = {None, Control, Shift, Alt, Win, Command, -1};

const char *Modifier::name(Value value) noexcept
{
    switch (value) {
    case None: return "None";
    case Control: return "Control";
    case Shift: return "Shift";
    case Alt: return "Alt";
    case Win: return "Win";
    case Command: return "Command";
    }
    return nullptr;
}

} // namespace Vantle
