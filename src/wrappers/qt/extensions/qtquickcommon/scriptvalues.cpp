#include "wrappers/qt/extensions/qtquickcommon/scriptvalues_p.h"

#include <QtQml/QJSValue>
#include <QtQml/QJSValueIterator>

#include <limits>
#include <optional>

namespace VantleQtQuickHook {

namespace {

bool isScriptValue(const QVariant &value)
{
    return value.metaType() == QMetaType::fromType<QJSValue>();
}

// Through the function that the engine itself has, since an object may have
// one of that name of its own. Anything but a plain yes is a no: a trap of a
// proxy can fail.
bool isEnumerable(const QJSValue &object, const QString &name, QJSEngine &engine)
{
    const QJSValue isOwnAndEnumerable = engine.globalObject()
                                            .property(QStringLiteral("Object"))
                                            .property(QStringLiteral("prototype"))
                                            .property(QStringLiteral("propertyIsEnumerable"));
    const QJSValue answer = isOwnAndEnumerable.callWithInstance(object, {QJSValue(name)});
    return answer.isBool() && answer.toBool();
}

/// The place that a property of an array has in it. Nothing for those that are no entries.
std::optional<quint32> placeInArray(const QString &name)
{
    bool ok = false;
    const quint32 place = name.toUInt(&ok);
    if (!ok || place == std::numeric_limits<quint32>::max() || QString::number(place) != name)
        return std::nullopt;
    return place;
}

// By the properties that there are: a length says nothing of how many.
QStringList arrayTexts(const QJSValue &array)
{
    QMap<quint32, QString> texts;
    for (QJSValueIterator property(array); property.next();) {
        if (const auto place = placeInArray(property.name()))
            texts.insert(*place, scriptText(property.value()));
    }
    return texts.values();
}

} // namespace

QVariant plainValue(const QJSValue &value)
{
    const QVariant plain = value.toVariant(QJSValue::RetainJSObjects);
    return isScriptValue(plain) ? QVariant() : plain;
}

QStringList toStringList(const QVariant &value)
{
    if (!isScriptValue(value))
        return value.toStringList();
    const auto script = value.value<QJSValue>();
    return script.isArray() ? arrayTexts(script) : plainValue(script).toStringList();
}

QMap<QString, QVariant> toMap(const QVariant &value, QJSEngine *engine)
{
    if (!isScriptValue(value))
        return value.toMap();
    const auto script = value.value<QJSValue>();
    if (!script.isObject() || script.isArray() || script.isCallable())
        return {};
    if (const QVariant plain = plainValue(script); plain.isValid())
        return plain.toMap();
    QMap<QString, QVariant> map;
    for (QJSValueIterator property(script); property.next();) {
        if (seesProperty(script, property.name(), engine))
            map.insert(property.name(), QVariant::fromValue(property.value()));
    }
    return map;
}

bool seesProperty(const QJSValue &object, const QString &name, QJSEngine *engine)
{
    return object.hasOwnProperty(name) && (!engine || isEnumerable(object, name, *engine));
}

QString scriptText(const QJSValue &value)
{
    return plainValue(value).toString();
}

StrayScriptErrors::StrayScriptErrors(QJSEngine *engine) : m_engine(engine)
{
    if (m_engine && m_engine->hasError())
        m_earlierError = m_engine->catchError();
}

StrayScriptErrors::StrayScriptErrors(const QObject *scripted)
    : StrayScriptErrors(scripted ? qjsEngine(scripted) : nullptr)
{
}

StrayScriptErrors::~StrayScriptErrors()
{
    if (!m_engine)
        return;
    if (m_engine->hasError())
        m_engine->catchError();
    if (m_earlierError)
        m_engine->throwError(*m_earlierError);
}

} // namespace VantleQtQuickHook
