#include "formcommands.h"

using namespace Vantle;
using namespace VantleTest;

TEST_F(FormCommands, UnknownMethodsStayUnknown)
{
    EXPECT_EQ(failureOf("fly").code, Protocol::MethodNotFound);
}

TEST_F(FormCommands, PendingRequestsSurviveTheEndOfTheConnection)
{
    const auto reply = post("find", json(R"({"name": "Window#form #never", "timeout": 20000})"));
    const auto served = post("children");
    ASSERT_TRUE(waitUntil([&] { return served->has_value(); }));
    toolEnd()->close();
    ASSERT_TRUE(waitUntil([&] { return reply->has_value() && !agentEnd()->isOpen(); }));
    EXPECT_EQ((*reply)->error->code, Protocol::Disconnected);
}

TEST_F(FormCommands, TheConnectionMayEndInsideAnEventLoopThatARequestHasOpened)
{
    bool hasEnded = false;
    QObject::connect(window(), &QWindow::windowTitleChanged, window(), [&] {
        toolEnd()->close();
        hasEnded = waitUntil([&] { return !agentEnd()->isOpen(); });
    });
    const auto reply = post("setProperty",
                            json(R"({"name": "Window#form", "property": "title", "value": "New"})"));
    ASSERT_TRUE(waitUntil([&] { return hasEnded; }));
    EXPECT_EQ(window()->title(), QStringLiteral("New"));
    ASSERT_TRUE(reply->has_value());
    EXPECT_EQ((*reply)->error->code, Protocol::Disconnected);
}

TEST_F(FormCommands, TheAgentMayGoInsideAnEventLoopThatARequestHasOpened)
{
    bool isGone = false;
    QObject::connect(window(), &QWindow::windowTitleChanged, window(), [&] {
        const auto inner = post("children");
        isGone = waitUntil([&] { return inner->has_value(); });
        endAgent();
    });
    const auto reply = post("setProperty",
                            json(R"({"name": "Window#form", "property": "title", "value": "New"})"));
    ASSERT_TRUE(waitUntil([&] { return reply->has_value(); }));
    EXPECT_TRUE(isGone);
    EXPECT_FALSE((*reply)->isError());
}

TEST_F(FormCommands, WrongValuesAreRefusedInEveryField)
{
    const struct
    {
        const char *method;
        const char *params;
    } cases[] = {
        {"find", R"({"name": 7})"},
        {"find", R"({"name": "a", "timeout": "soon"})"},
        {"find", R"({"name": "a", "timeout": -1})"},
        {"find", R"({"name": "a", "timeout": 1e300})"},
        {"find", R"({"name": "a", "timeout": 2147483648})"},
        {"find", R"({"name": "a", "ready": 1})"},
        {"children", R"({"name": []})"},
        {"describe", R"({"object": 4294967297})"},
        {"describe", R"({"object": 0})"},
        {"describe", R"({"object": "1"})"},
        {"properties", R"({"name": "a", "names": "b"})"},
        {"properties", R"({"name": "a", "names": [1]})"},
        {"setProperty", R"({"name": "a", "property": 1, "value": 1})"},
        {"setProperty", R"({"name": "a", "property": "b"})"},
        {"setProperty", R"({"name": "a", "property": "b", "value": {"type": "QObject*", "text": "1"}})"},
        {"setProperty", R"({"name": "a", "property": "b", "value": {"type": "void", "text": ""}})"},
        {"setProperty", R"({"name": "a", "property": "b", "value": {"type": {}, "text": []}})"},
        {"invoke", R"({"name": "a", "method": null})"},
        {"invoke", R"({"name": "a", "method": "b", "arguments": {}})"},
        {"call", R"({"function": 1})"},
        {"call", R"({"function": "mouseClick", "arguments": "a"})"},
        {"call", R"({"function": "mouseClick", "arguments": [[1]]})"},
        {"call", R"({"function": "mouseClick", "arguments": [{"object": {}}]})"},
        {"call", R"({"function": "mouseClick", "timeout": []})"},
        {"grab", R"({"object": null})"},
        {"settle", R"({"timeout": {}})"},
        {"release", R"({})"},
        {"release", R"({"objects": ["1"]})"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(failureOf(c.method, json(c.params)).code, Protocol::InvalidParams) << c.method << c.params;
    EXPECT_EQ(ask("children").value(QStringLiteral("objects")).toArray().size(), 1);
}

TEST_F(FormCommands, PendingRequestsAreAnsweredWhenTheCommandsGo)
{
    const auto reply = post("find", json(R"({"name": "Window#form #never", "timeout": 20000})"));
    const auto served = post("children");
    ASSERT_TRUE(waitUntil([&] { return served->has_value(); }));
    endAgent();
    const auto late = post("children");
    ASSERT_TRUE(waitUntil([&] { return reply->has_value() && late->has_value(); }));
    EXPECT_EQ((*reply)->error->code, Protocol::InternalError);
    EXPECT_TRUE((*late)->isError());
}
