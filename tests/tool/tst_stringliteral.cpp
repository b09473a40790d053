#include "tool/stringliteral.h"

#include <gtest/gtest.h>

#include <QtQml/QJSEngine>

using namespace Vantle::Tool;

namespace {

QString evaluated(const QString &literal)
{
    QJSEngine engine;
    const QJSValue value = engine.evaluate(literal);
    EXPECT_TRUE(value.isString()) << qPrintable(literal);
    return value.toString();
}

TEST(StringLiteral, readableTextStaysAsItIs)
{
    EXPECT_EQ(stringLiteral(QString()), QStringLiteral("\"\""));
    EXPECT_EQ(stringLiteral(QStringLiteral("Main Button#a 'b' `c` ${d} Größe 名前 😀")),
              QStringLiteral("\"Main Button#a 'b' `c` ${d} Größe 名前 😀\""));
}

TEST(StringLiteral, quotesBackslashesAndControlsAreEscaped)
{
    EXPECT_EQ(stringLiteral(QStringLiteral("a\"b\\c")), QStringLiteral("\"a\\\"b\\\\c\""));
    EXPECT_EQ(stringLiteral(QStringLiteral("\n\r\t\b\f\v\x7f\x1b")),
              QStringLiteral("\"\\n\\r\\t\\b\\f\\u000b\\u007f\\u001b\""));
    EXPECT_EQ(stringLiteral(QString(QChar(0)) + QLatin1Char('1')), QStringLiteral("\"\\u00001\""));
    EXPECT_EQ(stringLiteral(QString(QChar(0x85))), QStringLiteral("\"\\u0085\""));
}

TEST(StringLiteral, separatorsAndInvisibleCharactersAreEscaped)
{
    EXPECT_EQ(stringLiteral(QStringLiteral("\u2028\u2029")), QStringLiteral("\"\\u2028\\u2029\""));
    EXPECT_EQ(stringLiteral(QStringLiteral("\u202e\u2066\u200b\ufeff\u00ad")),
              QStringLiteral("\"\\u202e\\u2066\\u200b\\ufeff\\u00ad\""));
    const char32_t tag = 0xe0001;
    EXPECT_EQ(stringLiteral(QString::fromUcs4(&tag, 1)), QStringLiteral("\"\\u{e0001}\""));
}

TEST(StringLiteral, loneSurrogatesAreEscapedAndPairsAreNot)
{
    const QString high(QChar(0xd83d));
    const QString low(QChar(0xde00));
    EXPECT_EQ(stringLiteral(high), QStringLiteral("\"\\ud83d\""));
    EXPECT_EQ(stringLiteral(low + high), QStringLiteral("\"\\ude00\\ud83d\""));
    EXPECT_EQ(stringLiteral(high + high + low), QStringLiteral("\"\\ud83d😀\""));
    EXPECT_EQ(stringLiteral(high + QLatin1Char('x')), QStringLiteral("\"\\ud83dx\""));
}

TEST(StringLiteral, meansExactlyItsTextForEveryCodeUnit)
{
    QString everything;
    for (uint unit = 0; unit <= 0xffff; ++unit)
        everything += QChar(static_cast<char16_t>(unit));
    const QString literal = stringLiteral(everything);
    EXPECT_FALSE(literal.contains(QLatin1Char('\n')));
    EXPECT_TRUE(evaluated(literal) == everything);
}

TEST(StringLiteral, meansExactlyItsTextBeyondTheBasicPlane)
{
    QString everything;
    for (char32_t character = 0x10000; character <= 0x10ffff; character += 7)
        everything += QString::fromUcs4(&character, 1);
    EXPECT_TRUE(evaluated(stringLiteral(everything)) == everything);
}

TEST(PlainOrQuoted, quotesOnlyWhatNeedsIt)
{
    EXPECT_EQ(plainOrQuoted(QStringLiteral("/usr/bin/a-b_c.1")), QStringLiteral("/usr/bin/a-b_c.1"));
    EXPECT_EQ(plainOrQuoted(QStringLiteral("--name=x")), QStringLiteral("--name=x"));
    EXPECT_EQ(plainOrQuoted(QString()), QStringLiteral("\"\""));
    EXPECT_EQ(plainOrQuoted(QStringLiteral("two words")), QStringLiteral("\"two words\""));
    EXPECT_EQ(plainOrQuoted(QStringLiteral("a\nalert()")), QStringLiteral("\"a\\nalert()\""));
}

} // namespace
