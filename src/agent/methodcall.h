#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVariantList>

class QObject;

namespace Vantle::Agent {

/// What became of a method call.
struct MethodResult
{
    enum Outcome {
        Called,
        NoSuchMethod, ///< or none that takes such arguments; \c problem says which there are
        Failed,       ///< it was called, and ended with an error of the script
    };

    Outcome outcome = Called;
    QVariant value; ///< invalid for a method without result
    QString problem;
};

/// True if \p object has a method of that name that callMethod() would call.
bool hasMethod(const QObject *object, const QString &name);

/// Calls the slot, invokable or QML function \p name of \p object, which must be
/// alive. Of several overloads that take \p arguments the one with the fewest
/// conversions. Whatever the method does, it does before this returns.
MethodResult callMethod(QObject *object, const QString &name, const QVariantList &arguments);

} // namespace Vantle::Agent
