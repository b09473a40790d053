#include "tool/replay/scriptengine.h"

#include "tool/enumerators.h"
#include "tool/nearesttext.h"
#include "tool/replay/stacktrace.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QRegularExpression>

#include <QtQml/QJSValueIterator>

#include <utility>

namespace Vantle::Tool::Replay {

namespace {

const QString importerName = QStringLiteral("$vantleImport");

QString preludeText()
{
    QFile file(QStringLiteral(":/vantle/replay/prelude.js"));
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll());
}

QJSValue enumerators(QJSEngine *engine)
{
    QJSValue qt = engine->newObject();
    const auto define = [&qt](const Enumerators::Named &named) {
        qt.setProperty(QLatin1String(named.name), static_cast<double>(named.value));
    };
    define(Enumerators::noButton);
    define(Enumerators::noModifier);
    for (const Enumerators::Named &named : Enumerators::buttons) {
        if (named.value & Enumerators::playable)
            define(named);
    }
    for (const Enumerators::Named &named : Enumerators::modifiers) {
        if (named.value & Enumerators::playable)
            define(named);
    }

    QJSValue windowState = engine->newObject();
    int value = 0;
    for (const char *name : Enumerators::windowStates)
        windowState.setProperty(QLatin1String(name), value++);

    QJSValue all = engine->newObject();
    all.setProperty(QStringLiteral("Qt"), qt);
    all.setProperty(QStringLiteral("WindowState"), windowState);
    return all;
}

/// The engine's list of `function:line:column:file` as the text of a stack.
QString stackOf(const QStringList &trace)
{
    static const QRegularExpression entry(QStringLiteral("^(.*?):(-?\\d+):(-?\\d+):(.*)$"));
    QStringList lines;
    for (const QString &text : trace) {
        const auto match = entry.match(text);
        lines.append(QStringLiteral("%1@%2:%3").arg(match.captured(1), match.captured(4), match.captured(2)));
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

ScriptEngine::ScriptEngine(ProgramSession *session, StepRecorder *recorder, const ReplayOptions &options,
                           ScriptHost::Starter starter)
    : m_host(&m_engine, session, recorder, options, std::move(starter))
{
    QJSEngine::setObjectOwnership(&m_host, QJSEngine::CppOwnership);
    const QJSValue setUp = m_engine.evaluate(preludeText(), QLatin1String(preludeName));
    m_prelude = setUp.call({m_engine.newQObject(&m_host), enumerators(&m_engine), m_engine.globalObject()});
    Q_ASSERT_X(m_prelude.isObject() && !m_prelude.isError(), "ScriptEngine", qPrintable(m_prelude.toString()));
}

QString ScriptEngine::defineFunctions()
{
    QString error;
    const QJsonValue names = m_host.functionNames(&error);
    if (error.isEmpty())
        m_prelude.property(QStringLiteral("defineFunctions"))
            .call({m_engine.toScriptValue(names.toArray().toVariantList())});
    return error;
}

std::optional<ScriptError> ScriptEngine::run(const ScriptSource &source, const QString &path)
{
    QStringList trace;
    const QString text = QStringLiteral("\"use strict\"; ") + source.asStatementLines(importerName);
    const QJSValue value = m_engine.evaluate(text, path, 0, &trace);
    if (trace.isEmpty() && !value.isError())
        return std::nullopt;
    return errorFrom(value, trace);
}

ScriptError ScriptEngine::errorFrom(const QJSValue &value, const QStringList &trace) const
{
    ScriptError error;
    error.stack = stackOf(trace);
    if (!value.isError()) {
        error.message = value.toString();
        return error;
    }
    error.name = value.property(QStringLiteral("name")).toString();
    error.message = value.property(QStringLiteral("message")).toString();
    error.failure = value.property(QStringLiteral("failure")).toInt();
    // Errors of the engine have names that help; ours speak for themselves.
    if (error.failure == 0 && error.name != QLatin1String("Error"))
        error.message = error.name + QStringLiteral(": ") + error.message;
    error.hint = hintFor(error.message);
    return error;
}

/// The name that was probably meant where one isn't defined; empty if none is near.
QString ScriptEngine::hintFor(const QString &message) const
{
    static const QRegularExpression unknown(QStringLiteral("^ReferenceError: ([\\w$]+) is not defined$"));
    const QString name = unknown.match(message).captured(1);
    if (name.isEmpty())
        return QString();
    QStringList names;
    QJSValueIterator properties(m_engine.globalObject());
    while (properties.next())
        names.append(properties.name());
    const QString nearest = nearestText(name, names);
    return nearest.isEmpty() ? QString() : QStringLiteral("did you mean %1?").arg(nearest);
}

} // namespace Vantle::Tool::Replay
