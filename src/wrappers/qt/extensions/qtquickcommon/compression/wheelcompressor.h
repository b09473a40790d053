#pragma once

#include "wrappers/qt/extensions/qtquickcommon/compression/compressor.h"

/// A run of wheel events on one object, summed up. Wherever the queue leaves
/// the pattern undecided, a mouse move leaves it so.
class WheelCompressor final : public Compressor
{
public:
    MatchResult match(const EventQueue &queue, Vantle::Modifier::Value initialModifiers, quint64 now) const override;
    EventQueue::const_iterator compress(const EventQueue &queue, Vantle::Modifier::Value initialModifiers,
                                        Vantle::QtWrapper::StatementRecorder *recorder) const override;
    const char *name() const override;
};
