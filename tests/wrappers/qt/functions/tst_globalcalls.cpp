#include "hook/inspector.h"

#include "hook/value.h"

#include <gtest/gtest.h>

using namespace Vantle;

namespace {

QString lastCall;
ObjectList lastArguments;

template<int Number>
SharedPtr<Object> overload(const ObjectList &arguments, const Class *)
{
    lastCall = QString::number(Number);
    lastArguments = arguments;
    return Inspector::self()->createInteger(Number);
}

SharedPtr<Object> failing(const ObjectList &, const Class *)
{
    Inspector::self()->raiseError(QStringLiteral("first"));
    Inspector::self()->raiseError(QStringLiteral("second"));
    return Inspector::self()->voidResult();
}

SharedPtr<Object> silent(const ObjectList &, const Class *)
{
    return nullptr;
}

SharedPtr<Object> nesting(const ObjectList &arguments, const Class *)
{
    Inspector *const inspector = Inspector::self();
    EXPECT_TRUE(inspector->callGlobalMethod(QStringLiteral("failing"), {}).isNull());
    EXPECT_EQ(inspector->takeError(), QStringLiteral("first"));
    return arguments.at(0);
}

const Class *classFor(const char *name, const Class *super = nullptr)
{
    return new Class(QString::fromLatin1(name), super);
}

/// Functions are registered once for the process.
struct Registered
{
    const Class *thing = classFor("Thing");
    const Class *item = classFor("Item", thing);
    const Class *button = classFor("Button", item);
    const Class *stranger = classFor("Stranger");

    Registered()
    {
        const Argument byPointer(QStringLiteral("item"), item, Argument::ByPointer, 0);
        const Argument parent(QStringLiteral("thing"), thing, Argument::ByPointer, 0);
        const Argument integer = valueArgument("int");
        const Argument number = valueArgument("double");
        add("act", overload<1>, {parent});
        add("act", overload<2>, {byPointer});
        add("act", overload<3>, {byPointer, integer});
        add("act", overload<4>, {byPointer, number});
        add("act", overload<5>, {byPointer, number});
        add("act", nullptr, {valueArgument("QString")});
        add("scale", overload<6>, {number});
        add("toggle", overload<7>, {valueArgument("bool")});
        add("failing", failing, {});
        add("silent", silent, {});
        add("nesting", nesting, {integer});
        add("broken", overload<8>, {Argument(QStringLiteral("x"), nullptr, Argument::ByPointer, 0)});
    }

    static Argument valueArgument(const char *type)
    {
        return {QStringLiteral("value"), Inspector::self()->classByName(QString::fromLatin1(type)), Argument::ByValue,
                0};
    }

    static void add(const char *name, GlobalFunction function, const QList<Argument> &arguments)
    {
        Inspector::self()->globalClass()->addMethod(
            new GlobalMethod(function, Argument(nullptr, 0, 0), QString::fromLatin1(name), Signature(arguments)));
    }
};

class GlobalCalls : public testing::Test
{
protected:
    GlobalCalls()
    {
        static const Registered theRegistered;
        types = &theRegistered;
        lastCall.clear();
    }
    ~GlobalCalls() override { lastArguments = {}; }

    static SharedPtr<Object> objectOf(const Class *type) { return SharedPtr<Object>(new Value<int>(type, 0)); }

    SharedPtr<Object> call(const char *name, const ObjectList &arguments)
    {
        const SharedPtr<Object> result = inspector->callGlobalMethod(QString::fromLatin1(name), arguments);
        error = inspector->takeError();
        return result;
    }

    Inspector *inspector = Inspector::self();
    const Registered *types;
    QString error;
};

} // namespace

TEST_F(GlobalCalls, OverloadsAreToldApartByNumberAndClassOfTheirArguments)
{
    EXPECT_FALSE(call("act", {objectOf(types->item)}).isNull());
    EXPECT_EQ(lastCall, QStringLiteral("2"));
    EXPECT_FALSE(call("act", {objectOf(types->item), inspector->createInteger(1)}).isNull());
    EXPECT_EQ(lastCall, QStringLiteral("3"));
    EXPECT_EQ(error, QString());
}

TEST_F(GlobalCalls, NearestBaseClassWins)
{
    call("act", {objectOf(types->button)});
    EXPECT_EQ(lastCall, QStringLiteral("2"));
    call("act", {objectOf(types->thing)});
    EXPECT_EQ(lastCall, QStringLiteral("1"));
}

