#include "wrappers/qt/functions/typedtext_p.h"

#include "wrappers/qt/extensions/qtquickcommon/recording/keytext_p.h"

#include <gtest/gtest.h>

#include <QtGui/QKeyEvent>

using namespace Vantle::QtWrapper;

namespace {

/// What the recorder writes for the keystrokes of \p text; the reason in
/// brackets of its own kind where there are none.
std::string written(const QString &text)
{
    QString problem;
    const std::optional<TypedText> typed = parseTypedText(text, &problem);
    if (!typed)
        return '{' + problem.toStdString() + '}';
    std::string result;
    for (const Keystroke &keystroke : typed->keystrokes)
        result += keyEventText(QKeyEvent(QEvent::KeyPress, keystroke.key, keystroke.modifiers, keystroke.text));
    return result;
}

Keystroke onlyKey(const QString &text)
{
    QString problem;
    const std::optional<TypedText> typed = parseTypedText(text, &problem);
    EXPECT_TRUE(typed && typed->keystrokes.size() == 1) << problem.toStdString();
    return typed && !typed->keystrokes.isEmpty() ? typed->keystrokes.first() : Keystroke();
}

} // namespace

TEST(TypedText, NamesOfKeysAreReadAsTheRecorderWritesThem)
{
    for (const char *name : {"<Tab>",
                             "<Ctrl+S>",
                             "<Ctrl+Shift+S>",
                             "<Alt+F4>",
                             "<Return>",
                             "<NumPadEnter>",
                             "<NumPad5>",
                             "<NumPad+>",
                             "<NumPadCtrl++>",
                             "<\xf0\x9f\x98\x80>",
                             "<NumPad.>",
                             "<NumPadCtrl+5>",
                             "<Ctrl++>",
                             "<Ctrl+,>",
                             "<Ctrl+<>",
                             "<Ctrl+>>",
                             "<Meta+E>",
                             "<Esc>",
                             "<Del>",
                             "<Backspace>",
                             "<Left>",
                             "<F12>",
                             "<Shift+Backtab>",
                             "<PgDown>",
                             "<Ctrl+Space>",
                             "<Volume Up>",
                             "<Meta+Ctrl+Alt+Shift+X>",
                             "<Ctrl+\xc3\x89>",
                             "<NumPad/>",
                             "<Alt+->",
                             "<Shift+Left>",
                             "<Ins>"}) {
        EXPECT_EQ(written(QString::fromUtf8(name)), name);
    }
}

TEST(TypedText, EveryKeyWithANameIsReadBack)
{
    int keys = 0;
    for (int key = Qt::Key_Escape; key <= Qt::Key_Launch0; ++key) {
        const QString name = QKeySequence(key).toString(QKeySequence::PortableText);
        // Keys without a name get characters that mean nothing.
        if (name.size() < 2 || name.toLatin1() != name.toUtf8() || !name.front().isLetter())
            continue;
        for (const Qt::KeyboardModifiers modifiers :
             {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier | Qt::ShiftModifier)}) {
            const QByteArray text = keyEventText(QKeyEvent(QEvent::KeyPress, key, modifiers));
            if (text.isEmpty())
                continue;
            EXPECT_EQ(written(QString::fromUtf8(text)), text.toStdString());
            ++keys;
        }
    }
    EXPECT_GT(keys, 100);
}

TEST(TypedText, TextIsTypedAsItStands)
{
    for (const char *text : {"abc", "Hello World!", "<", ">", "a<b", "a<Tab>", "x > y", "", "\xc3\xa9", "\xe4\xb8\x96",
                             "1+1=2", "~`@#$%^&*()_+{}|\"'?/\\"})
        EXPECT_EQ(written(QString::fromUtf8(text)), text);
}

TEST(TypedText, CapitalLettersNeedShift)
{
    EXPECT_EQ(onlyKey(QStringLiteral("A")), (Keystroke{Qt::Key_A, Qt::ShiftModifier, QStringLiteral("A")}));
    EXPECT_EQ(onlyKey(QStringLiteral("a")), (Keystroke{Qt::Key_A, Qt::NoModifier, QStringLiteral("a")}));
    EXPECT_EQ(onlyKey(QStringLiteral("1")), (Keystroke{Qt::Key_1, Qt::NoModifier, QStringLiteral("1")}));
    EXPECT_EQ(onlyKey(QStringLiteral("\u00e9")), (Keystroke{Qt::Key_Eacute, Qt::NoModifier, QStringLiteral("\u00e9")}));
}

