#pragma once

#include "hook/inputvalues.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include <list>

namespace Vantle::QtWrapper {

class StatementRecorder;

/// Pending events, oldest first.
using EventQueue = std::list<SyntheticEvent>;

} // namespace Vantle::QtWrapper

/// A pattern of events that makes one statement of a script.
///
/// Patterns keep nothing between calls but `finishing`, so that match() is a
/// function of its arguments. They never change the queue.
class Compressor
{
public:
    using EventQueue = Vantle::QtWrapper::EventQueue;

    /// What a pattern says about the head of the queue.
    enum MatchResult : qint32 {
        CompleteMatch = 0,         ///< the pattern is there: compress() may be called
        NoMatch = 1,               ///< ask the next pattern
        PartialMatch = 2,          ///< further events may complete it, however late they come
        PartialMatchWithAlarm = 3, ///< same, but ask again after twice the double click time
    };

    virtual ~Compressor();

    /// Holds the pattern against the head of \p queue at the time \p now, in
    /// milliseconds since the Unix epoch. An empty queue gives NoMatch, and so
    /// does, while `finishing` is set, one that ends within the pattern.
    virtual MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const = 0;

    /// Writes the statement of a pattern that match() found complete in the
    /// same queue, if it makes one. \p initialModifiers were in force before
    /// the head. Returns the first event that the pattern did not consume; it
    /// consumes at least one.
    virtual EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                                Vantle::QtWrapper::StatementRecorder *recorder) const = 0;

    /// The name of the class, for logs.
    virtual const char *name() const = 0;

    /// Set while no further events will come, so that a pattern must decide
    /// with what there is.
    bool finishing = false;

protected:
    Compressor() = default;

    /// The answer for a queue that ends within the pattern.
    MatchResult exhausted() const noexcept { return finishing ? NoMatch : PartialMatch; }

private:
    Q_DISABLE_COPY_MOVE(Compressor)
};
