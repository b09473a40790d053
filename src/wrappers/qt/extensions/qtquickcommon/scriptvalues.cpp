#include "wrappers/qt/extensions/qtquickcommon/scriptvalues_p.h"

#include <QtQml/QJSValue>
#include <QtQml/QJSValueIterator>

#include <algorithm>

namespace VantleQtQuickHook {

namespace {

constexpr quint32 MaximumLength = 10000;

bool isScriptValue(const QVariant &value)
{
    return value.metaType() == QMetaType::fromType<QJSValue>();
}

QStringList arrayTexts(const QJSValue &array)
{
    const quint32 length = std::min(array.property(QStringLiteral("length")).toUInt(), MaximumLength);
    QStringList texts;
    texts.reserve(length);
    for (quint32 i = 0; i < length; ++i)
        texts.append(scriptText(array.property(i)));
    return texts;
}

} // namespace

QStringList toStringList(const QVariant &value)
{
    if (!isScriptValue(value))
        return value.toStringList();
    const auto script = value.value<QJSValue>();
    if (script.isArray())
        return arrayTexts(script);
    return script.isObject() ? QStringList() : script.toVariant().toStringList();
}

QMap<QString, QVariant> toMap(const QVariant &value)
{
    if (!isScriptValue(value))
        return value.toMap();
    const auto script = value.value<QJSValue>();
    QMap<QString, QVariant> map;
    if (!script.isObject() || script.isArray() || script.isCallable())
        return map;
    for (QJSValueIterator property(script); property.next();)
        map.insert(property.name(), QVariant::fromValue(property.value()));
    return map;
}

QString scriptText(const QJSValue &value)
{
    const bool isNested = value.isObject() && !value.isDate() && !value.isVariant();
    return isNested ? QString() : value.toVariant().toString();
}

StrayScriptErrors::StrayScriptErrors(const QObject *scripted) : m_engine(scripted ? qjsEngine(scripted) : nullptr)
{
}

StrayScriptErrors::~StrayScriptErrors()
{
    if (m_engine && m_engine->hasError())
        m_engine->catchError();
}

} // namespace VantleQtQuickHook
