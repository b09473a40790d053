#include "hook/class.h"

#include "hook/enumclass.h"
#include "hook/inspector.h"
#include "hook/method.h"
#include "hook/value.h"
#include "support/keepforever.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>

#include <vector>

using namespace Vantle;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr Enum::Item Sizes[] = {{"Small", 1}, {"Large", 7}, {"Huge", 7}, {nullptr, 0}};

/// A class with some members of each kind, which notes what it is asked to do.
class FullClass : public Class
{
public:
    FullClass(const char *name, const Class *super) : Class(QString::fromLatin1(name), super) { setCounts(); }

    const Method *createConstructor(int index) const override { return create<Method>(ConstructorOffset, index); }
    const Method *createMethod(int index) const override { return create<Method>(MethodOffset, index); }
    const Method *createEvent(int index) const override { return create<Method>(EventOffset, index); }
    const Property *createProperty(int index) const override
    {
        created.push_back(index);
        return new Property(memberName(PropertyOffset, index), nullptr);
    }
    const Enum *createEnum(int index) const override
    {
        created.push_back(index);
        return new Enum(this, memberName(EnumOffset, index), Sizes, index);
    }

    using Class::construct;
    using Class::getProperty;
    using Class::invoke;
    using Class::setProperty;
    SharedPtr<Object> invoke(const SharedPtr<Object> &, const Method *method, const ObjectList &) const override
    {
        return Inspector::self()->createString(QStringLiteral("invoked ") + method->name());
    }
    bool setProperty(const SharedPtr<Object> &, const Property *property, const SharedPtr<Object> &) const override
    {
        lastSet = property->name();
        return true;
    }
    SharedPtr<Object> getProperty(const SharedPtr<Object> &, const Property *property) const override
    {
        return Inspector::self()->createString(QStringLiteral("got ") + property->name());
    }
    SharedPtr<Object> construct(const Method *constructor, const ObjectList &arguments) const override
    {
        return constructor ? Inspector::self()->createString(constructor->name())
                           : Class::construct(nullptr, arguments);
    }

    mutable std::vector<int> created;
    mutable QString lastSet;

private:
    void setCounts()
    {
        for (OffsetType type : {ConstructorOffset, MethodOffset, PropertyOffset, EventOffset, EnumOffset})
            setMemberCount(type, 2);
    }
    QString memberName(OffsetType type, int index) const
    {
        return QStringLiteral("%1.%2.%3").arg(className()).arg(type).arg(index);
    }
    template<typename Member>
    const Member *create(OffsetType type, int index) const
    {
        created.push_back(index);
        const Class *const integer = Inspector::self()->classByName(QStringLiteral("int"));
        const Argument argument(QStringLiteral("n"), integer, Argument::ByValue, 0);
        // The second of each kind takes an argument.
        return new Member(Argument(integer, 0, 0), memberName(type, index),
                          index % 2 ? Signature(argument) : Signature());
    }
};

QString text(const SharedPtr<Object> &object)
{
    void *value = nullptr;
    return object && object->get(&value) ? *static_cast<QString *>(value) : QStringLiteral("nothing");
}

class Classes : public testing::Test
{
protected:
    Classes() { Inspector::self()->takeError(); }

    static SharedPtr<Object> objectOf(const Class *type) { return SharedPtr<Object>(new Value<int>(type, 1)); }

    // What they describe is never freed, and neither are they.
    FullClass &base = *VantleTest::keepForever(new FullClass("Base", nullptr));
    FullClass &derived = *VantleTest::keepForever(new FullClass("Derived", &base));
    Class plain{QStringLiteral("Plain")};
};

} // namespace

TEST_F(Classes, HaveNoMembersOfTheirOwnAccord)
{
    EXPECT_THAT(plain.constructors(), IsEmpty());
    EXPECT_THAT(plain.methods(), IsEmpty());
    EXPECT_THAT(plain.properties(), IsEmpty());
    EXPECT_THAT(plain.events(), IsEmpty());
    EXPECT_THAT(plain.enums(), IsEmpty());
    EXPECT_EQ(plain.createMethod(0), nullptr);
    EXPECT_EQ(plain.createProperty(0), nullptr);
    EXPECT_EQ(plain.createEnum(0), nullptr);
}

TEST_F(Classes, ContinueTheIndicesOfTheirBaseClasses)
{
    EXPECT_EQ(base.superClassOffset(Class::EnumOffset), 0);
    EXPECT_EQ(derived.superClassOffset(Class::MethodOffset), 2);
    const FullClass third("Third", &derived);
    EXPECT_EQ(third.superClassOffset(Class::PropertyOffset), 4);
}

