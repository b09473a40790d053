#pragma once

#include "hook/shared.h"

#include <QtCore/QObject>

namespace Vantle::QtWrapper {
class QtEventRecorder;
}

namespace Vantle::Agent {

/// Shows the program's input to the recorder before Qt delivers it.
///
/// Qt hands an event to the window first and then to each item that it
/// delivers it to, so only what the window system sent, to a window, counts.
/// The one exception are texts of an input method, which go to the focus
/// object without passing the window.
class EventWatcher final : public QObject
{
    Q_OBJECT

public:
    EventWatcher();
    ~EventWatcher() override;

    void start();
    /// Ends the watch; what is pending becomes a statement now or never. Does
    /// nothing while not started.
    void stop();

    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    SharedPtr<QtWrapper::QtEventRecorder> m_recorder;
};

} // namespace Vantle::Agent
