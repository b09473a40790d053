#include "wrappers/qt/extensions/qtquickcommon/hookdispatch_p.h"

#include "wrappers/qt/extensions/qtquickcommon/diagnostics/logging.h"
#include "wrappers/qt/extensions/qtquickcommon/scriptvalues_p.h"
#include "wrappers/qt/qmltypes.h"

#include <QtCore/QMetaMethod>

#include <algorithm>
#include <span>

using namespace Vantle::QtWrapper;

namespace VantleQtQuickHook {

namespace {

struct ScriptError
{
    QString message;
    QString fileName;
    int lineNumber = 0;
};

void log(const ScriptError &error)
{
    Vantle::QtQuickCommon::logWarning("QML JS error: %s (%s:%d)", error.message.toUtf8().constData(),
                                      error.fileName.toUtf8().constData(), error.lineNumber);
}

// The properties of an Error are not enumerable, so that it is empty as a map.
bool isScriptError(const QJSValue &value, QJSEngine *engine)
{
    const bool isPlainObject = value.isObject() && !value.isArray() && !value.isCallable() && !value.isQObject()
        && !value.isVariant();
    return value.isError() || (isPlainObject && seesProperty(value, QStringLiteral("message"), engine));
}

ScriptError scriptError(const QJSValue &value)
{
    return {scriptText(value.property(QStringLiteral("message"))),
            scriptText(value.property(QStringLiteral("fileName"))),
            plainValue(value.property(QStringLiteral("lineNumber"))).toInt()};
}

ScriptError scriptError(const QVariantMap &map)
{
    return {map.value(QStringLiteral("message")).toString(), map.value(QStringLiteral("fileName")).toString(),
            map.value(QStringLiteral("lineNumber")).toInt()};
}

// Class by class, since cleaning a class's name costs more than the comparisons.
bool isCalledAnyOf(const QMetaObject *metaObject, std::span<const QString> types)
{
    for (; metaObject; metaObject = metaObject->superClass()) {
        const QByteArray name = cleanQmlClassName(metaObject);
        if (std::any_of(types.begin(), types.end(),
                        [&name](const QString &type) { return QAnyStringView(name) == QAnyStringView(type); }))
            return true;
    }
    return false;
}

bool isUnhandled(const QVariant &value)
{
    return value.typeId() == QMetaType::QString && value.toString() == VantleHook::unhandledValue;
}

} // namespace

QVariant callHookFunction(QObject *hook, const char *name, const QVariant &first, const QVariant *second)
{
    const QByteArray signature = QByteArray(name) + (second ? "(QVariant,QVariant)" : "(QVariant)");
    const int index = hook->metaObject()->indexOfMethod(signature.constData());
    if (index == -1)
        return {};

    const StrayScriptErrors strayErrors(hook);
    QVariant result;
    const bool wasCalled = hook->metaObject()->method(index).invoke(hook, Qt::AutoConnection,
                                                                    Q_RETURN_ARG(QVariant, result),
                                                                    Q_ARG(QVariant, first),
                                                                    second ? Q_ARG(QVariant, *second)
                                                                           : QGenericArgument());
    if (!wasCalled || reportScriptError(result, strayErrors.engine()) || isUnhandled(result))
        return {};
    return result;
}

bool reportScriptError(const QVariant &value, QJSEngine *engine)
{
    if (value.metaType() == QMetaType::fromType<QJSValue>()) {
        const auto script = value.value<QJSValue>();
        if (!isScriptError(script, engine))
            return false;
        log(scriptError(script));
        return true;
    }
    if (value.typeId() != QMetaType::QVariantMap)
        return false;
    const QVariantMap map = value.toMap();
    if (!map.contains(QStringLiteral("message")))
        return false;
    log(scriptError(map));
    return true;
}

bool objectIsOfType(QObject *object, const QString &type)
{
    return isCalledAnyOf(object->metaObject(), {&type, 1});
}

bool itemMatchesAnyType(QQuickItem *item, const QList<QString> &types)
{
    return !types.isEmpty() && isCalledAnyOf(item->metaObject(), types);
}

bool acceptExtensionProperty(const QString &property)
{
    return !property.isEmpty() && property != QLatin1String("type") && property != QLatin1String("container");
}

} // namespace VantleQtQuickHook
