#include "protocol/objectmessages.h"

#include "protocol/fieldreader.h"

#include <QtCore/QJsonArray>

namespace Vantle::Protocol {

namespace {

const QString objectKey = QStringLiteral("object");
const QString classKey = QStringLiteral("class");
const QString nameKey = QStringLiteral("name");
const QString reasonKey = QStringLiteral("reason");
const QString lookedForKey = QStringLiteral("lookedFor");
const QString geometryKey = QStringLiteral("geometry");
const QString visibleKey = QStringLiteral("visible");
const QString notReadyKey = QStringLiteral("notReady");
const QString typeKey = QStringLiteral("type");

template<typename Record>
QJsonArray arrayOf(const QList<Record> &records)
{
    QJsonArray array;
    for (const Record &record : records)
        array.append(record.toJson());
    return array;
}

template<typename Record>
QList<Record> recordsIn(FieldReader *reader, const char *key)
{
    QList<Record> records;
    const QJsonArray array = reader->array(key);
    for (const QJsonValue &value : array) {
        QString error;
        if (const auto record = Record::fromJson(value.toObject(), &error))
            records.append(*record);
        else
            reader->complain(QStringLiteral("\"%1\": %2").arg(QLatin1String(key), error));
    }
    return records;
}

QJsonObject toJson(const QRect &rect)
{
    return {
        {QStringLiteral("x"), rect.x()},
        {QStringLiteral("y"), rect.y()},
        {QStringLiteral("width"), rect.width()},
        {QStringLiteral("height"), rect.height()},
    };
}

QRect rectIn(FieldReader *reader, const char *key)
{
    const QJsonObject json = reader->object(key);
    FieldReader fields(json);
    const auto number = [&](const char *name) { return static_cast<int>(fields.integer(name)); };
    const QRect rect(number("x"), number("y"), number("width"), number("height"));
    if (!fields.complaint().isEmpty())
        reader->complain(QStringLiteral("\"%1\": %2").arg(QLatin1String(key), fields.complaint()));
    return rect;
}

} // namespace

QJsonObject ObjectReference::toJson() const
{
    QJsonObject json{{objectKey, object}, {classKey, className}};
    if (name)
        json.insert(nameKey, *name);
    return json;
}

std::optional<ObjectReference> ObjectReference::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    ObjectReference reference;
    reference.object = static_cast<int>(reader.integer("object", 1));
    reference.className = reader.string("class");
    if (reader.has("name"))
        reference.name = reader.string("name");
    return reader.finish(reference, error);
}

QJsonObject Difference::toJson() const
{
    return {{QStringLiteral("key"), key}, {QStringLiteral("expected"), expected}, {QStringLiteral("found"), found}};
}

std::optional<Difference> Difference::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    const Difference difference{reader.string("key"), reader.string("expected"), reader.string("found")};
    return reader.finish(difference, error);
}

QJsonObject Candidate::toJson() const
{
    return {{nameKey, name}, {classKey, className}, {QStringLiteral("differences"), arrayOf(differences)}};
}

std::optional<Candidate> Candidate::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    Candidate candidate;
    candidate.name = reader.string("name");
    candidate.className = reader.string("class");
    candidate.differences = recordsIn<Difference>(&reader, "differences");
    return reader.finish(candidate, error);
}

QJsonObject NotFound::toJson() const
{
    return {
        {lookedForKey, lookedFor},
        {reasonKey, reason},
        {QStringLiteral("candidates"), arrayOf(candidates)},
    };
}

std::optional<NotFound> NotFound::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    NotFound failure;
    failure.lookedFor = reader.string("lookedFor");
    failure.reason = reader.string("reason");
    failure.candidates = recordsIn<Candidate>(&reader, "candidates");
    return reader.finish(failure, error);
}

QJsonObject NotReady::toJson() const
{
    QJsonObject json{{lookedForKey, lookedFor}, {reasonKey, reason}};
    if (!coveredBy.isEmpty())
        json.insert(QStringLiteral("coveredBy"), coveredBy);
    return json;
}

