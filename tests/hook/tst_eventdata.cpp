#include "hook/eventdata.h"

#include "hook/inspector.h"

#include <gtest/gtest.h>

using namespace Vantle;

namespace {

TEST(EventData, keepsTheCallAndHasNoTimeAtFirst)
{
    const Method method(Argument(nullptr, Argument::ByValue, 0), QStringLiteral("type"), Signature());
    const SharedPtr<Object> text = Inspector::self()->createString("Hello");
    EventData statement(&method, QStringLiteral("TextField#name"), {text});
    EXPECT_EQ(statement.method(), &method);
    EXPECT_EQ(statement.objectName(), QStringLiteral("TextField#name"));
    ASSERT_EQ(statement.arguments().size(), 1U);
    EXPECT_EQ(statement.arguments().at(0), text);
    EXPECT_FALSE(statement.time.isValid());
}

TEST(EventData, copiesShareTheArgumentsAndNothingElse)
{
    const Method method(Argument(nullptr, Argument::ByValue, 0), QStringLiteral("type"), Signature());
    const SharedPtr<Object> text = Inspector::self()->createString("Hello");
    EventData original(&method, QStringLiteral("a"), {text});
    original.time = QTime(10, 11, 12, 13);
    EventData copy(original);
    copy.time = QTime(1, 2);
    EXPECT_EQ(original.time, QTime(10, 11, 12, 13));
    EXPECT_EQ(copy.arguments().at(0), text);
    EXPECT_EQ(text->referenceCount(), 3);

    EventData other(nullptr, QStringLiteral("b"), {});
    other = original;
    EXPECT_EQ(other.method(), &method);
    EXPECT_EQ(other.objectName(), QStringLiteral("a"));
    EXPECT_EQ(other.time, QTime(10, 11, 12, 13));
    EventData &same = other;
    other = same;
    EXPECT_EQ(other.arguments().size(), 1U);
    EXPECT_EQ(text->referenceCount(), 4);
}

} // namespace
