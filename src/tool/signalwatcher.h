#pragma once

#include <QtCore/QObject>

namespace Vantle::Tool {

/// Turns SIGINT, SIGTERM and SIGHUP of this process into a Qt signal, from
/// construction to destruction. One object at a time. A SIGHUP that was ignored
/// before (`nohup`) stays ignored.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SignalWatcher(QObject *parent = nullptr);
    ~SignalWatcher() override;

Q_SIGNALS:
    /// Comes from the event loop, once for each signal that arrived.
    void stopRequested();

private:
    void readPipe();
};

} // namespace Vantle::Tool
