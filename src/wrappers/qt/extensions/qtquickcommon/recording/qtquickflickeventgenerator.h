#pragma once

#include "hook/shared.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"
#include "wrappers/qt/extensions/qtquickcommon/flickmonitor.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

namespace Vantle {

class Class;

namespace QtWrapper {

class QtEventRecorder;

/// Feeds the recorder with the flicks that the input events don't show.
///
/// Is shown every event before Qt delivers it, so that it can watch the
/// flickables around what is pressed; what they do then goes to the recorder
/// as events of its own, between the press and what follows. Keeps the
/// recorder alive. A host may derive from it. Used on the thread that delivers Qt's events.
class VANTLEQTQUICKCOMMON_EXPORT QtQuickFlickEventGenerator : public FlickObserver
{
public:
    /// \p eventRecorder must not be null. The class "QQuickItem" is looked up
    /// here, so it has to be registered before.
    explicit QtQuickFlickEventGenerator(SharedPtr<QtEventRecorder> eventRecorder);
    /// Copies share the monitor, which goes on reporting to the generator that
    /// was copied and goes with the first of them that is destroyed. So only
    /// one of a set of copies may be destroyed while the others are needed.
    QtQuickFlickEventGenerator(const QtQuickFlickEventGenerator &);
    /// Same. The monitor that was held before is not destroyed.
    QtQuickFlickEventGenerator &operator=(const QtQuickFlickEventGenerator &);

    /// Watches for flicks from the press of a mouse button or of one finger on
    /// an item, until the release. Other events, and those on objects that are
    /// no items, pass without effect.
    void peekSyntheticEvent(const SyntheticEvent &event);

    void flickStarted(QQuickItem *flickable, const QPointF &position, QQuickItem *item) override;
    void flickEnded(QQuickItem *flickable, const QPointF &position, QQuickItem *item) override;

    virtual ~QtQuickFlickEventGenerator();

private:
    void compressFlickEvent(QQuickItem *flickable, const QPointF &position, QQuickItem *item,
                            SyntheticEvent::FlickState state);

    SharedPtr<QtEventRecorder> recorder;
    const Class *quickItemClass;
    FlickMonitor *monitor;
};

} // namespace QtWrapper
} // namespace Vantle
