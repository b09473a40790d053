#include "hook/method.h"

#include "hook/testobjects.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonDocument>

using namespace Vantle;
using VantleTest::newClass;

namespace {

std::string json(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString();
}

const Class *number()
{
    static const Class *const type = newClass(QStringLiteral("int"));
    return type;
}

const Class *item()
{
    static const Class *const type = newClass(QStringLiteral("QQuickItem"), newClass(QStringLiteral("QObject")));
    return type;
}

SharedPtr<Object> noFunction(const ObjectList &, const Class *)
{
    return {};
}

TEST(Descriptions, ofAClassNameItsBase)
{
    EXPECT_EQ(json(number()->describe()), R"({"name":"int"})");
    EXPECT_EQ(json(item()->describe()), R"({"name":"QQuickItem","super":"QObject"})");
}

TEST(Descriptions, ofAnArgumentNameItIfItHasAName)
{
    const Argument named(QStringLiteral("x"), number(), Argument::ByValue, 0);
    EXPECT_EQ(json(named.describe()), R"({"name":"x","type":"int"})");
    const Argument unnamed(item(), Argument::ByPointer, 0);
    EXPECT_EQ(json(unnamed.describe()), R"({"type":"QQuickItem"})");
    const Argument unknown(QStringLiteral("x"), nullptr, Argument::ByValue, 0);
    EXPECT_EQ(json(unknown.describe()), R"({"name":"x","type":"void"})");
}

TEST(Descriptions, keepWhatTheyWereMadeOf)
{
    const Argument argument(QStringLiteral("item"), item(), Argument::ByPointer, 5);
    EXPECT_EQ(argument.name(), QStringLiteral("item"));
    EXPECT_EQ(argument.type(), item());
    EXPECT_EQ(argument.passing(), 2U);
    EXPECT_EQ(argument.flags(), 5);
    const Argument result(number(), Argument::ByConstReference, 1);
    EXPECT_TRUE(result.name().isEmpty());
    EXPECT_EQ(result.passing(), 1U);
    EXPECT_EQ(result.flags(), 1);
}

TEST(Descriptions, ofAMethodListItsArgumentsInOrder)
{
    const Argument result(nullptr, Argument::ByValue, 0);
    const Signature signature({Argument(QStringLiteral("object"), item(), Argument::ByPointer, 0),
                               Argument(QStringLiteral("x"), number(), Argument::ByValue, 0)});
    const Method method(result, QStringLiteral("mouseClick"), signature);
    EXPECT_EQ(method.name(), QStringLiteral("mouseClick"));
    EXPECT_EQ(method.signature().arguments().size(), 2);
    EXPECT_EQ(json(method.describe()),
              R"({"arguments":[{"name":"object","type":"QQuickItem"},{"name":"x","type":"int"}],)"
              R"("name":"mouseClick","result":{"type":"void"}})");
}

TEST(Descriptions, ofAMethodWithoutArgumentsHaveAnEmptyList)
{
    const Method method(Argument(number(), Argument::ByValue, 0), QStringLiteral("count"), Signature());
    EXPECT_EQ(json(method.describe()), R"({"arguments":[],"name":"count","result":{"type":"int"}})");
    const Signature one(Argument(number(), Argument::ByValue, 0));
    EXPECT_EQ(one.arguments().size(), 1);
}

TEST(GlobalClass, keepsItsMethodsInOrderAndIgnoresNull)
{
    const Argument result(nullptr, Argument::ByValue, 0);
    const GlobalMethod first(&noFunction, result, QStringLiteral("flick"), Signature());
    const GlobalMethod overload(nullptr, result, QStringLiteral("flick"), Signature());
    GlobalClass functions;
    EXPECT_TRUE(functions.methods().isEmpty());
    functions.addMethod(&first);
    functions.addMethod(nullptr);
    functions.addMethod(&overload);
    ASSERT_EQ(functions.methods().size(), 2);
    EXPECT_EQ(functions.methods().at(0), &first);
    EXPECT_EQ(functions.methods().at(0)->function(), &noFunction);
    EXPECT_EQ(functions.methods().at(1), &overload);
    EXPECT_EQ(functions.methods().at(1)->function(), nullptr);
}

} // namespace
