#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

class QObject;

namespace Vantle::Agent {

class ValueEncoding;

/// The values of the readable properties of \p object, which must be alive, by
/// their names: of all, dynamic ones included. Runs getters of the program.
QJsonObject allProperties(QObject *object, ValueEncoding *encoding);

/// Same for the properties \p names, which may lead into values ("font.bold").
/// A method among them is named instead of read: {"type": "method", "text": name}.
/// Stops at the first one that the object does not have, and says so in \p problem.
QJsonObject namedProperties(QObject *object, const QStringList &names, ValueEncoding *encoding, QString *problem);

/// Sets a property of \p object, which must be alive, and ends a binding that it
/// had. The empty text on success, else what is wrong.
QString writeProperty(QObject *object, const QString &name, const QVariant &value);

} // namespace Vantle::Agent
