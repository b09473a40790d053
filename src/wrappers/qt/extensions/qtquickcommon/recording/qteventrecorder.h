#pragma once

#include "hook/shared.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventcompressor.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

#include <memory>

namespace Vantle::QtWrapper {

/// The front door of recording: takes raw events, has them compressed, and
/// hands each finished statement to Application.
///
/// One for the process, alive as long as somebody holds it. Belongs to the
/// thread that handles Qt's events; it may be fed from within the delivery of
/// an event and from a flickable's signals, and rings its own alarms there.
class QtEventRecorder final
    : public Shared
    , public EventCompressorObserver
    , public UISettings
{
public:
    /// The one object. Made by the first call, and again by the first one
    /// after the last reference to it went, with the configuration that
    /// Application, which must exist, has at that time.
    VANTLEQTQUICKCOMMON_EXPORT static SharedPtr<QtEventRecorder> instance();
    VANTLEQTQUICKCOMMON_EXPORT ~QtEventRecorder() override;

    /// The one way in for events.
    VANTLEQTQUICKCOMMON_EXPORT void eatEvent(const SyntheticEvent &event);
    /// Ends all pending patterns: the queue makes at most one more statement,
    /// what is left of it is dropped, and held modifiers are forgotten.
    VANTLEQTQUICKCOMMON_EXPORT void flushEventQueue();

    /// Passes a copy of \p statement to Application.
    VANTLEQTQUICKCOMMON_EXPORT void handleCompressedEvent(const EventData &statement) override;

    /// In pixels, as Qt's style hints say now; 4 without a QGuiApplication.
    VANTLEQTQUICKCOMMON_EXPORT qint32 dragDistance() const override;
    /// In milliseconds, as Qt's style hints say now; 400 without a QGuiApplication.
    VANTLEQTQUICKCOMMON_EXPORT quint32 doubleClickTime() const override;

private:
    VANTLEQTQUICKCOMMON_EXPORT QtEventRecorder();
    Q_DISABLE_COPY_MOVE(QtEventRecorder)

    std::unique_ptr<EventCompressor> compressor;
    std::unique_ptr<AlarmClock> alarmClock;
};

} // namespace Vantle::QtWrapper
