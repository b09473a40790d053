#include "callscene.h"

using namespace Vantle;
using namespace VantleTest;

namespace {

constexpr char Views[] = R"qml(
    import QtQuick
    import Qt.labs.qmlmodels
    Window {
        id: form
        width: 600; height: 400; visible: true
        property int movements: 0
        ListView {
            id: list; objectName: "list"; width: 100; height: 100; clip: true
            model: ListModel { Component.onCompleted: { for (let i = 0; i < 100; ++i) append({ name: "Row " + i }) } }
            delegate: Text { required property int index; required property string name; width: 100; height: 20; text: name }
        }
        ListView {
            id: numbers; objectName: "numbers"; x: 100; width: 100; height: 100; model: 1000
            delegate: Text { required property int index; width: 100; height: 20; text: "No. " + index }
        }
        GridView {
            id: grid; objectName: "grid"; x: 200; width: 100; height: 100; cellWidth: 50; cellHeight: 50
            model: Array.from({ length: 60 }, (_, i) => "cell " + i)
            delegate: Text { required property string modelData; width: 50; height: 50; text: modelData }
        }
        TableView {
            id: table; objectName: "table"; x: 300; width: 100; height: 100
            model: TableModel {
                TableModelColumn { display: "a" }
                TableModelColumn { display: "b" }
                rows: Array.from({ length: 200 }, (_, i) => ({ a: "a" + i, b: "b" + i }))
            }
            delegate: Rectangle {
                required property string display
                implicitWidth: 80; implicitHeight: 20
                Text { text: parent.display }
            }
        }
        Flickable {
            id: outer; objectName: "outer"; y: 200; width: 200; height: 100; contentWidth: 1000; contentHeight: 1000
            onMovementStarted: form.movements += 1
            onMovementEnded: form.movements += 10
            Rectangle { id: near; objectName: "near"; width: 20; height: 20 }
            Flickable {
                id: inner; objectName: "inner"; x: 500; y: 600; width: 100; height: 100; contentHeight: 500
                Rectangle { id: far; objectName: "far"; y: 300; width: 20; height: 20 }
            }
        }
        Item { id: plain; objectName: "plain"; x: 500; width: 10; height: 10 }
    }
)qml";

class Scrolling : public CallScene
{
protected:
    void SetUp() override
    {
        CommandScene::SetUp();
        load(Views);
    }

    static QString named(const char *name) { return QStringLiteral("WindowQmlImpl#form ") + QString::fromUtf8(name); }
    void scrollTo(const char *name, const QJsonArray &rest = {})
    {
        QJsonArray arguments{named(name)};
        for (const QJsonValue &argument : rest)
            arguments.append(argument);
        ask("call", request("scrollTo", arguments));
    }
    QString problemOf(const char *name, const QJsonArray &rest)
    {
        QJsonArray arguments{named(name)};
        for (const QJsonValue &argument : rest)
            arguments.append(argument);
        return failureOf("call", request("scrollTo", arguments, 50)).message;
    }
    double position(const char *view, const char *property = "contentY")
    {
        return find(view)->property(property).toDouble();
    }
};

} // namespace

TEST_F(Scrolling, BringsAnItemIntoAllFlickablesAroundIt)
{
    scrollTo("#far");
    EXPECT_EQ(position("inner"), 220);
    EXPECT_EQ(position("outer", "contentX"), 320);
    EXPECT_EQ(position("outer"), 600);
    EXPECT_EQ(root()->property("movements").toInt(), 11);
}

TEST_F(Scrolling, LeavesWhatIsInView)
{
    scrollTo("#near");
    EXPECT_EQ(position("outer"), 0);
    EXPECT_EQ(root()->property("movements").toInt(), 0);
    scrollTo("#plain");
}

TEST_F(Scrolling, BringsItBackAgain)
{
    scrollTo("#far");
    scrollTo("#near");
    EXPECT_EQ(position("outer", "contentX"), 0);
    EXPECT_EQ(position("outer"), 0);
}

TEST_F(Scrolling, GoesToAnIndexOfAList)
{
    scrollTo("#list", {50});
    EXPECT_EQ(position("list"), 51 * 20 - 100);
    scrollTo("#list", {50});
    EXPECT_EQ(position("list"), 51 * 20 - 100) << "it was in view";
    EXPECT_EQ(problemOf("#list", {100}),
              QStringLiteral("Cannot scrollTo: the view has no index 100; it has 100 rows and 1 columns"));
    EXPECT_EQ(problemOf("#list", {-1}).isEmpty(), false);
}

TEST_F(Scrolling, GoesToATextOfAModel)
{
    scrollTo("#list", {QStringLiteral("Row 70")});
    EXPECT_EQ(position("list"), 71 * 20 - 100);
    scrollTo("#grid", {QStringLiteral("cell 59")});
    EXPECT_EQ(position("grid"), 30 * 50 - 100);
    EXPECT_EQ(problemOf("#list", {QStringLiteral("Row 700")}),
              QStringLiteral("Cannot scrollTo: no entry of the view's model has the text \"Row 700\""));
}

TEST_F(Scrolling, GoesToACellOfATable)
{
    scrollTo("#table", {150, 1});
    EXPECT_TRUE(waitUntil([this] { return handleOf("WindowQmlImpl#form TableView#table Text[text=\"b150\"]") != 0; }));
    EXPECT_GT(position("table"), 0);
    EXPECT_EQ(problemOf("#table", {1, 2}),
              QStringLiteral("Cannot scrollTo: the view has no row 1 with a column 2; it has 200 rows and 2 columns"));
}

TEST_F(Scrolling, FindsAnEntryThatHasNoDelegateByItsName)
{
    EXPECT_EQ(failureOf("find", {{QStringLiteral("name"), named("Text[text=\"Row 70\"]")}}).code,
              Protocol::ObjectNotFound);
    scrollTo("Text[text=\"Row 70\"]");
    EXPECT_NE(handleOf("WindowQmlImpl#form Text[text=\"Row 70\"]"), 0);
    EXPECT_EQ(position("numbers"), 0);
}

TEST_F(Scrolling, FindsAnEntryByTheIndexInItsName)
{
    scrollTo("#numbers Text[index=\"700\"]");
    EXPECT_NE(handleOf("WindowQmlImpl#form Text[text=\"No. 700\"]"), 0);
    EXPECT_GT(position("numbers"), 0);
}

TEST_F(Scrolling, SaysThatThereIsNoSuchObject)
{
    EXPECT_TRUE(problemOf("Text[text=\"Nobody\"]", {}).startsWith(QStringLiteral("cannot find ")));
    EXPECT_EQ(position("list"), 0);
    EXPECT_EQ(problemOf("#plain", {3}), QStringLiteral("Cannot scrollTo: it is no view, and has no entries"));
}
