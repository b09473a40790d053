#pragma once

#include "protocol/objectmessages.h"

#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QString>

#include <functional>

namespace Vantle::Tool::Replay {

/// Writes requests of a script as the statements that they come from, with the
/// values that the arguments had: `mouseClick("Main Button#save", 3, 4, Qt.LeftButton)`.
class CallText
{
public:
    /// The functions of the program, whose parameters tell numbers from enumerators.
    void setFunctions(const QList<Protocol::FunctionDescription> &functions);

    /// \p nameOf gives the name of an object by its handle; it is called for each
    /// that stands in the request. Empty for requests that are no statement.
    QString textOf(const QString &method, const QJsonObject &params,
                   const std::function<QString(int handle)> &nameOf) const;

    /// Whether there is an object in the request whose name nobody has told.
    static bool holdsHandles(const QJsonObject &params);

private:
    QStringList argumentTexts(const QString &function, const QJsonArray &arguments,
                              const std::function<QString(int)> &nameOf) const;
    QStringList typesFor(const QString &function, const QJsonArray &arguments) const;

    QHash<QString, QList<Protocol::FunctionDescription::Overload>> m_overloads;
};

/// Whether \p source, as it stands in a script, says what \p call says, but for
/// quotes and blanks.
bool saysTheSame(const QString &source, const QString &call);

} // namespace Vantle::Tool::Replay
