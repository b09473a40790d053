#include "hook/inputvalues.h"

#include <gtest/gtest.h>

using Vantle::Modifier;
using Vantle::MouseButton;

namespace {

TEST(MouseButton, valuesHaveTheirNames)
{
    const std::pair<int, const char *> names[] = {
        {0, "None"}, {1, "LeftButton"}, {2, "MiddleButton"}, {4, "RightButton"}, {8, "Wheel"},
        {16, "PrimaryButton"}, {32, "SecondaryButton"}, {64, "XButton1"}, {128, "XButton2"},
    };
    for (const auto &[value, name] : names)
        EXPECT_STREQ(MouseButton::name(static_cast<MouseButton::Value>(value)), name);
}

TEST(MouseButton, setsAndUnknownValuesHaveNone)
{
    for (const int value : {3, 5, 255, 256, -1})
        EXPECT_EQ(MouseButton::name(static_cast<MouseButton::Value>(value)), nullptr) << value;
}

TEST(Modifier, valuesHaveTheirNames)
{
    const std::pair<int, const char *> names[] = {
        {0, "None"}, {0x80, "Control"}, {0x100, "Shift"}, {0x200, "Alt"}, {0x400, "Win"}, {0x800, "Command"},
    };
    for (const auto &[value, name] : names)
        EXPECT_STREQ(Modifier::name(static_cast<Modifier::Value>(value)), name);
}

TEST(Modifier, setsAndUnknownValuesHaveNone)
{
    EXPECT_EQ(Modifier::name(Modifier::Control | Modifier::Shift), nullptr);
    for (const int value : {1, 0x40, 0x1000, -1})
        EXPECT_EQ(Modifier::name(static_cast<Modifier::Value>(value)), nullptr) << value;
}

TEST(Modifier, theListIsAscendingAndEndsInMinusOne)
{
    int previous = -1;
    int count = 0;
    for (const qint32 *value = Modifier::values; *value != -1; ++value) {
        ASSERT_GT(*value, previous);
        EXPECT_NE(Modifier::name(static_cast<Modifier::Value>(*value)), nullptr);
        previous = *value;
        ++count;
    }
    EXPECT_EQ(count, 6);
    EXPECT_EQ(Modifier::values[0], Modifier::None);
    EXPECT_EQ(previous, Modifier::Command);
}

TEST(Modifier, setsAreMadeAndTakenApartBitByBit)
{
    Modifier::Value set = Modifier::None;
    set |= Modifier::Control;
    set |= Modifier::Alt;
    EXPECT_EQ(set, 0x280);
    EXPECT_EQ(set & Modifier::Alt, Modifier::Alt);
    EXPECT_EQ(set & Modifier::Shift, Modifier::None);
    set &= ~Modifier::Alt;
    EXPECT_EQ(set, Modifier::Control);
}

} // namespace