TEST_F(GlobalCalls, OfEqualOverloadsTheFirstWins)
{
    call("act", {objectOf(types->item), inspector->createDouble(1.5)});
    EXPECT_EQ(lastCall, QStringLiteral("4"));
}

TEST_F(GlobalCalls, ArgumentsArriveConverted)
{
    call("scale", {inspector->createInteger(4)});
    EXPECT_EQ(lastCall, QStringLiteral("6"));
    ASSERT_EQ(lastArguments.size(), 1U);
    void *value = nullptr;
    ASSERT_TRUE(lastArguments.at(0)->get(&value));
    EXPECT_EQ(lastArguments.at(0)->className(), QStringLiteral("double"));
    EXPECT_EQ(*static_cast<double *>(value), 4.0);

    call("toggle", {inspector->createInteger(0)});
    EXPECT_EQ(lastArguments.at(0)->className(), QStringLiteral("bool"));
}

TEST_F(GlobalCalls, NullStandsForAnyObjectButForNoValue)
{
    call("act", {nullptr});
    EXPECT_EQ(lastCall, QStringLiteral("1"));
    EXPECT_TRUE(lastArguments.at(0).isNull());
    EXPECT_TRUE(call("scale", {nullptr}).isNull());
    EXPECT_EQ(error, QStringLiteral("No overload fits the call scale(null). There are: scale(value: double)"));
}

TEST_F(GlobalCalls, UnknownFunctionIsAnError)
{
    EXPECT_TRUE(call("fly", {}).isNull());
    EXPECT_EQ(error, QStringLiteral("There is no function named fly"));
}

TEST_F(GlobalCalls, ArgumentsThatFitNoOverloadAreAnErrorThatListsThem)
{
    EXPECT_TRUE(call("act", {objectOf(types->stranger), inspector->createString("%1")}).isNull());
    EXPECT_EQ(error,
              QStringLiteral("No overload fits the call act(Stranger, QString). There are: act(thing: Thing); "
                             "act(item: Item); act(item: Item, value: int); act(item: Item, value: double); "
                             "act(item: Item, value: double); act(value: QString)"));
    EXPECT_EQ(lastCall, QString());
}

TEST_F(GlobalCalls, OverloadThatNothingCarriesOutIsAnError)
{
    EXPECT_TRUE(call("act", {inspector->createString("name")}).isNull());
    EXPECT_EQ(error, QStringLiteral("act(value: QString) cannot be called in this program: nothing carries it out"));
}

TEST_F(GlobalCalls, ArgumentOfAnUnknownTypeFitsNothing)
{
    EXPECT_TRUE(call("broken", {objectOf(types->item)}).isNull());
    EXPECT_EQ(error, QStringLiteral("No overload fits the call broken(Item). There are: broken(x: unknown)"));
}

TEST_F(GlobalCalls, FirstRaisedErrorMakesTheCallFailWhateverItReturned)
{
    EXPECT_TRUE(call("failing", {}).isNull());
    EXPECT_EQ(error, QStringLiteral("first"));
}

TEST_F(GlobalCalls, NothingWithoutAnErrorIsAResult)
{
    EXPECT_TRUE(call("silent", {}).isNull());
    EXPECT_EQ(error, QString());
}

TEST_F(GlobalCalls, ErrorOfAnEarlierCallIsForgotten)
{
    inspector->raiseError(QStringLiteral("old"));
    EXPECT_FALSE(call("act", {objectOf(types->item)}).isNull());
    EXPECT_EQ(error, QString());
}

TEST_F(GlobalCalls, FunctionMayCallOthersAndSurviveTheirErrors)
{
    EXPECT_FALSE(call("nesting", {inspector->createInteger(1)}).isNull());
    EXPECT_EQ(error, QString());
}

TEST_F(GlobalCalls, FindGivesTheOverloadWithoutCallingIt)
{
    const GlobalMethod *const method = inspector->findGlobalMethod(QStringLiteral("act"),
                                                                   {objectOf(types->button),
                                                                    inspector->createInteger(1)});
    ASSERT_NE(method, nullptr);
    EXPECT_EQ(method->function(), &overload<3>);
    EXPECT_EQ(lastCall, QString());
    EXPECT_EQ(inspector->findGlobalMethod(QStringLiteral("act"), {}), nullptr);
}
