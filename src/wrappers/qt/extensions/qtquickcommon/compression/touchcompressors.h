#pragma once

#include "wrappers/qt/extensions/qtquickcommon/compression/compressor.h"

namespace Vantle::QtWrapper {

class UISettings;

} // namespace Vantle::QtWrapper

/// Base of the patterns that begin with a finger. They pass over the mouse and
/// wheel events that come along with a touch sequence, and take them with them.
class TouchCompressor : public Compressor
{
protected:
    /// \p uiSettings is not owned and must outlive the pattern.
    explicit TouchCompressor(const Vantle::QtWrapper::UISettings *uiSettings);

    /// Whether the primary finger is at least the drag distance further on in \p second than in \p first.
    bool exceedsDragDistance(const Vantle::QtWrapper::SyntheticEvent &first,
                             const Vantle::QtWrapper::SyntheticEvent &second) const;

    const Vantle::QtWrapper::UISettings *settings;
};

/// One finger, flick started, finger up, flick ended: a statement for the flickable.
class TouchFlickCompressor final : public TouchCompressor
{
public:
    explicit TouchFlickCompressor(const Vantle::QtWrapper::UISettings *uiSettings);

    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};

/// A touch sequence with more than one finger at any time.
class TouchGestureCompressor final : public TouchCompressor
{
public:
    explicit TouchGestureCompressor(const Vantle::QtWrapper::UISettings *uiSettings);

    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};

/// Two taps. Holds a finished tap until the next event, however late: unlike a
/// click, a tap is not written by the passing of time.
class DoubleTapCompressor final : public TouchCompressor
{
public:
    explicit DoubleTapCompressor(const Vantle::QtWrapper::UISettings *uiSettings);

    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};

/// One finger down and up: a tap, or a drag if it ever left the drag distance.
class TapOrDragCompressor final : public TouchCompressor
{
public:
    explicit TapOrDragCompressor(const Vantle::QtWrapper::UISettings *uiSettings);

    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;

    /// The events of a sequence that its statement is made of. Those that were not found are null.
    struct Sequence
    {
        const Vantle::QtWrapper::SyntheticEvent *begin = nullptr;
        const Vantle::QtWrapper::SyntheticEvent *crossing = nullptr; ///< where the finger left the drag distance
        const Vantle::QtWrapper::SyntheticEvent *touchEnd = nullptr;
    };

    /// Reads a sequence from \p event on, up to its touch end or the end of
    /// the queue, and advances \p event to there. False for anything that is no sequence of one finger.
    bool scanTouchSequence(EventQueue::const_iterator &event, EventQueue::const_iterator end, Sequence &sequence) const;
};
