#include "agent/methodcall.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtQml/QJSValue>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlError>

#include <optional>
#include <vector>

namespace Vantle::Agent {

namespace {

/// A method with the arguments as it takes them.
struct Candidate
{
    QMetaMethod method;
    QVariantList arguments;
    int conversions = 0;
};

bool isCallable(const QMetaMethod &method)
{
    return method.access() == QMetaMethod::Public && method.methodType() != QMetaMethod::Constructor;
}

std::optional<Candidate> fitted(const QMetaMethod &method, const QVariantList &arguments)
{
    if (method.parameterCount() != arguments.size())
        return std::nullopt;
    Candidate candidate{method, arguments, 0};
    for (int i = 0; i < method.parameterCount(); ++i) {
        const QMetaType wanted = method.parameterMetaType(i);
        QVariant &argument = candidate.arguments[i];
        if (wanted == QMetaType::fromType<QVariant>() || argument.metaType() == wanted)
            continue;
        ++candidate.conversions;
        if (wanted == QMetaType::fromType<QJSValue>())
            return std::nullopt;
        if (!argument.convert(wanted))
            return std::nullopt;
    }
    return candidate;
}

std::optional<Candidate> bestCandidate(const QObject *object, const QByteArray &name, const QVariantList &arguments)
{
    std::optional<Candidate> best;
    const QMetaObject *const type = object->metaObject();
    // From the most derived class on: what it hides stays hidden.
    for (int i = type->methodCount() - 1; i >= 0; --i) {
        const QMetaMethod method = type->method(i);
        if (method.name() != name || !isCallable(method))
            continue;
        const std::optional<Candidate> candidate = fitted(method, arguments);
        if (candidate && (!best || candidate->conversions < best->conversions))
            best = candidate;
    }
    return best;
}

QString describeMethods(const QObject *object, const QString &name)
{
    QStringList signatures;
    const QMetaObject *const type = object->metaObject();
    for (int i = 0; i < type->methodCount(); ++i) {
        const QMetaMethod method = type->method(i);
        if (method.name() == name.toUtf8() && isCallable(method))
            signatures.append(QString::fromLatin1(method.methodSignature()));
    }
    const QString className = QString::fromUtf8(type->className());
    if (signatures.isEmpty())
        return QStringLiteral("%1 has no method \"%2\"").arg(className, name);
    return QStringLiteral("no method \"%1\" of %2 takes these arguments; there are: %3")
        .arg(name, className, signatures.join(QStringLiteral(", ")));
}

QVariant run(QObject *object, Candidate *candidate)
{
    const QMetaType resultType = candidate->method.returnMetaType();
    const bool givesVariant = resultType == QMetaType::fromType<QVariant>();
    QVariant result = givesVariant || resultType.id() == QMetaType::Void ? QVariant() : QVariant(resultType);
    std::vector<void *> pointers;
    pointers.push_back(givesVariant ? static_cast<void *>(&result) : result.data());
    for (int i = 0; i < candidate->method.parameterCount(); ++i) {
        QVariant &argument = candidate->arguments[i];
        const bool takesVariant = candidate->method.parameterMetaType(i) == QMetaType::fromType<QVariant>();
        pointers.push_back(takesVariant ? static_cast<void *>(&argument) : argument.data());
    }
    QMetaObject::metacall(object, QMetaObject::InvokeMetaMethod, candidate->method.methodIndex(), pointers.data());
    return result;
}

// A function that returns an Error reports a failure.
QString errorIn(const QVariant &result)
{
    if (result.metaType() != QMetaType::fromType<QJSValue>())
        return {};
    const QJSValue value = result.value<QJSValue>();
    return value.isError() ? value.toString() : QString();
}

} // namespace

bool hasMethod(const QObject *object, const QString &name)
{
    const QByteArray wanted = name.toUtf8();
    const QMetaObject *const type = object->metaObject();
    for (int i = 0; i < type->methodCount(); ++i) {
        if (type->method(i).name() == wanted && isCallable(type->method(i)))
            return true;
    }
    return false;
}

MethodResult callMethod(QObject *object, const QString &name, const QVariantList &arguments)
{
    std::optional<Candidate> candidate = bestCandidate(object, name.toUtf8(), arguments);
    if (!candidate)
        return {MethodResult::NoSuchMethod, QVariant(), describeMethods(object, name)};

    // An exception that a QML function throws shows in no other way: the engine
    // warns, and the result is undefined.
    QString thrown;
    QObject context;
    if (QQmlEngine *const engine = qmlEngine(object)) {
        QObject::connect(engine, &QQmlEngine::warnings, &context, [&thrown](const QList<QQmlError> &errors) {
            if (thrown.isEmpty() && !errors.isEmpty())
                thrown = errors.first().toString();
        });
    }
    const QVariant result = run(object, &*candidate);
    if (const QString error = errorIn(result); !error.isEmpty())
        return {MethodResult::Failed, QVariant(), error};
    if (!result.isValid() && !thrown.isEmpty())
        return {MethodResult::Failed, QVariant(), thrown};
    return {MethodResult::Called, result, QString()};
}

} // namespace Vantle::Agent
