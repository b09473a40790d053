#pragma once

#include "wrappers/qt/extensions/qtquickcommon/compression/compressor.h"

/// One close of a window, with the mouse moves ahead of it.
class WindowCloseCompressor final : public Compressor
{
public:
    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};

/// A run of at least two moves of one window. A lone move is no pattern: it is
/// thrown away together with all that is queued.
class WindowMoveCompressor final : public Compressor
{
public:
    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};

/// A run of resizes of one window. A lone resize makes no statement, but
/// unlike a lone move it leaves by itself and the rest of the queue stays.
class WindowResizeCompressor final : public Compressor
{
public:
    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};

/// One change of a window's state.
class WindowStateChangeCompressor final : public Compressor
{
public:
    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};
