#include "hook/objectname.h"

#include <gtest/gtest.h>

using Vantle::PropertyValue;

namespace {

PropertyValue value(const char *text, PropertyValue::Modifiers modifiers)
{
    return PropertyValue(QString::fromUtf8(text), modifiers, PropertyValue::Text);
}

bool matches(const char *wanted, PropertyValue::Modifiers modifiers, const char *text)
{
    return value(wanted, modifiers).matches(QString::fromUtf8(text));
}

TEST(PropertyValue, isByDefaultAnEmptyTextThatOnlyAnEmptyTextEquals)
{
    const PropertyValue empty;
    EXPECT_EQ(empty.stringValue(), QString());
    EXPECT_EQ(empty.modifiers(), PropertyValue::Equals);
    EXPECT_EQ(empty.type(), PropertyValue::Text);
    EXPECT_TRUE(empty.matches(QString()));
    EXPECT_TRUE(empty.matches(QStringLiteral("")));
    EXPECT_FALSE(empty.matches(QStringLiteral(" ")));
}

TEST(PropertyValue, equalsComparesTheWholeTextCaseSensitively)
{
    EXPECT_TRUE(matches("Größe", PropertyValue::Equals, "Größe"));
    EXPECT_FALSE(matches("Größe", PropertyValue::Equals, "größe"));
    EXPECT_FALSE(matches("Größe", PropertyValue::Equals, "Größe "));
    EXPECT_FALSE(matches("G.*", PropertyValue::Equals, "Größe"));
}

TEST(PropertyValue, containsBeginsAndEndsCompareCaseSensitively)
{
    EXPECT_TRUE(matches("av", PropertyValue::Contains, "Save as"));
    EXPECT_FALSE(matches("AV", PropertyValue::Contains, "Save as"));
    EXPECT_TRUE(matches("Save", PropertyValue::BeginsWith, "Save as"));
    EXPECT_FALSE(matches("ave", PropertyValue::BeginsWith, "Save as"));
    EXPECT_FALSE(matches("save", PropertyValue::BeginsWith, "Save as"));
    EXPECT_TRUE(matches("as", PropertyValue::EndsWith, "Save as"));
    EXPECT_FALSE(matches("a", PropertyValue::EndsWith, "Save as"));
}

TEST(PropertyValue, anEmptyTextIsInEveryText)
{
    for (const auto modifiers : {PropertyValue::Contains, PropertyValue::BeginsWith, PropertyValue::EndsWith,
                                 PropertyValue::MatchesRegularExpression}) {
        EXPECT_TRUE(matches("", modifiers, "Save"));
        EXPECT_TRUE(matches("", modifiers, ""));
    }
}

TEST(PropertyValue, aRegularExpressionMatchesAnywhereUnlessAnchored)
{
    EXPECT_TRUE(matches("a[vw]e", PropertyValue::MatchesRegularExpression, "Save as"));
    EXPECT_TRUE(matches("^Save", PropertyValue::MatchesRegularExpression, "Save as"));
    EXPECT_FALSE(matches("^ave", PropertyValue::MatchesRegularExpression, "Save as"));
    EXPECT_FALSE(matches("SAVE", PropertyValue::MatchesRegularExpression, "Save as"));
}

TEST(PropertyValue, caseIsIgnoredOnlyWhenAskedFor)
{
    const auto insensitively = PropertyValue::MatchesRegularExpressionCaseInsensitively;
    EXPECT_TRUE(matches("^SAVE", insensitively, "Save as"));
    EXPECT_TRUE(matches("GRÖ", insensitively, "größe"));
    EXPECT_FALSE(matches("GRO", insensitively, "größe"));
}

TEST(PropertyValue, anInvalidRegularExpressionMatchesNothing)
{
    for (const char *pattern : {"(", "a\\", "[", "*"}) {
        EXPECT_FALSE(matches(pattern, PropertyValue::MatchesRegularExpression, pattern)) << pattern;
        EXPECT_FALSE(matches(pattern, PropertyValue::MatchesRegularExpression, "")) << pattern;
    }
}

TEST(PropertyValue, aRegularExpressionIsNotMisledByHalvesOfSurrogatePairs)
{
    const PropertyValue any(QStringLiteral("."), PropertyValue::MatchesRegularExpression, PropertyValue::Text);
    EXPECT_FALSE(any.matches(QString(QChar(0xd800))));
    EXPECT_TRUE(any.matches(QStringLiteral("\U0001f600")));
    const PropertyValue broken(QString(QChar(0xdc00)), PropertyValue::MatchesRegularExpression, PropertyValue::Text);
    EXPECT_FALSE(broken.matches(QString(QChar(0xdc00))));
}

TEST(PropertyValue, equalityLooksAtTextAndModifierAndNotAtWhatWasCompiled)
{
    const auto a = value("a", PropertyValue::MatchesRegularExpression);
    const auto b = value("a", PropertyValue::MatchesRegularExpression);
    EXPECT_TRUE(a.matches(QStringLiteral("a")));
    EXPECT_EQ(a, b);
    EXPECT_NE(a, value("a", PropertyValue::MatchesRegularExpressionCaseInsensitively));
    EXPECT_NE(a, value("b", PropertyValue::MatchesRegularExpression));
    EXPECT_NE(value("a", PropertyValue::Equals), value("a", PropertyValue::Contains));
}

TEST(PropertyValue, copiesMatchLikeTheOriginalAndOutliveIt)
{
    PropertyValue copy;
    {
        const auto original = value("^a+$", PropertyValue::MatchesRegularExpression);
        copy = original;
    }
    EXPECT_TRUE(copy.matches(QStringLiteral("aaa")));
    EXPECT_FALSE(copy.matches(QStringLiteral("aab")));
    copy = value("aab", PropertyValue::Equals);
    EXPECT_TRUE(copy.matches(QStringLiteral("aab")));
}

} // namespace
