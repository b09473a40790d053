#pragma once

#include <QtCore/QMap>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtQml/QJSEngine>

class QJSValue;

/// Reading what scripts hand out.
///
/// Qt gives the objects and arrays of a script as a QVariant that holds a
/// QJSValue. QVariant itself converts these with everything below them, so that
/// a script can bring the program down with a value that is nested deeply or an
/// array of four thousand million holes. Here only what is asked for is read.
/// Getters of the script may run all the same, and any object may be gone then.
namespace VantleQtQuickHook {

/// Like QVariant::toStringList, with the entries of script arrays by
/// scriptText(). Of a script array the first 10,000 entries count.
QStringList toStringList(const QVariant &value);

/// Like QVariant::toMap; the values of a script object are left unconverted.
QMap<QString, QVariant> toMap(const QVariant &value);

/// The text of a simple value; empty for objects, arrays, null and undefined.
QString scriptText(const QJSValue &value);

/// Takes errors of getters that nobody asked for off the engine at its end, so
/// that they don't turn up in the next script that the program runs.
class StrayScriptErrors
{
public:
    /// \p scripted may be null or no object of a script engine.
    explicit StrayScriptErrors(const QObject *scripted);
    ~StrayScriptErrors();
    Q_DISABLE_COPY_MOVE(StrayScriptErrors)

private:
    QPointer<QJSEngine> m_engine;
};

} // namespace VantleQtQuickHook
