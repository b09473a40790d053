#include "hook/inspector.h"

#include "hook/testobjects.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Vantle;

namespace {

template<typename T>
const T &held(const SharedPtr<Object> &object)
{
    void *value = nullptr;
    EXPECT_TRUE(object->get(&value));
    return *static_cast<const T *>(value);
}

const Class *classNamed(const char *name)
{
    return Inspector::self()->classByName(QString::fromLatin1(name));
}

TEST(Inspector, isOneForTheProcess)
{
    ASSERT_NE(Inspector::self(), nullptr);
    EXPECT_EQ(Inspector::self(), Inspector::self());
    EXPECT_EQ(Inspector::self()->globalClass(), Inspector::self()->globalClass());
}

TEST(Inspector, knowsTheValueClassesFromTheStart)
{
    for (const char *name : {"int", "bool", "double", "QString"}) {
        const Class *type = classNamed(name);
        ASSERT_NE(type, nullptr) << name;
        EXPECT_EQ(type->className(), QString::fromLatin1(name));
        EXPECT_EQ(type->super(), nullptr);
    }
}

TEST(Inspector, findsNoClassUnderAnUnknownName)
{
    EXPECT_EQ(classNamed("NoSuchClass"), nullptr);
    EXPECT_EQ(classNamed(""), nullptr);
    EXPECT_EQ(classNamed("INT"), nullptr);
    EXPECT_EQ(Inspector::self()->classByName(QString()), nullptr);
}

TEST(Inspector, keepsTheFirstClassOfAName)
{
    const Class *first = VantleTest::newClass(QStringLiteral("InspectorTestClass"));
    const Class *second = VantleTest::newClass(QStringLiteral("InspectorTestClass"));
    Inspector::self()->registerClass(first);
    Inspector::self()->registerClass(second);
    Inspector::self()->registerClass(first);
    EXPECT_EQ(classNamed("InspectorTestClass"), first);
}

TEST(Inspector, ignoresANullClass)
{
    Inspector::self()->registerClass(nullptr);
    EXPECT_EQ(Inspector::self()->classByName(QString()), nullptr);
}

TEST(Inspector, makesValuesOfTheClassesThatItKnows)
{
    const Inspector *inspector = Inspector::self();
    EXPECT_EQ(inspector->createInteger(-3)->objectClass(), classNamed("int"));
    EXPECT_EQ(held<int>(inspector->createInteger(-3)), -3);
    EXPECT_EQ(inspector->createBoolean(true)->objectClass(), classNamed("bool"));
    EXPECT_TRUE(held<bool>(inspector->createBoolean(true)));
    EXPECT_FALSE(held<bool>(inspector->createBoolean(false)));
    EXPECT_EQ(inspector->createDouble(0.5)->objectClass(), classNamed("double"));
    EXPECT_EQ(held<double>(inspector->createDouble(0.5)), 0.5);
    EXPECT_TRUE(std::isnan(held<double>(inspector->createDouble(std::nan("")))));
    EXPECT_EQ(inspector->createString(QStringLiteral("a"))->objectClass(), classNamed("QString"));
    EXPECT_EQ(held<QString>(inspector->createString(QStringLiteral("a"))), QStringLiteral("a"));
}

TEST(Inspector, readsTextAsUtf8)
{
    const Inspector *inspector = Inspector::self();
    EXPECT_EQ(held<QString>(inspector->createString("größer \xe2\x82\xac")), QStringLiteral("größer €"));
    EXPECT_EQ(held<QString>(inspector->createString("")), QString());
    EXPECT_EQ(held<QString>(inspector->createString(static_cast<const char *>(nullptr))), QString());
}

TEST(Inspector, keepsTheFirstErrorOfACall)
{
    Inspector *inspector = Inspector::self();
    EXPECT_TRUE(inspector->takeError().isEmpty());
    inspector->raiseError(QStringLiteral("cause"));
    inspector->raiseError(QStringLiteral("consequence"));
    EXPECT_EQ(inspector->takeError(), QStringLiteral("cause"));
    EXPECT_TRUE(inspector->takeError().isEmpty());
    inspector->raiseError(QStringLiteral("next call"));
    EXPECT_EQ(inspector->takeError(), QStringLiteral("next call"));
}

TEST(Inspector, hasAResultForFunctionsWithoutOne)
{
    const SharedPtr<Object> nothing = Inspector::self()->voidResult();
    ASSERT_FALSE(nothing.isNull());
    EXPECT_TRUE(nothing->isNull());
    EXPECT_EQ(nothing->className(), QStringLiteral("void"));
    EXPECT_EQ(nothing, Inspector::self()->voidResult());
    void *value = &value;
    EXPECT_FALSE(nothing->get(&value));
    EXPECT_EQ(value, nullptr);
}

} // namespace