TEST_F(Classes, MakeTheirMembersOnceAtTheFirstQuestion)
{
    EXPECT_THAT(derived.created, IsEmpty());
    ASSERT_EQ(derived.methods().size(), 2);
    EXPECT_EQ(derived.methods().at(1)->name(), QStringLiteral("Derived.1.3"));
    EXPECT_EQ(derived.enums().at(0)->name(), QStringLiteral("Derived.4.2"));
    EXPECT_EQ(derived.methods().at(0), derived.methods().at(0));
    EXPECT_THAT(derived.created, ElementsAre(2, 3, 2, 3, 2, 3, 2, 3, 2, 3));
    EXPECT_THAT(base.created, IsEmpty());
}

TEST_F(Classes, FindMethodsByIndexAndNameThroughTheBaseClasses)
{
    const SharedPtr<Object> object = objectOf(&derived);
    EXPECT_EQ(text(derived.invoke(object, 3, {})), QStringLiteral("invoked Derived.1.3"));
    EXPECT_EQ(text(derived.invoke(object, 0, {})), QStringLiteral("invoked Base.1.0"));
    EXPECT_EQ(text(derived.invoke(object, QStringLiteral("Base.1.1"), {})), QStringLiteral("invoked Base.1.1"));
    EXPECT_EQ(Inspector::self()->takeError(), QString());

    EXPECT_TRUE(derived.invoke(object, 4, {}).isNull());
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("An object of type Derived has no method 4"));
    EXPECT_TRUE(derived.invoke(object, -1, {}).isNull());
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("An object of type Derived has no method -1"));
    EXPECT_TRUE(derived.invoke(object, QStringLiteral("jump"), {}).isNull());
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("An object of type Derived has no method \"jump\""));
}

TEST_F(Classes, FindPropertiesByIndexAndNameThroughTheBaseClasses)
{
    const SharedPtr<Object> object = objectOf(&derived);
    EXPECT_EQ(text(derived.getProperty(object, 2)), QStringLiteral("got Derived.2.2"));
    EXPECT_EQ(text(derived.getProperty(object, QStringLiteral("Base.2.0"))), QStringLiteral("got Base.2.0"));
    EXPECT_TRUE(derived.setProperty(object, 1, object));
    EXPECT_EQ(derived.lastSet, QStringLiteral("Base.2.1"));
    EXPECT_TRUE(derived.setProperty(object, QStringLiteral("Derived.2.3"), object));
    EXPECT_EQ(derived.lastSet, QStringLiteral("Derived.2.3"));

    EXPECT_FALSE(derived.setProperty(object, 9, object));
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("An object of type Derived has no property 9"));
    EXPECT_FALSE(derived.setProperty(object, QStringLiteral("x"), object));
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("An object of type Derived has no property \"x\""));
    EXPECT_TRUE(derived.getProperty(object, QStringLiteral("x")).isNull());
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("An object of type Derived has no property \"x\""));
}

TEST_F(Classes, RefuseInWordsWhatTheyKnowNothingAbout)
{
    const SharedPtr<Object> object = objectOf(&plain);
    const Property property(QStringLiteral("color"), nullptr);
    EXPECT_FALSE(plain.setProperty(object, &property, object));
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("An object of type Plain has no property \"color\""));
    EXPECT_TRUE(plain.invoke(object, static_cast<const Method *>(nullptr), {}).isNull());
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("An object of type Plain has no method \"\""));
    EXPECT_TRUE(plain.construct({}).isNull());
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("A script cannot make an object of type Plain"));
    EXPECT_TRUE(plain.wrap(&plain).isNull());
    EXPECT_TRUE(plain.readObject(QJsonValue(1)).isNull());
    EXPECT_TRUE(plain.writeObject(object).isNull());
    plain.deleteObjectData(nullptr);
}

TEST_F(Classes, ConstructByTheConstructorThatFitsTheArguments)
{
    const SharedPtr<Object> number = Inspector::self()->createInteger(1);
    EXPECT_EQ(text(base.construct({})), QStringLiteral("Base.0.0"));
    EXPECT_EQ(text(base.construct({number})), QStringLiteral("Base.0.1"));
    EXPECT_TRUE(base.construct({number, number}).isNull());
    EXPECT_EQ(Inspector::self()->takeError(), QStringLiteral("A script cannot make an object of type Base"));
}

TEST_F(Classes, CastAndConvertToBaseClassesOnly)
{
    const SharedPtr<Object> object = objectOf(&derived);
    EXPECT_TRUE(derived.canCastTo(object, &base));
    EXPECT_EQ(derived.castTo(object, &base), object);
    EXPECT_TRUE(derived.canConvertTo(object, &base));
    EXPECT_EQ(derived.convertTo(object, &derived), object);
    EXPECT_TRUE(derived.canConvertToTolerant(object, &base));
    EXPECT_EQ(derived.convertToTolerant(object, &base), object);
    for (const Class *other : {static_cast<const Class *>(&plain), static_cast<const Class *>(nullptr)}) {
        EXPECT_FALSE(derived.canCastTo(object, other));
        EXPECT_TRUE(derived.castTo(object, other).isNull());
        EXPECT_FALSE(derived.canConvertTo(object, other));
        EXPECT_TRUE(derived.convertTo(object, other).isNull());
        EXPECT_FALSE(derived.canConvertToTolerant(object, other));
        EXPECT_FALSE(derived.canConvertToInternal(object, other));
        EXPECT_TRUE(derived.convertToInternal(object, other).isNull());
    }
    EXPECT_FALSE(derived.canCastTo(nullptr, &base));
    EXPECT_TRUE(derived.convertTo(nullptr, &base).isNull());
}

