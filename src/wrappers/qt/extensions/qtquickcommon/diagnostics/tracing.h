#pragma once

#include "tracelib/tracepoint.h"
#include "tracelib/variables.h"

#include <QtCore/QPointer>
#include <QtCore/qcontainerfwd.h>

#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <type_traits>

class QPointF;
class QQuickItem;
class QQuickWindow;
class QString;

/// A trace statement of the group "qtquick": `VANTLE_TRACE("Got " << item << ".")`.
///
/// The pieces stand as behind a stream, without blanks of their own, and are
/// evaluated, in order, only if the statement is to deliver a message. A piece
/// that is made with an operator weaker than `<<` needs parentheses. Without a
/// piece the message is empty.
// The recorder is made behind the question, so that a statement that is off has
// nothing to clean up.
#define VANTLE_TRACE(...) \
    do { \
        static constinit ::corvaline::tracelib::TracePoint vantleTracePoint( \
            ::corvaline::tracelib::TracePointType::Detail, __FILE__, __LINE__, \
            static_cast<const char *>(__PRETTY_FUNCTION__), "qtquick"); \
        if (::corvaline::tracelib::advanceVisit(&vantleTracePoint)) { \
            ::Vantle::QtQuickCommon::TraceRecorder vantleTraceRecorder{&vantleTracePoint}; \
            static_cast<void>(vantleTraceRecorder __VA_OPT__(<< __VA_ARGS__)); \
            vantleTraceRecorder.finish(); \
        } \
    } while (false)

namespace Vantle::QtQuickCommon {

using corvaline::tracelib::VariableValue;

template<typename T>
concept ItemOrWindow = std::same_as<std::remove_cv_t<T>, QQuickItem> || std::same_as<std::remove_cv_t<T>, QQuickWindow>;

template<typename T>
concept ClassWithoutForm = std::is_class_v<T> && !ItemOrWindow<T>;

template<typename T>
concept TraceableNumber = sizeof(T) >= 2 && std::integral<T>;

/// The pieces of trace messages as values. Each of these copies what it needs.
///
/// A null \p text gives the empty text.
VariableValue toVariableValue(const char *text);
VariableValue toVariableValue(long long number);
/// Qt's debug form of the item or window, also for null.
VariableValue toVariableValue(const QQuickItem *item);
VariableValue toVariableValue(const QQuickWindow *window);
/// Qt's debug form of the point.
VariableValue toVariableValue(const QPointF &point);
VariableValue toVariableValue(const QString &text);
/// The text that a QVariant makes of the list: that of its entry if it has
/// exactly one, and none otherwise.
VariableValue toVariableValue(const QList<QString> &texts);
/// An address in hexadecimal digits behind "0x", cut to ten characters.
VariableValue addressToVariableValue(std::uintptr_t address);

// A template, so that no pointer turns into a truth value on the way.
template<std::same_as<bool> T>
VariableValue toVariableValue(T flag)
{
    return VariableValue::booleanValue(flag);
}

template<TraceableNumber T>
VariableValue toVariableValue(T number)
{
    return toVariableValue(static_cast<long long>(number));
}

/// A pointer to any class without a form of its own, by its address. That
/// holds for the subclasses of items and windows too, flickables among them.
template<ClassWithoutForm T>
VariableValue toVariableValue(T *object)
{
    return addressToVariableValue(reinterpret_cast<std::uintptr_t>(object));
}

/// The pointer's form, so that a guard prints like what it guards.
template<typename T>
VariableValue toVariableValue(const QPointer<T> &guard)
{
    return toVariableValue(guard.data());
}

/// Collects the message of one visit and delivers it. A local object of one
/// trace statement, used on its thread only.
///
/// Costs nothing until the first piece. Deletes the message, and the snapshot
/// with its variables, at its end, also when an exception passes.
class TraceRecorder
{
public:
    /// \p tracePoint, which must not be null, outlives the recorder.
    explicit TraceRecorder(corvaline::tracelib::TracePoint *tracePoint) noexcept : point(tracePoint) {}
    ~TraceRecorder()
    {
        if (text || snapshot)
            release();
    }
    Q_DISABLE_COPY_MOVE(TraceRecorder)

    /// Appends the text of \p value to the message.
    TraceRecorder &add(const VariableValue &value);

    template<typename T>
    TraceRecorder &operator<<(const T &piece)
    {
        return add(toVariableValue(piece));
    }

    /// Delivers the message, which may be empty, if the point is still active.
    void finish() const;
    /// All pieces so far as one text; empty without any.
    std::string message() const;

    corvaline::tracelib::TracePoint *point;
    /// Null until the first piece comes.
    std::ostringstream *text = nullptr;
    /// The recorder's own, with the variables in it. Nothing of this library attaches any.
    corvaline::tracelib::VariableSnapshot *snapshot = nullptr;

private:
    void release();
};

} // namespace Vantle::QtQuickCommon
