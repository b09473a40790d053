#pragma once

#include "agent/recording/dragcrossing.h"
#include "agent/recording/hostpatterns.h"
#include "agent/recording/hoverpath.h"
#include "agent/recording/inputledger.h"
#include "agent/recording/keyreleases.h"
#include "agent/recording/modifiertracker.h"
#include "agent/recording/pointerdelivery.h"
#include "agent/recording/shortcutsequences.h"
#include "agent/recording/textruns.h"
#include "agent/recording/wheelruns.h"
#include "agent/recording/windowchanges.h"
#include "agent/recording/windowsettling.h"
#include "hook/shared.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>

#include <memory>

class QDropEvent;
class QInputEvent;
class QKeyEvent;
class QMouseEvent;
class QQuickItem;
class QWindow;

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
/// The way of an event: changes of windows and what the pointer does go to
/// stages that know what of it means something and what it means, everything
/// else is translated at once; the record then goes through the line of stages
/// whose end is the recorder.
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

    /// See InputLedger, which has to be told of every statement.
    InputLedger &ledger() { return m_ledger; }

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    /// Where the line of stages ends: the recorder.
    class LineEnd;

    void takeEvent(QObject *receiver, QEvent *event);
    void noteInput(QWindow *window, QEvent *event);
    void forgetStalePress(const QMouseEvent &press);
    void recordKeyOfShortcut(QObject *receiver, const QKeyEvent &release);
    void recordHover(QQuickItem *pressed);
    void endTextAtTimer();
    void takeDrop(QWindow *window, const QDropEvent &event);
    void correctModifiers(QObject *receiver, const QInputEvent &event);
    void record(QObject *receiver, QEvent *event);
    void letGo();
    void flush();

    SharedPtr<QtWrapper::QtEventRecorder> m_recorder;
    std::unique_ptr<QtWrapper::QtQuickFlickEventGenerator> m_flickGenerator;
    WindowSettling m_settling;
    WindowChanges m_windows;
    PointerDelivery m_pointer;
    QElapsedTimer m_sinceKey;
    WheelRuns m_wheels;
    HoverPath m_hover;
    ShortcutSequences m_shortcuts;
    KeyReleases m_keyReleases;
    ModifierTracker m_modifiers;
    // The line, in this order.
    InputLedger m_ledger;
    TextRuns m_texts;
    HostPatterns m_patterns;
    DragCrossing m_drags;
    std::unique_ptr<LineEnd> m_end;
};

} // namespace Vantle::Agent
