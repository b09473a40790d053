#pragma once

#include "commandscene.h"

namespace VantleTest {

inline constexpr char form[] = R"qml(
    import QtQuick
    Window {
        id: form
        title: "Form"
        width: 300; height: 200; visible: true
        property int count: 3
        property var anything: ({ list: [1, "two", null], item: save })
        property color tint: "#80ff0000"
        property date day: new Date(2024, 0, 2, 3, 4, 5)
        readonly property int fixed: 7
        function add(a, b) { return a + b }
        function typed(a: int): string { return "n" + a }
        function boom() { throw new Error("kaputt") }
        function failure() { return new Error("returned") }
        function echo(value) { return value }
        Rectangle {
            id: save; objectName: "save"
            property string text: "Save"
            width: 100; height: 40
            Text { objectName: "label"; text: "Save" }
        }
        Rectangle { id: twin; x: 100; width: 50; height: 40 }
        Rectangle { x: 150; width: 50; height: 40 }
        Rectangle { x: 200; width: 50; height: 40 }
        Item { objectName: "hidden"; visible: false; width: 10; height: 10 }
    }
)qml";

/// Requests about a window with some items, properties and functions.
class FormCommands : public CommandScene
{
protected:
    void SetUp() override
    {
        CommandScene::SetUp();
        load(form);
    }

    QJsonValue propertyOf(const char *target, const char *name)
    {
        const QJsonObject result = ask("properties",
                                       {{QStringLiteral("name"), QString::fromUtf8(target)},
                                        {QStringLiteral("names"), QJsonArray{QString::fromUtf8(name)}}});
        return result.value(QStringLiteral("properties")).toObject().value(QLatin1String(name));
    }
    Reply call(const char *method, const QJsonArray &arguments)
    {
        return answerTo("invoke",
                        {{QStringLiteral("name"), QStringLiteral("Window#form")},
                         {QStringLiteral("method"), QString::fromUtf8(method)},
                         {QStringLiteral("arguments"), arguments}});
    }
    QJsonValue resultOf(const char *method, const QJsonArray &arguments)
    {
        const Reply reply = call(method, arguments);
        EXPECT_FALSE(reply.isError()) << method << ": "
                                      << qPrintable(reply.isError() ? reply.error->message : QString());
        return reply.result.toObject().value(QStringLiteral("result"));
    }
};

} // namespace VantleTest
