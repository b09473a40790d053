#include "protocol/objectmessages.h"

#include <gtest/gtest.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

using namespace Vantle::Protocol;

namespace {

/// What arrives of \p sent, which goes the way of a line of text.
template<typename Record>
std::optional<Record> received(const Record &sent)
{
    const QByteArray line = QJsonDocument(sent.toJson()).toJson(QJsonDocument::Compact);
    QString error;
    const auto record = Record::fromJson(QJsonDocument::fromJson(line).object(), &error);
    EXPECT_TRUE(record) << qPrintable(error);
    return record;
}

/// Takes each field of \p complete out, and holds the complaint against it.
template<typename Record>
void expectEachFieldNeeded(const Record &complete, const QStringList &optional = {})
{
    const QStringList keys = complete.toJson().keys();
    for (const QString &key : keys) {
        QJsonObject json = complete.toJson();
        json.remove(key);
        QString error;
        EXPECT_EQ(Record::fromJson(json, &error).has_value(), optional.contains(key)) << qPrintable(key);
        EXPECT_EQ(error.contains(key), !optional.contains(key)) << qPrintable(error);
    }
}

NotFound someNotFound()
{
    return {QStringLiteral("Window Button#save"),
            QStringLiteral("there is no Button#save"),
            {{QStringLiteral("Window Button#safe"),
              QStringLiteral("QQuickButton"),
              {{QStringLiteral("id"), QStringLiteral("=\"save\""), QStringLiteral("\"safe\"")}}}}};
}

TreeNode someTree()
{
    TreeNode leaf;
    leaf.className = QStringLiteral("QQuickText");
    leaf.type = QStringLiteral("Text");
    leaf.name = QStringLiteral("Window Text#t:visible");
    leaf.id = QStringLiteral("t");
    leaf.geometry = QRect(-5, 7, 100, 0);
    leaf.visible = true;
    TreeNode root = leaf;
    root.notReady = QStringLiteral("the window is not exposed on the screen");
    root.children = {leaf, leaf};
    return root;
}

} // namespace

TEST(ObjectReference, SurvivesTheWayThroughJson)
{
    const auto reference = received(ObjectReference{7, QStringLiteral("QQuickItem"), QStringLiteral("Käse")});
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->object, 7);
    EXPECT_EQ(reference->className, QStringLiteral("QQuickItem"));
    EXPECT_EQ(reference->name, QStringLiteral("Käse"));
    expectEachFieldNeeded(*reference, {QStringLiteral("name")});
}

TEST(ObjectReference, HaveANameOnlyIfItWasAskedFor)
{
    const auto unnamed = received(ObjectReference{7, QStringLiteral("QQuickItem"), std::nullopt});
    ASSERT_TRUE(unnamed);
    EXPECT_EQ(unnamed->name, std::nullopt);
    const auto nameless = received(ObjectReference{7, QStringLiteral("QQuickItem"), QString()});
    ASSERT_TRUE(nameless);
    EXPECT_EQ(nameless->name, QString());
}

TEST(ObjectReference, HasAHandleAboveZero)
{
    EXPECT_FALSE(ObjectReference::fromJson(ObjectReference{0, QString(), QString()}.toJson()));
    EXPECT_FALSE(ObjectReference::fromJson(ObjectReference{-1, QString(), QString()}.toJson()));
}

TEST(NotFound, SurvivesTheWayThroughJsonWithAllThatDiffers)
{
    const auto failure = received(someNotFound());
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->lookedFor, QStringLiteral("Window Button#save"));
    EXPECT_EQ(failure->reason, QStringLiteral("there is no Button#save"));
    ASSERT_EQ(failure->candidates.size(), 1);
    ASSERT_EQ(failure->candidates.first().differences.size(), 1);
    const Difference difference = failure->candidates.first().differences.first();
    EXPECT_EQ(difference.key, QStringLiteral("id"));
    EXPECT_EQ(difference.expected, QStringLiteral("=\"save\""));
    EXPECT_EQ(difference.found, QStringLiteral("\"safe\""));
    expectEachFieldNeeded(*failure);
    expectEachFieldNeeded(failure->candidates.first());
    expectEachFieldNeeded(difference);
}

