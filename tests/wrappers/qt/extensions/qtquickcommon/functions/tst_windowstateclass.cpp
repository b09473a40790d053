#include "wrappers/qt/extensions/qtquickcommon/functions/windowstateclass.h"

#include "support/keepforever.h"

#include "hook/inspector.h"
#include "hook/method.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

#include <cstdlib>
#include <new>

using namespace Vantle;
using namespace Vantle::QtWrapper;

namespace {

int allocations = 0;

} // namespace

// Counts what is created.
void *operator new(std::size_t size)
{
    ++allocations;
    if (void *const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

TEST(WindowStates, AreTheOnlyMemberOfTheirClass)
{
    const WindowStateClass &type = *VantleTest::keepForever(new WindowStateClass);
    EXPECT_EQ(type.className(), QStringLiteral("WindowState"));
    EXPECT_TRUE(type.isValueClass());
    EXPECT_EQ(type.super(), nullptr);
    EXPECT_TRUE(type.constructors().isEmpty());
    EXPECT_TRUE(type.methods().isEmpty());
    EXPECT_TRUE(type.properties().isEmpty());
    EXPECT_EQ(type.enums().size(), 1);
}

TEST(WindowStates, HaveFiveValuesAndAClosingItemThatScriptsDoNotSee)
{
    const WindowStateClass &type = *VantleTest::keepForever(new WindowStateClass);
    const Enum *const states = VantleTest::keepForever(type.createEnum(type.superClassOffset(Class::EnumOffset)));
    ASSERT_NE(states, nullptr);
    EXPECT_EQ(states->name(), QStringLiteral("WindowStateValue"));
    EXPECT_EQ(states->owner(), &type);
    EXPECT_EQ(states->index(), 0);
    const QList<Enum::Item> items = states->items();
    constexpr const char *names[] = {"None", "Normal", "Maximize", "Minimize", "Fullscreen"};
    ASSERT_EQ(items.size(), 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_STREQ(items.at(i).name, names[i]);
        EXPECT_EQ(items.at(i).value, i);
    }
    // The items are one array, so the closing one stands behind the last.
    EXPECT_EQ(states->nameOf(5), nullptr);
    EXPECT_EQ(states->describe().value(QLatin1String("values")).toArray().size(), 5);
}

TEST(WindowStates, OtherIndicesGiveNothing)
{
    const WindowStateClass &type = *VantleTest::keepForever(new WindowStateClass);
    for (int index : {-1, 1, 4, 1000}) {
        const int before = allocations;
        const Enum *const nothing = type.createEnum(index);
        const int after = allocations;
        EXPECT_EQ(nothing, nullptr) << index;
        EXPECT_EQ(after, before) << index;
    }
    const int before = allocations;
    VantleTest::keepForever(type.createEnum(0));
    EXPECT_GT(allocations, before) << "the test would not notice";
}

TEST(WindowStates, AreWhatIntegersTurnInto)
{
    const WindowStateClass &type = *VantleTest::keepForever(new WindowStateClass);
    const SharedPtr<Object> number = Inspector::self()->createInteger(3);
    EXPECT_TRUE(number->objectClass()->canConvertToTolerant(number, &type));
}
