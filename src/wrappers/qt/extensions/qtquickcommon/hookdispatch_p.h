#pragma once

#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"

#include <QtCore/QVariant>

class QJSEngine;

/// How one hook is asked, and what its answers mean.
namespace VantleQtQuickHook {

/// Calls the function \p name of \p hook with one argument, or with two if
/// \p second isn't null. The result is invalid exactly if the hook gave no
/// answer: the function is missing or takes other arguments, it failed,
/// returned an error, undefined, or the text that says "unhandled".
///
/// Runs script; \p hook may be gone afterwards.
QVariant callHookFunction(QObject *hook, const char *name, const QVariant &first, const QVariant *second);

/// Whether \p value is an error that a script function returned, or an object
/// that says what happened in "message". Logs it then. With \p engine, that of
/// the script, "message" must be enumerable.
bool reportScriptError(const QVariant &value, QJSEngine *engine = nullptr);

/// Whether the class of \p object or one of its base classes has that name.
bool objectIsOfType(QObject *object, const QString &type);
bool itemMatchesAnyType(QQuickItem *item, const QList<QString> &types);

/// Whether a function of an extension may add a property of that name. Type
/// and container belong to every name anyway.
bool acceptExtensionProperty(const QString &property);

} // namespace VantleQtQuickHook
