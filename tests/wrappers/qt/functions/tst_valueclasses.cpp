#include "hook/class.h"

#include "hook/enumclass.h"
#include "hook/inspector.h"
#include "support/keepforever.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonValue>

#include <limits>

using namespace Vantle;

namespace {

class ValueClasses : public testing::Test
{
protected:
    static const Class *type(const char *name) { return Inspector::self()->classByName(QString::fromLatin1(name)); }

    template<typename T>
    static T valueOf(const SharedPtr<Object> &object)
    {
        void *value = nullptr;
        return object && object->get(&value) ? *static_cast<T *>(value) : T();
    }

    static SharedPtr<Object> convert(const SharedPtr<Object> &object, const Class *target)
    {
        EXPECT_EQ(object->objectClass()->canConvertTo(object, target),
                  !object->objectClass()->convertTo(object, target).isNull());
        return object->objectClass()->convertTo(object, target);
    }
    static SharedPtr<Object> convertTolerant(const SharedPtr<Object> &object, const Class *target)
    {
        EXPECT_EQ(object->objectClass()->canConvertToTolerant(object, target),
                  !object->objectClass()->convertToTolerant(object, target).isNull());
        return object->objectClass()->convertToTolerant(object, target);
    }

    Inspector *inspector = Inspector::self();
};

} // namespace

TEST_F(ValueClasses, AreMarkedAsSuch)
{
    for (const char *name : {"int", "bool", "double", "QString", "void"})
        EXPECT_TRUE(type(name)->isValueClass()) << name;
}

TEST_F(ValueClasses, IntegersTurnIntoDoubles)
{
    const SharedPtr<Object> converted = convert(inspector->createInteger(-3), type("double"));
    ASSERT_FALSE(converted.isNull());
    EXPECT_EQ(converted->objectClass(), type("double"));
    EXPECT_EQ(valueOf<double>(converted), -3.0);
}

TEST_F(ValueClasses, NothingElseTurnsIntoAnotherStrictly)
{
    EXPECT_TRUE(convert(inspector->createDouble(3), type("int")).isNull());
    EXPECT_TRUE(convert(inspector->createInteger(1), type("bool")).isNull());
    EXPECT_TRUE(convert(inspector->createBoolean(true), type("int")).isNull());
    EXPECT_TRUE(convert(inspector->createString("1"), type("int")).isNull());
    EXPECT_TRUE(convert(inspector->createInteger(1), type("QString")).isNull());
    EXPECT_TRUE(convert(inspector->createInteger(1), nullptr).isNull());
}

TEST_F(ValueClasses, TolerantlyWholeDoublesTurnIntoIntegers)
{
    EXPECT_EQ(valueOf<int>(convertTolerant(inspector->createDouble(-7), type("int"))), -7);
    constexpr double most = std::numeric_limits<int>::max();
    EXPECT_EQ(valueOf<int>(convertTolerant(inspector->createDouble(most), type("int"))),
              std::numeric_limits<int>::max());
    for (double number : {0.5, most + 1, -most - 2, std::numeric_limits<double>::quiet_NaN(),
                          std::numeric_limits<double>::infinity()}) {
        EXPECT_TRUE(convertTolerant(inspector->createDouble(number), type("int")).isNull()) << number;
    }
}

TEST_F(ValueClasses, TolerantlyIntegersAndTruthValuesTurnIntoEachOther)
{
    const SharedPtr<Object> truth = convertTolerant(inspector->createInteger(5), type("bool"));
    ASSERT_FALSE(truth.isNull());
    EXPECT_TRUE(valueOf<bool>(truth));
    EXPECT_FALSE(valueOf<bool>(convertTolerant(inspector->createInteger(0), type("bool"))));
    EXPECT_EQ(valueOf<int>(convertTolerant(inspector->createBoolean(true), type("int"))), 1);
    EXPECT_EQ(valueOf<double>(convertTolerant(inspector->createInteger(2), type("double"))), 2.0);
}

TEST_F(ValueClasses, TolerantlyIntegersTurnIntoEnumeratorsAndSumsOfThem)
{
    static constexpr Enum::Item items[] = {{"One", 1}, {"Two", 2}, {nullptr, 0}};
    const EnumClass &flags = *VantleTest::keepForever(
        new EnumClass(QStringLiteral("Flags"), QStringLiteral("Flag"), items));
    const SharedPtr<Object> sum = convertTolerant(inspector->createInteger(3), &flags);
    ASSERT_FALSE(sum.isNull());
    EXPECT_EQ(sum->objectClass(), &flags);
    EXPECT_EQ(valueOf<int>(sum), 3);
    EXPECT_TRUE(convert(inspector->createInteger(1), &flags).isNull());
    const Class noEnum(QStringLiteral("NoEnum"));
    EXPECT_TRUE(convertTolerant(inspector->createInteger(1), &noEnum).isNull());
}

TEST_F(ValueClasses, OrderTheirValues)
{
    const Class *const integer = type("int");
    EXPECT_EQ(integer->compare(inspector->createInteger(1), inspector->createInteger(2)), std::partial_ordering::less);
    EXPECT_EQ(integer->compare(inspector->createInteger(2), inspector->createInteger(1)),
              std::partial_ordering::greater);
    EXPECT_EQ(integer->compare(inspector->createInteger(2), inspector->createInteger(2)),
              std::partial_ordering::equivalent);
    EXPECT_EQ(integer->compare(inspector->createInteger(2), inspector->createString("2")),
              std::partial_ordering::unordered);
    EXPECT_EQ(integer->compare(inspector->createInteger(2), nullptr), std::partial_ordering::unordered);
    EXPECT_EQ(type("QString")->compare(inspector->createString("a"), inspector->createString("b")),
              std::partial_ordering::less);
    const SharedPtr<Object> nan = inspector->createDouble(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(type("double")->compare(nan, nan), std::partial_ordering::unordered);
}

TEST_F(ValueClasses, GoToAnotherProcessAndBack)
{
    for (const SharedPtr<Object> &value :
         {inspector->createInteger(-12), inspector->createBoolean(true), inspector->createDouble(0.25),
          inspector->createString(QStringLiteral("gr\u00FC\u00DFe")), inspector->createString("")}) {
        const Class *const valueType = value->objectClass();
        const SharedPtr<Object> back = valueType->readObject(valueType->writeObject(value));
        ASSERT_FALSE(back.isNull()) << valueType->className().toStdString();
        EXPECT_TRUE(back->sameAs(value)) << valueType->className().toStdString();
    }
}

TEST_F(ValueClasses, ReadNothingFromWhatIsNotTheirs)
{
    EXPECT_TRUE(type("int")->readObject(QJsonValue(1.5)).isNull());
    EXPECT_TRUE(type("int")->readObject(QJsonValue(1e12)).isNull());
    EXPECT_TRUE(type("int")->readObject(QStringLiteral("1")).isNull());
    EXPECT_TRUE(type("bool")->readObject(QJsonValue(1)).isNull());
    EXPECT_TRUE(type("double")->readObject(QJsonValue(true)).isNull());
    EXPECT_TRUE(type("QString")->readObject(QJsonValue()).isNull());
    EXPECT_TRUE(type("int")->writeObject(inspector->createString("x")).isNull());
    EXPECT_TRUE(type("int")->writeObject(nullptr).isNull());
}