std::optional<NotReady> NotReady::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    NotReady failure;
    failure.lookedFor = reader.string("lookedFor");
    failure.reason = reader.string("reason");
    if (reader.has("coveredBy"))
        failure.coveredBy = reader.string("coveredBy");
    return reader.finish(failure, error);
}

QJsonObject Description::toJson() const
{
    return {
        {classKey, className},
        {nameKey, name},
        {geometryKey, Protocol::toJson(geometry)},
        {visibleKey, visible},
        {QStringLiteral("enabled"), enabled},
        {notReadyKey, notReady},
    };
}

std::optional<Description> Description::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    Description description;
    description.className = reader.string("class");
    description.name = reader.string("name");
    description.geometry = rectIn(&reader, "geometry");
    description.visible = reader.boolean("visible");
    description.enabled = reader.boolean("enabled");
    description.notReady = reader.string("notReady");
    return reader.finish(description, error);
}

QJsonObject TreeNode::toJson() const
{
    return {
        {classKey, className},
        {typeKey, type},
        {nameKey, name},
        {QStringLiteral("id"), id},
        {geometryKey, Protocol::toJson(geometry)},
        {visibleKey, visible},
        {notReadyKey, notReady},
        {QStringLiteral("children"), arrayOf(children)},
    };
}

std::optional<TreeNode> TreeNode::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    TreeNode node;
    node.className = reader.string("class");
    node.type = reader.string("type");
    node.name = reader.string("name");
    node.id = reader.string("id");
    node.geometry = rectIn(&reader, "geometry");
    node.visible = reader.boolean("visible");
    node.notReady = reader.string("notReady");
    node.children = recordsIn<TreeNode>(&reader, "children");
    return reader.finish(node, error);
}

QJsonObject FunctionDescription::toJson() const
{
    QJsonArray overloadList;
    for (const Overload &overload : overloads) {
        QJsonArray argumentList;
        for (const Argument &argument : overload.arguments)
            argumentList.append(QJsonObject{{nameKey, argument.name}, {typeKey, argument.type}});
        overloadList.append(
            QJsonObject{{QStringLiteral("arguments"), argumentList}, {QStringLiteral("result"), overload.result}});
    }
    return {{nameKey, name}, {QStringLiteral("overloads"), overloadList}};
}

std::optional<FunctionDescription> FunctionDescription::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    FunctionDescription function;
    function.name = reader.string("name");
    const QJsonArray overloadList = reader.array("overloads");
    for (const QJsonValue &overloadValue : overloadList) {
        const QJsonObject overloadJson = overloadValue.toObject();
        FieldReader overloadReader(overloadJson);
        Overload overload;
        overload.result = overloadReader.string("result");
        const QJsonArray argumentList = overloadReader.array("arguments");
        for (const QJsonValue &argumentValue : argumentList) {
            const QJsonObject argumentJson = argumentValue.toObject();
            FieldReader argumentReader(argumentJson);
            overload.arguments.append({argumentReader.string("name"), argumentReader.string("type")});
            overloadReader.complain(argumentReader.complaint());
        }
        reader.complain(overloadReader.complaint());
        function.overloads.append(overload);
    }
    return reader.finish(function, error);
}

QJsonObject ActionPoint::toJson() const
{
    return {{QStringLiteral("window"), window}, {QStringLiteral("x"), x}, {QStringLiteral("y"), y}};
}

std::optional<ActionPoint> ActionPoint::fromJson(const QJsonObject &json, QString *error)
{
    FieldReader reader(json);
    ActionPoint point;
    point.window = static_cast<int>(reader.integer("window", 1));
    point.x = static_cast<int>(reader.integer("x"));
    point.y = static_cast<int>(reader.integer("y"));
    return reader.finish(point, error);
}

} // namespace Vantle::Protocol
