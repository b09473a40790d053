#pragma once

#include "commandscene.h"

#include <QtCore/QCoreApplication>

namespace VantleTest {

inline constexpr char buttons[] = R"qml(
    import QtQuick
    Window {
        id: form
        width: 300; height: 200; visible: true
        property int clicks: 0
        property int others: 0
        property string where
        component Area: MouseArea { width: 80; height: 40 }
        Area {
            id: ok; objectName: "ok"
            onClicked: (mouse) => { form.clicks += 1; form.where = Math.floor(mouse.x) + "," + Math.floor(mouse.y) }
        }
        Area { id: moving; objectName: "moving"; y: 60; onClicked: form.clicks += 1
               NumberAnimation on x { id: slide; objectName: "slide"; running: false; from: 0; to: 150; duration: 400 } }
        Area { id: covered; x: 100; onClicked: form.clicks += 1 }
        Area { id: cover; objectName: "cover"; x: 100; width: 30; onClicked: form.others += 1 }
        Area { id: outside; x: 290 }
        Area { id: opener; y: 120; onClicked: form.title = "open" }
        TextInput { id: field; objectName: "field"; x: 100; y: 120; width: 100; height: 20 }
    }
)qml";

/// Calls of script functions on a window with mouse areas and a field.
class CallScene : public CommandScene
{
protected:
    void SetUp() override
    {
        CommandScene::SetUp();
        load(buttons);
    }

    static QJsonObject request(const char *function, const QJsonArray &arguments, int timeout = 10000)
    {
        return {{QStringLiteral("function"), QString::fromUtf8(function)},
                {QStringLiteral("arguments"), arguments},
                {QStringLiteral("timeout"), timeout}};
    }
    static QJsonObject click(const char *id, int timeout = 10000)
    {
        return request("mouseClick", {QStringLiteral("Window#form #") + QLatin1String(id)}, timeout);
    }
    /// All that an application tells when it ends, without its end.
    static void quitApplication() { QMetaObject::invokeMethod(qApp, "aboutToQuit"); }
    int clicks() const { return root()->property("clicks").toInt(); }

    Vantle::Protocol::NotReady obstacle(const QJsonObject &params)
    {
        const Vantle::Protocol::Error error = failureOf("call", params);
        EXPECT_EQ(error.code, Vantle::Protocol::ObjectNotReady) << qPrintable(error.message);
        return Vantle::Protocol::NotReady::fromJson(error.data.toObject()).value_or(Vantle::Protocol::NotReady{});
    }
};

} // namespace VantleTest
