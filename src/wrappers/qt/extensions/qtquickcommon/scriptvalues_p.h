#pragma once

#include <QtCore/QMap>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtQml/QJSEngine>
#include <QtQml/QJSValue>

#include <optional>

/// Reading what scripts hand out.
///
/// Qt gives the objects and arrays of a script as a QVariant that holds a
/// QJSValue. QVariant itself converts these with everything below them, so that
/// a script can bring the program down with a value that is nested deeply or an
/// array of four thousand million holes. Here only what is asked for is read.
/// Getters of the script may run all the same, and any object may be gone then.
namespace VantleQtQuickHook {

/// The value as QVariant has it: a text, a number, a date, a list of C++ and
/// the like. Invalid for undefined and for objects and arrays of the script.
QVariant plainValue(const QJSValue &value);

/// Like QVariant::toStringList, with the entries of script arrays by
/// scriptText(). The holes of a script array are passed over.
QStringList toStringList(const QVariant &value);

/// Like QVariant::toMap; the values of a script object are left unconverted.
/// \p engine as for seesProperty().
QMap<QString, QVariant> toMap(const QVariant &value, QJSEngine *engine);

/// Whether QVariant::toMap of the object would have that key: for properties of
/// its own that are enumerable. Without an engine, which must be that of the
/// object, those that are not enumerable count as well.
bool seesProperty(const QJSValue &object, const QString &name, QJSEngine *engine);

/// The text of a simple value; empty for objects, arrays, null and undefined.
QString scriptText(const QJSValue &value);

/// Takes errors of getters that nobody asked for off the engine at its end, so
/// that they don't turn up in the next script that the program runs.
///
/// An error that was pending before, since the question is put from C++ that a
/// script has called, is the program's own: it is laid aside, so that scripts
/// of extensions can run, and pending again at the end.
class StrayScriptErrors
{
public:
    /// Both may be null.
    explicit StrayScriptErrors(QJSEngine *engine);
    /// \p scripted may also be no object of a script engine.
    explicit StrayScriptErrors(const QObject *scripted);
    ~StrayScriptErrors();
    Q_DISABLE_COPY_MOVE(StrayScriptErrors)

    /// Null if there is none, and once it has gone.
    QJSEngine *engine() const { return m_engine; }

private:
    QPointer<QJSEngine> m_engine;
    std::optional<QJSValue> m_earlierError;
};

} // namespace VantleQtQuickHook