TEST_F(Classes, GiveTheNativePointerToObjectsOfTheirBaseClasses)
{
    const SharedPtr<Object> object = objectOf(&derived);
    void *native = nullptr;
    ASSERT_TRUE(object->get(&native));
    EXPECT_EQ(derived.convertToInterface(object, &base), native);
    EXPECT_EQ(derived.convertToInterface(object, &plain), nullptr);
    EXPECT_EQ(derived.convertToInterface(nullptr, &base), nullptr);
}

TEST_F(Classes, CompareObjectsByIdentity)
{
    const SharedPtr<Object> one = objectOf(&plain);
    const SharedPtr<Object> equal = objectOf(&plain);
    const SharedPtr<Object> other = SharedPtr<Object>(new Value<int>(&plain, 2));
    EXPECT_TRUE(plain.sameObjects(one, equal));
    EXPECT_FALSE(plain.sameObjects(one, other));
    EXPECT_FALSE(plain.sameObjects(one, nullptr));
    EXPECT_FALSE(plain.sameObjects(nullptr, one));
    EXPECT_TRUE(plain.sameObjects(nullptr, nullptr));
    EXPECT_EQ(plain.compare(one, equal), std::partial_ordering::equivalent);
    EXPECT_EQ(plain.compare(one, other), std::partial_ordering::unordered);
}

TEST_F(Classes, KnowTheRealTypeOfAnObject)
{
    EXPECT_EQ(base.realType(objectOf(&derived)), &derived);
    EXPECT_EQ(base.realType(nullptr), &base);
}

TEST(ClassWithoutABase, AsksForItWhenItIsFirstNeeded)
{
    class Late : public Class
    {
    public:
        explicit Late(const Class *base) : Class(QStringLiteral("Late"), true), m_base(base) {}
        const Class *initSuperClass() const override
        {
            ++asked;
            return m_base;
        }
        mutable int asked = 0;

    private:
        const Class *m_base;
    };
    const Class base(QStringLiteral("Base"));
    const Late late(&base);
    EXPECT_TRUE(late.isValueClass());
    EXPECT_FALSE(base.isValueClass());
    EXPECT_EQ(late.asked, 0);
    EXPECT_TRUE(late.isSubClassOf(&base));
    EXPECT_EQ(late.super(), &base);
    EXPECT_EQ(late.asked, 1);
}

TEST(Enumerations, OfferTheirItemsWithoutTheClosingOne)
{
    const EnumClass &type = *VantleTest::keepForever(
        new EnumClass(QStringLiteral("Size"), QStringLiteral("SizeValue"), Sizes));
    ASSERT_EQ(type.enums().size(), 1);
    const Enum *const sizes = type.enums().first();
    EXPECT_EQ(sizes->owner(), &type);
    EXPECT_EQ(sizes->name(), QStringLiteral("SizeValue"));
    EXPECT_EQ(sizes->index(), 0);
    ASSERT_EQ(sizes->items().size(), 3);
    EXPECT_STREQ(sizes->items().at(1).name, "Large");
    EXPECT_EQ(sizes->items().at(1).value, 7);
    EXPECT_STREQ(sizes->nameOf(7), "Large");
    EXPECT_EQ(sizes->nameOf(0), nullptr);
    EXPECT_EQ(type.createEnum(1), nullptr);
    EXPECT_EQ(type.createEnum(-1), nullptr);

    const QJsonObject description = type.describe();
    const QJsonObject first = description.value(QLatin1String("enums")).toArray().first().toObject();
    EXPECT_EQ(first.value(QLatin1String("name")).toString(), QStringLiteral("SizeValue"));
    EXPECT_EQ(first.value(QLatin1String("values")).toArray().size(), 3);
    EXPECT_EQ(first.value(QLatin1String("values")).toArray().at(2).toObject(),
              (QJsonObject{{QStringLiteral("name"), QStringLiteral("Huge")}, {QStringLiteral("value"), 7}}));
}

TEST(Properties, DescribeThemselves)
{
    const Class type(QStringLiteral("Color"));
    EXPECT_EQ(Property(QStringLiteral("fill"), &type).describe(),
              (QJsonObject{{QStringLiteral("name"), QStringLiteral("fill")},
                           {QStringLiteral("type"), QStringLiteral("Color")}}));
}