TEST(NotFound, SaysWhatIsWrongDeepInside)
{
    QJsonObject json = someNotFound().toJson();
    QJsonObject candidate = json.value(QStringLiteral("candidates")).toArray().first().toObject();
    candidate.insert(QStringLiteral("differences"), QJsonArray{1});
    json.insert(QStringLiteral("candidates"), QJsonArray{candidate});
    QString error;
    EXPECT_FALSE(NotFound::fromJson(json, &error));
    EXPECT_EQ(error, QStringLiteral("\"candidates\": \"differences\": \"key\" has to be a string"));
}

TEST(NotReady, LeavesOutWhatCoversNothing)
{
    const NotReady open{QStringLiteral("a"), QStringLiteral("b"), QString()};
    EXPECT_FALSE(open.toJson().contains(QStringLiteral("coveredBy")));
    const auto covered = received(NotReady{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    ASSERT_TRUE(covered);
    EXPECT_EQ(covered->coveredBy, QStringLiteral("c"));
    expectEachFieldNeeded(*covered, {QStringLiteral("coveredBy")});
}

TEST(Description, SurvivesTheWayThroughJson)
{
    Description sent;
    sent.className = QStringLiteral("QQuickItem");
    sent.name = QStringLiteral("Window Item");
    sent.geometry = QRect(0, 0, -1, -1);
    sent.enabled = true;
    sent.notReady = QStringLiteral("the item is not visible");
    const auto description = received(sent);
    ASSERT_TRUE(description);
    EXPECT_EQ(description->geometry, sent.geometry);
    EXPECT_FALSE(description->visible);
    EXPECT_TRUE(description->enabled);
    EXPECT_EQ(description->notReady, sent.notReady);
    expectEachFieldNeeded(sent);
}

TEST(TreeNode, SurvivesTheWayThroughJsonWithItsChildren)
{
    const auto node = received(someTree());
    ASSERT_TRUE(node);
    ASSERT_EQ(node->children.size(), 2);
    const TreeNode leaf = node->children.at(1);
    EXPECT_EQ(leaf.type, QStringLiteral("Text"));
    EXPECT_EQ(leaf.id, QStringLiteral("t"));
    EXPECT_EQ(leaf.geometry, QRect(-5, 7, 100, 0));
    EXPECT_TRUE(leaf.visible);
    EXPECT_TRUE(leaf.children.isEmpty());
    expectEachFieldNeeded(*node);
}

TEST(FunctionDescription, SurvivesTheWayThroughJson)
{
    const FunctionDescription sent{QStringLiteral("type"),
                                   {{{{QStringLiteral("objectName"), QStringLiteral("QString")},
                                      {QStringLiteral("text"), QStringLiteral("QString")}},
                                     QStringLiteral("void")},
                                    {{}, QStringLiteral("int")}}};
    const auto function = received(sent);
    ASSERT_TRUE(function);
    EXPECT_EQ(function->name, QStringLiteral("type"));
    ASSERT_EQ(function->overloads.size(), 2);
    ASSERT_EQ(function->overloads.first().arguments.size(), 2);
    EXPECT_EQ(function->overloads.first().arguments.at(1).name, QStringLiteral("text"));
    EXPECT_EQ(function->overloads.first().arguments.at(1).type, QStringLiteral("QString"));
    EXPECT_EQ(function->overloads.at(1).result, QStringLiteral("int"));
    expectEachFieldNeeded(sent);
}

TEST(FunctionDescription, RefusesAnArgumentWithoutType)
{
    QJsonObject json = FunctionDescription{QStringLiteral("f"), {{{{QStringLiteral("a"), QString()}}, QString()}}}
                           .toJson();
    EXPECT_TRUE(FunctionDescription::fromJson(json));
    json.insert(QStringLiteral("overloads"),
                QJsonArray{QJsonObject{{QStringLiteral("result"), QString()},
                                       {QStringLiteral("arguments"), QJsonArray{QJsonObject{}}}}});
    QString error;
    EXPECT_FALSE(FunctionDescription::fromJson(json, &error));
    EXPECT_EQ(error, QStringLiteral("\"name\" has to be a string"));
}

TEST(ActionPoint, SurvivesTheWayThroughJson)
{
    const auto point = received(ActionPoint{3, -1, 40});
    ASSERT_TRUE(point);
    EXPECT_EQ(point->window, 3);
    EXPECT_EQ(point->x, -1);
    EXPECT_EQ(point->y, 40);
    expectEachFieldNeeded(*point);
}
