#pragma once

#include <QtCore/QMap>
#include <QtCore/QProcess>
#include <QtCore/QString>

namespace Vantle::Tool::Replay {

/// An X server that nobody sees (Xvfb), with a window manager where one is
/// installed. Both end with this object, and with this process. Used on one
/// thread.
class VirtualDisplay
{
public:
    VirtualDisplay() = default;
    ~VirtualDisplay();
    Q_DISABLE_COPY_MOVE(VirtualDisplay)

    /// True if Xvfb is installed.
    static bool isAvailable();

    /// Starts the server. Empty, or why that failed.
    QString start();

    /// What a program has to find in its environment to use the display.
    QMap<QString, QString> environment() const;

private:
    QProcess m_server;
    QProcess m_windowManager;
    QString m_name;
};

} // namespace Vantle::Tool::Replay
