#pragma once

#include "protocol/objectmessages.h"

#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>
#include <QtCore/QList>
#include <QtCore/QString>

/// What the agent answers, as text for people: columns that stand under each
/// other, a line each.
namespace Vantle::Tool::Inspect {

/// Objects with type, place, readiness and name; what is below an object is
/// indented below it.
QString treeText(const QList<Protocol::TreeNode> &windows);

/// One object: what a user sees of it, then its properties by name.
QString objectText(const Protocol::Description &description, const QJsonObject &properties);

/// The functions in alphabetical order, an overload a line.
QString functionsText(QList<Protocol::FunctionDescription> functions);

/// Why a name leads nowhere: the closest candidates, and in what they differ.
QString notFoundText(const Protocol::NotFound &failure);

/// How many objects were found by their names, and which were not.
QString namesText(const QJsonObject &result);

/// One value of a property, in a line.
QString valueText(const QJsonValue &value);

} // namespace Vantle::Tool::Inspect
