#include "wrappers/qt/extensions/qtquickcommon/recording/inputconversions.h"

#include <gtest/gtest.h>

using namespace Vantle;
using namespace Vantle::QtWrapper;

TEST(InputConversions, LeftMiddleAndRightButtonGoBothWays)
{
    const std::pair<MouseButton::Value, Qt::MouseButton> pairs[] = {
        {MouseButton::LeftButton, Qt::LeftButton},
        {MouseButton::MiddleButton, Qt::MiddleButton},
        {MouseButton::RightButton, Qt::RightButton},
    };
    for (const auto &[value, qtButton] : pairs) {
        EXPECT_EQ(buttonValueToQtButton(value), qtButton);
        EXPECT_EQ(qtButtonToButtonValue(qtButton), value);
    }
}

TEST(InputConversions, OtherButtonsAreNone)
{
    for (const MouseButton::Value value : {MouseButton::None, MouseButton::Wheel, MouseButton::PrimaryButton,
                                           MouseButton::SecondaryButton, MouseButton::XButton1, MouseButton::XButton2,
                                           static_cast<MouseButton::Value>(3), static_cast<MouseButton::Value>(-1)})
        EXPECT_EQ(buttonValueToQtButton(value), Qt::NoButton) << value;
    for (const Qt::MouseButton button : {Qt::NoButton, Qt::BackButton, Qt::ForwardButton, Qt::MaxMouseButton})
        EXPECT_EQ(qtButtonToButtonValue(button), MouseButton::None) << button;
}

TEST(InputConversions, EveryModifierGoesBothWays)
{
    const std::pair<Modifier::Value, Qt::KeyboardModifier> pairs[] = {
        {Modifier::Control, Qt::ControlModifier},
        {Modifier::Shift, Qt::ShiftModifier},
        {Modifier::Alt, Qt::AltModifier},
        {Modifier::Win, Qt::MetaModifier},
    };
    for (const auto &[value, qtModifier] : pairs) {
        EXPECT_EQ(modifierValueToQtModifiers(value), Qt::KeyboardModifiers(qtModifier));
        EXPECT_EQ(qtModifiersToModifierValue(qtModifier), value);
    }
}

TEST(InputConversions, SetsOfModifiersGoBothWays)
{
    const Modifier::Value values = Modifier::Control | Modifier::Shift | Modifier::Alt | Modifier::Win;
    const Qt::KeyboardModifiers qtModifiers = Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier
        | Qt::MetaModifier;
    EXPECT_EQ(modifierValueToQtModifiers(values), qtModifiers);
    EXPECT_EQ(qtModifiersToModifierValue(static_cast<unsigned int>(qtModifiers.toInt())), values);
    EXPECT_EQ(modifierValueToQtModifiers(Modifier::None), Qt::NoModifier);
    EXPECT_EQ(qtModifiersToModifierValue(0), Modifier::None);
}

TEST(InputConversions, ModifiersWithoutACounterpartAreDropped)
{
    EXPECT_EQ(modifierValueToQtModifiers(Modifier::Command), Qt::NoModifier);
    EXPECT_EQ(modifierValueToQtModifiers(Modifier::Command | Modifier::Shift), Qt::ShiftModifier);
    EXPECT_EQ(qtModifiersToModifierValue(Qt::KeypadModifier | Qt::GroupSwitchModifier), Modifier::None);
    EXPECT_EQ(qtModifiersToModifierValue(0xffffffffU),
              Modifier::Control | Modifier::Shift | Modifier::Alt | Modifier::Win);
    EXPECT_EQ(modifierValueToQtModifiers(static_cast<Modifier::Value>(-1)),
              Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier);
}