TEST(TypedText, KeysWriteWhatTheKeyboardDoes)
{
    EXPECT_EQ(onlyKey(QStringLiteral("<Ctrl+S>")), (Keystroke{Qt::Key_S, Qt::ControlModifier, QStringLiteral("\x13")}));
    EXPECT_EQ(onlyKey(QStringLiteral("<Alt+F>")), (Keystroke{Qt::Key_F, Qt::AltModifier, QStringLiteral("f")}));
    EXPECT_EQ(onlyKey(QStringLiteral("<NumPad5>")), (Keystroke{Qt::Key_5, Qt::KeypadModifier, QStringLiteral("5")}));
    EXPECT_EQ(onlyKey(QStringLiteral("<Return>")), (Keystroke{Qt::Key_Return, {}, QStringLiteral("\r")}));
    EXPECT_EQ(onlyKey(QStringLiteral("<F1>")), (Keystroke{Qt::Key_F1, {}, QString()}));
}

TEST(TypedText, LineEndsAndTabsAreKeysToo)
{
    EXPECT_EQ(onlyKey(QStringLiteral("\n")).key, Qt::Key_Return);
    EXPECT_EQ(onlyKey(QStringLiteral("\t")).key, Qt::Key_Tab);
}

TEST(TypedText, OfSeveralCharactersBeyondAsciiIsAKeyForEach)
{
    QString problem;
    EXPECT_EQ(parseTypedText(QStringLiteral("\u4e16\u754c"), &problem)->keystrokes.size(), 2);
    EXPECT_EQ(parseTypedText(QStringLiteral("na\u00efve"), &problem)->keystrokes.at(2).text, QStringLiteral("\u00ef"));
}

TEST(TypedText, NamesOfNoKeyAreRefused)
{
    for (const char *name :
         {"<Foo>", "<>", "<Ctrl+>", "<Tab", "<NumPad>", "<Ctrl+Foo>", "<Tab><Tab>", "<<", "<a, b>"}) {
        EXPECT_EQ(written(QString::fromUtf8(name)),
                  std::string("{\"") + name
                      + "\" is not the name of a key. To type a text that begins with \"<\", use typeText}");
    }
}

TEST(TypedText, CharactersThatNoKeyWritesAreRefused)
{
    EXPECT_EQ(written(QStringLiteral("a\x01")), "{no key writes the character U+0001}");
}

TEST(TypedText, LiterallyIsNeverTheNameOfAKey)
{
    QString problem;
    const std::optional<TypedText> tag = literalText(QStringLiteral("<Tab>"), &problem);
    ASSERT_TRUE(tag);
    EXPECT_EQ(tag->keystrokes.size(), 5);
    EXPECT_EQ(tag->keystrokes.first().text, QStringLiteral("<"));
    EXPECT_EQ(literalText(QStringLiteral("<\u00e9>"), &problem)->keystrokes.size(), 3);
    EXPECT_FALSE(literalText(QStringLiteral("a\x01"), &problem));
}

TEST(TypedText, KeysToBeHeldAreCharactersNamesAndModifiers)
{
    QString problem;
    EXPECT_EQ(parseKey(QStringLiteral("a"), &problem)->key, Qt::Key_A);
    EXPECT_EQ(parseKey(QStringLiteral("<"), &problem)->key, Qt::Key_Less);
    EXPECT_EQ(parseKey(QStringLiteral("<Down>"), &problem)->key, Qt::Key_Down);
    EXPECT_EQ(parseKey(QStringLiteral("<Ctrl+Right>"), &problem), (Keystroke{Qt::Key_Right, Qt::ControlModifier, {}}));
    EXPECT_EQ(parseKey(QStringLiteral("<Shift>"), &problem), (Keystroke{0, Qt::ShiftModifier, {}}));
    EXPECT_EQ(parseKey(QStringLiteral("<Ctrl>"), &problem), (Keystroke{0, Qt::ControlModifier, {}}));
    EXPECT_EQ(parseKey(QStringLiteral("<Alt>"), &problem), (Keystroke{0, Qt::AltModifier, {}}));
    EXPECT_EQ(parseKey(QStringLiteral("<Meta>"), &problem), (Keystroke{0, Qt::MetaModifier, {}}));
}

TEST(TypedText, TextsOfNoKeyCannotBeHeld)
{
    for (const char *text : {"", "ab", "<Foo>", "<>", "<Tab", "<Tab><Tab>"}) {
        QString problem;
        EXPECT_FALSE(parseKey(QString::fromUtf8(text), &problem)) << text;
        EXPECT_EQ(problem.toStdString(),
                  '"' + std::string(text)
                      + "\" is no key: expected one character, or the name of a key such as \"<Shift>\"");
    }
}
