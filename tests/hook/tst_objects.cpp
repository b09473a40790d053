#include "hook/testobjects.h"

#include "hook/value.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Vantle;
using VantleTest::newClass;
using VantleTest::TestObject;

namespace {

const Class *animal()
{
    static const Class *const type = newClass(QStringLiteral("Animal"));
    return type;
}

const Class *dog()
{
    static const Class *const type = newClass(QStringLiteral("Dog"), animal());
    return type;
}

const Class *number()
{
    static const Class *const type = newClass(QStringLiteral("int"));
    return type;
}

SharedPtr<Object> value(int n)
{
    return SharedPtr<Object>(new Value<int>(number(), n));
}

TEST(Class, isASubClassOfItselfAndOfAllItsBases)
{
    const Class puppy(QStringLiteral("Puppy"), dog());
    EXPECT_EQ(puppy.super(), dog());
    EXPECT_TRUE(puppy.isSubClassOf(&puppy));
    EXPECT_TRUE(puppy.isSubClassOf(dog()));
    EXPECT_TRUE(puppy.isSubClassOf(animal()));
    EXPECT_FALSE(animal()->isSubClassOf(&puppy));
    EXPECT_FALSE(puppy.isSubClassOf(number()));
    EXPECT_FALSE(puppy.isSubClassOf(nullptr));
}

TEST(Class, isNotASubClassOfAnotherClassOfTheSameName)
{
    const Class other(QStringLiteral("Animal"));
    EXPECT_FALSE(dog()->isSubClassOf(&other));
}

TEST(Object, standsForANativeObjectUntilThatIsGone)
{
    int native = 0;
    auto *wrapper = new TestObject(dog(), &native);
    const SharedPtr<Object> object(wrapper);
    EXPECT_FALSE(object->isNull());
    wrapper->native = nullptr;
    EXPECT_TRUE(object->isNull());
    void *found = &native;
    EXPECT_FALSE(object->get(&found));
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(object->className(), QStringLiteral("Dog"));
}

TEST(Object, knowsItsClassAndTheBasesOfIt)
{
    const SharedPtr<Object> object(new TestObject(dog()));
    EXPECT_TRUE(object->isA(dog()));
    EXPECT_TRUE(object->isA(animal()));
    EXPECT_FALSE(object->isA(number()));
    EXPECT_FALSE(object->isA(nullptr));
}

TEST(Object, hasNoNameAndNoChildrenUnlessItsKindSaysSo)
{
    int native = 0;
    const SharedPtr<Object> object(new TestObject(dog(), &native));
    EXPECT_TRUE(object->scriptName().isEmpty());
    EXPECT_TRUE(object->children().isEmpty());
}

TEST(Object, isTheSameAsAnotherWrapperOfTheSameNativeObject)
{
    int native = 0;
    int other = 0;
    const SharedPtr<Object> first(new TestObject(dog(), &native));
    const SharedPtr<Object> second(new TestObject(animal(), &native));
    EXPECT_TRUE(first->sameAs(first));
    EXPECT_TRUE(first->sameAs(second));
    EXPECT_TRUE(second->sameAs(first));
    EXPECT_FALSE(first->sameAs(SharedPtr<Object>(new TestObject(dog(), &other))));
    EXPECT_FALSE(first->sameAs(nullptr));
}

TEST(Object, whenDeadIsTheSameAsItselfAlone)
{
    const SharedPtr<Object> first(new TestObject(dog()));
    const SharedPtr<Object> second(new TestObject(dog()));
    EXPECT_TRUE(first->sameAs(first));
    EXPECT_FALSE(first->sameAs(second));
}

TEST(Value, isTheSameAsAnEqualValueOfTheSameClass)
{
    EXPECT_TRUE(value(3)->sameAs(value(3)));
    EXPECT_FALSE(value(3)->sameAs(value(4)));
    EXPECT_FALSE(value(3)->sameAs(nullptr));
    const SharedPtr<Object> otherClass(new Value<int>(newClass(QStringLiteral("Enum")), 3));
    EXPECT_FALSE(value(3)->sameAs(otherClass));
    int native = 3;
    EXPECT_FALSE(value(3)->sameAs(SharedPtr<Object>(new TestObject(dog(), &native))));
}

TEST(Value, givesAPointerToWhatItHolds)
{
    const SharedPtr<Object> three = value(3);
    void *found = nullptr;
    ASSERT_TRUE(three->get(&found));
    EXPECT_EQ(*static_cast<int *>(found), 3);
    EXPECT_FALSE(three->isNull());
    EXPECT_FALSE(value(0)->isNull()) << "a value is there whatever it is";
}

TEST(ObjectList, isEmptyByDefault)
{
    const ObjectList list;
    EXPECT_TRUE(list.isEmpty());
    EXPECT_EQ(list.size(), 0U);
    EXPECT_EQ(list.begin(), list.end());
}

TEST(ObjectList, keepsObjectsInOrderNullAmongThem)
{
    ObjectList list{value(1), nullptr};
    list.push_back(value(3));
    ASSERT_EQ(list.size(), 3U);
    EXPECT_TRUE(list.at(0)->sameAs(value(1)));
    EXPECT_TRUE(list.at(1).isNull());
    EXPECT_TRUE(list.at(2)->sameAs(value(3)));
}

TEST(ObjectList, givesANullPointerBehindItsEnd)
{
    const ObjectList list{value(1)};
    EXPECT_TRUE(list.at(1).isNull());
    EXPECT_TRUE(list.at(std::numeric_limits<std::size_t>::max()).isNull());
    EXPECT_TRUE(ObjectList().at(0).isNull());
}

TEST(ObjectList, keepsItsObjectsAlive)
{
    SharedPtr<Object> object = value(1);
    {
        ObjectList list{object};
        EXPECT_EQ(object->referenceCount(), 2);
        ObjectList copy(list);
        EXPECT_EQ(object->referenceCount(), 3);
        ObjectList moved(std::move(copy));
        EXPECT_EQ(object->referenceCount(), 3);
        list = moved;
        EXPECT_EQ(object->referenceCount(), 3);
        list = ObjectList();
        EXPECT_EQ(object->referenceCount(), 2);
    }
    EXPECT_EQ(object->referenceCount(), 1);
}

TEST(ObjectList, mayBeFilledFromItself)
{
    ObjectList list{value(7)};
    for (int i = 0; i < 20; ++i)
        list.push_back(*list.begin());
    EXPECT_EQ(list.size(), 21U);
    EXPECT_TRUE(list.at(20)->sameAs(value(7)));
    EXPECT_EQ(list.at(0)->referenceCount(), 22);
}

} // namespace
