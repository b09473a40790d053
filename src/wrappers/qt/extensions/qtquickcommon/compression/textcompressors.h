#pragma once

#include "wrappers/qt/extensions/qtquickcommon/compression/compressor.h"

/// Text committed by an input method.
class InputMethodCompressor final : public Compressor
{
public:
    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};

/// A run of keys on one object. Plain characters are joined to one statement,
/// a special key makes one of its own.
///
/// A key is special when its text is longer than one byte: a key name in
/// angle brackets, but also every character outside ASCII.
class TextInputCompressor final : public Compressor
{
public:
    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};
