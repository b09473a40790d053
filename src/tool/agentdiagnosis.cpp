#include "tool/agentdiagnosis.h"

#include <QtCore/QFile>

namespace Vantle::Tool {

QString diagnosisOfProcess(qint64 processId)
{
    QFile file(QStringLiteral("/proc/%1/maps").arg(processId));
    return file.open(QIODevice::ReadOnly) ? diagnosisOfMaps(file.readAll()) : QString();
}

QString diagnosisOfMaps(const QByteArray &maps)
{
    if (maps.isEmpty())
        return QString();
    if (maps.contains("/libvantle.so"))
        return QStringLiteral("The agent was loaded but did not call: the program may hang during its start, "
                              "or be kept from connecting to local sockets.");
    if (maps.contains("/libQt6Gui.so"))
        return QStringLiteral("The program uses Qt 6 but did not load the agent. \"vantle doctor\" checks the "
                              "installation; a program with a Qt older than %1 can't load it.")
            .arg(QStringLiteral(QT_VERSION_STR));
    if (maps.contains("/libQt5Gui.so") || maps.contains("/libQtGui.so"))
        return QStringLiteral("The program uses another major version of Qt; the agent needs Qt 6.");
    return QString();
}

QString crashAtStartText(const QString &program, const QString &signal)
{
    return QStringLiteral("\"%1\" crashed while it was starting: it ended with %2 before the agent reported. Start it "
                          "without vantle: if it crashes there, too, the program itself is at fault.")
        .arg(program, signal);
}

QString likelyCauses(const QString &plugin)
{
    return QStringLiteral("Likely causes:\n"
                          "  - it is no Qt 6 program with a window, or it uses another major version of Qt\n"
                          "  - its Qt is linked statically, or is older than Qt %1\n"
                          "  - it can't read the agent, %2\n"
                          "  - it runs with the rights of another user (setuid), which drops the environment\n"
                          "  - it only starts another program, or wakes a running instance of itself, and ends\n"
                          "\"vantle doctor\" checks the installation.")
        .arg(QStringLiteral(QT_VERSION_STR), plugin);
}

} // namespace Vantle::Tool
