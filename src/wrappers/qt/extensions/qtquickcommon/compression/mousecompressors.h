#pragma once

#include "wrappers/qt/extensions/qtquickcommon/compression/compressor.h"

namespace Vantle {

class Class;

namespace QtWrapper {

class UISettings;

} // namespace QtWrapper
} // namespace Vantle

/// Base of the patterns that begin with a mouse press. Wherever the queue
/// leaves one of them undecided, without an alarm, a mouse move leaves it so.
class MouseButtonCompressor : public Compressor
{
protected:
    using SyntheticEvent = Vantle::QtWrapper::SyntheticEvent;

    /// \p uiSettings is not owned and must outlive the pattern.
    explicit MouseButtonCompressor(const Vantle::QtWrapper::UISettings *uiSettings);

    /// Whether two mouse events lie at least the drag distance apart, measured
    /// on the screen as the sum of both axes.
    bool exceedsDragDistance(const SyntheticEvent &first, const SyntheticEvent &second) const;
    /// Whether so much time passed between two events that a press held still counts as long.
    bool exceedsLongPressTime(const SyntheticEvent &first, const SyntheticEvent &second) const;

    const Vantle::QtWrapper::UISettings *settings;
};

/// Press, flick started, release, flick ended: a statement for the flickable
/// rather than for the item that was pressed.
class MouseFlickCompressor final : public MouseButtonCompressor
{
public:
    explicit MouseFlickCompressor(const Vantle::QtWrapper::UISettings *uiSettings);

    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};

/// Press, release, press. Holds a finished click until the double click time
/// has passed. The second release is not part of the pattern.
class DoubleClickCompressor final : public MouseButtonCompressor
{
public:
    explicit DoubleClickCompressor(const Vantle::QtWrapper::UISettings *uiSettings);

    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};

/// Press and release at least the drag distance apart.
class MouseDragCompressor final : public MouseButtonCompressor
{
public:
    enum DragFlag : qint32 {
        DetectLongDrag = 1,
        MeasureFromCrossing = 2, ///< from the move that left the click area, not from the press
    };

    /// Only a press on an object of class \p pressedClass starts the pattern; null stands for any class.
    MouseDragCompressor(const Vantle::QtWrapper::UISettings *uiSettings, const Vantle::Class *pressedClass,
                        qint32 flags);

    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;

private:
    const Vantle::Class *itemClass;
    qint32 dragFlags;
};

/// Press and release of one button, however far apart: the drags have
/// declined by the time that this pattern is asked.
class MouseClickCompressor final : public MouseButtonCompressor
{
public:
    enum ClickFlag : qint32 {
        DetectLongClick = 2,
    };

    /// Only a press on an object of class \p pressedClass starts the pattern; null stands for any class.
    MouseClickCompressor(const Vantle::QtWrapper::UISettings *uiSettings, const Vantle::Class *pressedClass,
                         qint32 flags);

    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;

private:
    const Vantle::Class *itemClass;
    qint32 clickFlags;
};
