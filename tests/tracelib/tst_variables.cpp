#include "tracelib/variables.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

using namespace corvaline::tracelib;

namespace {

std::string textOf(const VariableValue &value)
{
    std::string buffer(VariableValue::convertToString(value, nullptr, 0), '#');
    EXPECT_EQ(VariableValue::convertToString(value, buffer.data(), buffer.size()), buffer.size());
    EXPECT_EQ(buffer.back(), '\0');
    buffer.pop_back();
    return buffer;
}

class Named : public AbstractVariable
{
public:
    explicit Named(const char *name) : m_name(name) {}
    const char *name() const override { return m_name; }
    VariableValue value() const override { return VariableValue::numberValue(1); }

private:
    const char *m_name;
};

} // namespace

TEST(VariableValue, printsATextAsItIs)
{
    EXPECT_EQ(textOf(VariableValue::stringValue("Got container ")), "Got container ");
    EXPECT_EQ(textOf(VariableValue::stringValue("")), "");
    EXPECT_EQ(textOf(VariableValue::stringValue("\xc3\xa4\xe2\x82\xac")), "\xc3\xa4\xe2\x82\xac");
}

TEST(VariableValue, takesNullForTheEmptyText)
{
    EXPECT_EQ(textOf(VariableValue::stringValue(nullptr)), "");
}

TEST(VariableValue, keepsItsTextWhenTheArgumentIsGone)
{
    auto original = std::make_unique<std::string>(200, 'x');
    const VariableValue value = VariableValue::stringValue(original->c_str());
    original->assign(200, 'y');
    original.reset();
    EXPECT_EQ(textOf(value), std::string(200, 'x'));
}

TEST(VariableValue, outlivesTheValueItWasCopiedFrom)
{
    auto first = std::make_unique<VariableValue>(VariableValue::stringValue("text"));
    const VariableValue second = *first;
    first.reset();
    EXPECT_EQ(textOf(second), "text");
}

TEST(VariableValue, printsNumbersInDecimalDigitsOverTheWholeRange)
{
    EXPECT_EQ(textOf(VariableValue::numberValue(0)), "0");
    EXPECT_EQ(textOf(VariableValue::numberValue(-17)), "-17");
    EXPECT_EQ(textOf(VariableValue::numberValue(std::numeric_limits<long long>::max())), "9223372036854775807");
    EXPECT_EQ(textOf(VariableValue::numberValue(std::numeric_limits<long long>::min())), "-9223372036854775808");
}

TEST(VariableValue, printsTruthValuesAsWords)
{
    EXPECT_EQ(textOf(VariableValue::booleanValue(true)), "true");
    EXPECT_EQ(textOf(VariableValue::booleanValue(false)), "false");
}

TEST(VariableValue, tellsTheSizeWithTheTerminatorAndWritesNothingWithoutABuffer)
{
    EXPECT_EQ(VariableValue::convertToString(VariableValue::stringValue("four"), nullptr, 0), 5u);
    EXPECT_EQ(VariableValue::convertToString(VariableValue::stringValue("four"), nullptr, 5), 5u);
    EXPECT_EQ(VariableValue::convertToString(VariableValue::stringValue(""), nullptr, 0), 1u);
}

TEST(VariableValue, cutsTheTextToASmallBufferAndTerminatesIt)
{
    const VariableValue value = VariableValue::stringValue("four");
    char buffer[] = "########";
    EXPECT_EQ(VariableValue::convertToString(value, buffer, 3), 5u);
    EXPECT_STREQ(buffer, "fo");
    EXPECT_EQ(buffer[3], '#');
    EXPECT_EQ(VariableValue::convertToString(value, buffer, 1), 5u);
    EXPECT_STREQ(buffer, "");
    buffer[0] = '#';
    EXPECT_EQ(VariableValue::convertToString(value, buffer, 0), 5u);
    EXPECT_EQ(buffer[0], '#');
}

TEST(VariableValue, leavesTheRestOfALargeBufferAlone)
{
    char buffer[] = "########";
    EXPECT_EQ(VariableValue::convertToString(VariableValue::booleanValue(true), buffer, sizeof buffer), 5u);
    EXPECT_STREQ(buffer, "true");
    EXPECT_EQ(buffer[5], '#');
}

TEST(VariableSnapshot, holdsVariablesInOrderAndLetsThemBeReplaced)
{
    Named first("first");
    Named second("second");
    Named other("other");
    VariableSnapshot snapshot;
    EXPECT_EQ(snapshot.size(), 0u);
    snapshot.add(&first);
    snapshot.add(&second);
    ASSERT_EQ(snapshot.size(), 2u);
    EXPECT_EQ(snapshot[0], &first);
    EXPECT_EQ(snapshot[1], &second);
    snapshot[1] = &other;
    EXPECT_STREQ(snapshot[1]->name(), "other");
    EXPECT_EQ(snapshot.size(), 2u);
}
