#include "tool/replay/virtualdisplay.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QStandardPaths>

#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

namespace Vantle::Tool::Replay {

namespace {

constexpr int startLimit = 30000;
constexpr int endLimit = 5000;

/// In a process group of its own Ctrl-C passes it by; the death of the thread
/// that started it does not.
void endWithParent()
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
}

void end(QProcess *process)
{
    if (process->state() == QProcess::NotRunning)
        return;
    process->terminate();
    if (!process->waitForFinished(endLimit))
        process->kill();
    process->waitForFinished(endLimit);
}

} // namespace

VirtualDisplay::~VirtualDisplay()
{
    end(&m_windowManager);
    end(&m_server);
}

bool VirtualDisplay::isAvailable()
{
    return !QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty();
}

QString VirtualDisplay::start()
{
    m_server.setChildProcessModifier(endWithParent);
    m_server.setStandardErrorFile(QProcess::nullDevice());
    // It chooses a free number and prints it when it can be used.
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                    QStringLiteral("1280x1024x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    const QDeadlineTimer deadline(startLimit);
    QByteArray number;
    while (!number.contains('\n') && m_server.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
        number += m_server.readAllStandardOutput();
    if (!number.contains('\n'))
        return QStringLiteral("the virtual display (Xvfb) did not start: ") + m_server.errorString();
    m_name = QLatin1Char(':') + QString::fromLatin1(number.trimmed());

    const QString manager = QStandardPaths::findExecutable(QStringLiteral("openbox"));
    if (manager.isEmpty())
        return QString();
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("DISPLAY"), m_name);
    m_windowManager.setProcessEnvironment(variables);
    m_windowManager.setChildProcessModifier(endWithParent);
    m_windowManager.setStandardOutputFile(QProcess::nullDevice());
    m_windowManager.setStandardErrorFile(QProcess::nullDevice());
    m_windowManager.start(manager, QStringList());
    return QString();
}

QMap<QString, QString> VirtualDisplay::environment() const
{
    return {{QStringLiteral("DISPLAY"), m_name},
            {QStringLiteral("WAYLAND_DISPLAY"), QString()},
            {QStringLiteral("XAUTHORITY"), QString()},
            {QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb")}};
}

} // namespace Vantle::Tool::Replay
