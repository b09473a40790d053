#pragma once

#include "agent/recording/keyreleases.h"
#include "agent/recording/modifiertracker.h"
#include "agent/recording/windowsettling.h"
#include "hook/shared.h"

#include <QtCore/QObject>

#include <memory>

namespace Vantle::QtWrapper {
class QtEventRecorder;
class QtQuickFlickEventGenerator;
} // namespace Vantle::QtWrapper

namespace Vantle::Agent {

/// Shows the program's input to the recorder before Qt delivers it.
///
/// Qt hands an event to the window first and then to each item that it
/// delivers it to, so only what the window system sent, to a window, counts.
/// The one exception are texts of an input method, which go to the focus
/// object without passing the window. That a program closes a window itself
/// is not input, nor is what becomes of a window while it comes to the screen.
///
/// Lives on the thread that owns the user interface.
class EventWatcher final : public QObject
{
    Q_OBJECT

public:
    /// New windows find their place on the screen within \p settlingTime.
    explicit EventWatcher(std::chrono::milliseconds settlingTime = std::chrono::seconds(1));
    ~EventWatcher() override;

    /// The host's Application must exist, and Qt Quick be set up. Does nothing
    /// while started.
    void start();
    /// Ends the watch; what is pending becomes a statement now or never. Does
    /// nothing while not started. Not to be called while a statement is being
    /// handed over, since the recorder goes with the watch.
    void stop();

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    void correctModifiers(QObject *receiver, const QInputEvent &event);
    void flush();
    void record(QObject *receiver, QEvent *event);

    SharedPtr<QtWrapper::QtEventRecorder> m_recorder;
    std::unique_ptr<QtWrapper::QtQuickFlickEventGenerator> m_flickGenerator;
    KeyReleases m_keyReleases;
    ModifierTracker m_modifiers;
    WindowSettling m_settling;
};

} // namespace Vantle::Agent
