#include "tool/inspect/inspecttext.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

using namespace Vantle::Protocol;
using namespace Vantle::Tool::Inspect;

namespace {

TreeNode node(const char *type, const char *name, const QRect &place, const char *notReady = "")
{
    TreeNode result;
    result.type = QString::fromUtf8(type);
    result.name = QString::fromUtf8(name);
    result.geometry = place;
    result.notReady = QString::fromUtf8(notReady);
    return result;
}

QString valueTextOf(const char *json)
{
    return valueText(QJsonDocument::fromJson(QByteArray("[") + json + "]").array().first());
}

} // namespace

TEST(TreeText, StandsInColumnsWithChildrenIndented)
{
    TreeNode window = node("Window", "Window#w", QRect(10, 20, 300, 200));
    window.children = {node("Item", "", QRect(0, 0, -1, -1), "the item is not visible"),
                       node("Text", "Window#w Text", QRect(-1, 0, 5, 5))};
    EXPECT_EQ(treeText({window}).toStdString(),
              "Window  300x200 at (10, 20)  ready                    Window#w\n"
              "  Item  nowhere              the item is not visible  (no name)\n"
              "  Text  5x5 at (-1, 0)       ready                    Window#w Text\n");
    EXPECT_EQ(treeText({}), QString());
}

TEST(TreeText, KeepsItsColumnsBesideOneLongReason)
{
    const TreeNode patient = node("A", "a", QRect(0, 0, 1, 1), QByteArray(100, 'x').constData());
    const QStringList lines = treeText({patient, node("B", "b", QRect(0, 0, 1, 1))}).split(QLatin1Char('\n'));
    EXPECT_LT(lines.at(1).size(), 90);
    EXPECT_TRUE(lines.at(0).endsWith(QStringLiteral("x  a"))) << qPrintable(lines.at(0));
}

TEST(ValueText, WritesTypesAsPeopleDo)
{
    EXPECT_EQ(valueTextOf("3"), QStringLiteral("3"));
    EXPECT_EQ(valueTextOf("0.1"), QStringLiteral("0.1"));
    EXPECT_EQ(valueTextOf("true"), QStringLiteral("true"));
    EXPECT_EQ(valueTextOf("null"), QStringLiteral("null"));
    EXPECT_EQ(valueTextOf(R"("a \"b\"\n")"), QStringLiteral("\"a \\\"b\\\"\\n\""));
    EXPECT_EQ(valueTextOf(R"({"type": "QPointF", "x": 1.5, "y": 2})"), QStringLiteral("(1.5, 2)"));
    EXPECT_EQ(valueTextOf(R"({"type": "QSizeF", "width": 3, "height": 4})"), QStringLiteral("3x4"));
    EXPECT_EQ(valueTextOf(R"({"type": "QRectF", "x": 1, "y": 2, "width": 3, "height": 4})"),
              QStringLiteral("3x4 at (1, 2)"));
    EXPECT_EQ(valueTextOf(R"({"type": "QColor", "text": "#ff000000"})"), QStringLiteral("#ff000000 (QColor)"));
    EXPECT_EQ(valueTextOf(R"({"type": "QFont", "text": ""})"), QStringLiteral("QFont"));
    EXPECT_EQ(valueTextOf(R"({"type": "map", "value": {"a": [1]}})"), QStringLiteral("{\"a\":[1]}"));
    EXPECT_EQ(valueTextOf(R"({"object": 3, "class": "QQuickItem", "name": "W Item"})"),
              QStringLiteral("W Item (QQuickItem)"));
    EXPECT_EQ(valueTextOf(R"({"object": 3, "class": "QQuickItem", "name": ""})"), QStringLiteral("QQuickItem"));
}

TEST(ObjectText, ListsThePropertiesByName)
{
    Description description;
    description.className = QStringLiteral("QQuickText");
    description.name = QStringLiteral("W Text");
    description.geometry = QRect(1, 2, 3, 4);
    description.notReady = QStringLiteral("busy");
    const QJsonObject properties{{QStringLiteral("text"), QStringLiteral("a")}, {QStringLiteral("height"), 4}};
    EXPECT_EQ(objectText(description, properties).toStdString(),
              "name       W Text\n"
              "class      QQuickText\n"
              "place      3x4 at (1, 2)\n"
              "readiness  busy\n"
              "\n"
              "height  4\n"
              "text    \"a\"\n");
}

TEST(FunctionsText, IsSortedAndHasALineForEachOverload)
{
    const FunctionDescription type{QStringLiteral("type"),
                                   {{{{QStringLiteral("objectName"), QStringLiteral("QString")},
                                      {QStringLiteral("text"), QStringLiteral("QString")}},
                                     QStringLiteral("void")}}};
    const FunctionDescription flick{QStringLiteral("flick"),
                                    {{{}, QStringLiteral("int")},
                                     {{{QStringLiteral("dx"), QStringLiteral("int")}}, QStringLiteral("void")}}};
    EXPECT_EQ(functionsText({type, flick}).toStdString(),
              "flick(): int\n"
              "flick(dx: int)\n"
              "type(objectName: QString, text: QString)\n");
}

TEST(NotFoundText, ShowsWhatWasExpectedAndWhatIsThere)
{
    const NotFound failure{QStringLiteral("W Button#a"),
                           QString(),
                           {{QStringLiteral("W Button#b"),
                             QStringLiteral("QQuickButton"),
                             {{QStringLiteral("id"), QStringLiteral("\"a\""), QStringLiteral("\"b\"")},
                              {QStringLiteral("visible"), QStringLiteral("\"true\""), QStringLiteral("\"false\"")}}},
                            {QString(), QStringLiteral("QQuickItem"), {}}}};
    EXPECT_EQ(notFoundText(failure).toStdString(),
              "Closest to it:\n"
              "  W Button#b (QQuickButton)\n"
              "    id       expected \"a\", found \"b\"\n"
              "    visible  expected \"true\", found \"false\"\n"
              "  (no name) (QQuickItem)\n");
    EXPECT_EQ(notFoundText({QStringLiteral("x"), QString(), {}}), QString());
}

TEST(NamesText, CountsAndNamesTheFailures)
{
    const QJsonObject result{{QStringLiteral("items"), 3},
                             {QStringLiteral("failures"),
                              QJsonArray{QJsonObject{{QStringLiteral("name"), QStringLiteral("W Item")},
                                                     {QStringLiteral("reason"), QStringLiteral("gone")}}}}};
    EXPECT_EQ(namesText(result).toStdString(),
              "2 of 3 objects are found by their names.\n"
              "  W Item: gone\n");
}
