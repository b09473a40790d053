#include "wrappers/qt/extensions/qtquickcommon/recording/keytext_p.h"

#include <gtest/gtest.h>

#include <QtGui/QKeyEvent>

using namespace Vantle::QtWrapper;

namespace {

QByteArray textOf(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString &text = QString())
{
    return keyEventText(QKeyEvent(QEvent::KeyPress, key, modifiers, text));
}

} // namespace

TEST(KeyText, OfPrintableKeysIsWhatTheyType)
{
    EXPECT_EQ(textOf(Qt::Key_A, Qt::NoModifier, QStringLiteral("a")), "a");
    EXPECT_EQ(textOf(Qt::Key_A, Qt::ShiftModifier, QStringLiteral("A")), "A");
    EXPECT_EQ(textOf(Qt::Key_Space, Qt::NoModifier, QStringLiteral(" ")), " ");
    EXPECT_EQ(textOf(Qt::Key_Less, Qt::NoModifier, QStringLiteral("<")), "<");
}

TEST(KeyText, IsUtf8)
{
    EXPECT_EQ(textOf(Qt::Key_Adiaeresis, Qt::NoModifier, QStringLiteral("\u00e4")), "\xc3\xa4");
}

TEST(KeyText, OfALevelThreeKeyIsWhatItTypes)
{
    EXPECT_EQ(textOf(Qt::Key_At, Qt::GroupSwitchModifier, QStringLiteral("@")), "@");
    EXPECT_EQ(textOf(Qt::Key_At, Qt::GroupSwitchModifier | Qt::ShiftModifier, QStringLiteral("@")), "@");
}

TEST(KeyText, KeepsAllOfALongerText)
{
    EXPECT_EQ(textOf(Qt::Key_unknown, Qt::NoModifier, QStringLiteral("abc")), "abc");
}

TEST(KeyText, OfModifierKeysIsEmpty)
{
    for (const Qt::Key key :
         {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Meta, Qt::Key_Alt, Qt::Key_Super_L, Qt::Key_Super_R, Qt::Key_AltGr}) {
        EXPECT_EQ(textOf(key), "") << key;
        EXPECT_EQ(textOf(key, Qt::ControlModifier | Qt::KeypadModifier, QStringLiteral("x")), "") << key;
    }
}

TEST(KeyText, OfOtherLockAndModifierKeysIsTheirName)
{
    EXPECT_EQ(textOf(Qt::Key_CapsLock), "<CapsLock>");
    EXPECT_EQ(textOf(Qt::Key_NumLock), "<NumLock>");
}

TEST(KeyText, OfKeysThatWriteNothingIsTheirNameInAngleBrackets)
{
    EXPECT_EQ(textOf(Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r")), "<Return>");
    EXPECT_EQ(textOf(Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t")), "<Tab>");
    EXPECT_EQ(textOf(Qt::Key_Backspace, Qt::NoModifier, QStringLiteral("\b")), "<Backspace>");
    EXPECT_EQ(textOf(Qt::Key_Escape, Qt::NoModifier, QStringLiteral("\x1b")), "<Esc>");
    EXPECT_EQ(textOf(Qt::Key_F5), "<F5>");
    EXPECT_EQ(textOf(Qt::Key_Left, Qt::ShiftModifier), "<Shift+Left>");
}

TEST(KeyText, OfAKeyCombinationIsItsKeySequence)
{
    EXPECT_EQ(textOf(Qt::Key_A, Qt::ControlModifier, QStringLiteral("\x01")), "<Ctrl+A>");
    EXPECT_EQ(textOf(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier, QStringLiteral("\x01")), "<Ctrl+Shift+A>");
    EXPECT_EQ(textOf(Qt::Key_A, Qt::AltModifier, QStringLiteral("a")), "<Alt+A>");
    EXPECT_EQ(textOf(Qt::Key_A, Qt::MetaModifier, QStringLiteral("a")), "<Meta+A>");
}

TEST(KeyText, OfKeypadKeysSaysSo)
{
    EXPECT_EQ(textOf(Qt::Key_5, Qt::KeypadModifier, QStringLiteral("5")), "<NumPad5>");
    EXPECT_EQ(textOf(Qt::Key_Enter, Qt::KeypadModifier, QStringLiteral("\r")), "<NumPadEnter>");
    EXPECT_EQ(textOf(Qt::Key_5, Qt::KeypadModifier | Qt::ControlModifier, QStringLiteral("5")), "<NumPadCtrl+5>");
}

TEST(KeyText, OfAKeyWithAOneCharacterNameHasNoBrackets)
{
    EXPECT_EQ(textOf(Qt::Key_A), "A");
    EXPECT_EQ(textOf(Qt::Key_Odiaeresis), "\xc3\x96");
}

TEST(KeyText, OfNoKeyAtAllIsEmpty)
{
    EXPECT_EQ(textOf(0), "");
}

TEST(KeyText, OfACharacterOutsideTheBasicPlaneIsTheNameOfTheKey)
{
    EXPECT_EQ(textOf(Qt::Key_F1, Qt::NoModifier, QString::fromUtf8("\xf0\x9f\x98\x80")), "<F1>");
}
