#include "tool/doctorchecks.h"

#include "protocol/endpoint.h"
#include "tool/programundertest.h"

#include <QtCore/QDir>
#include <QtCore/QEventLoop>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QLibraryInfo>
#include <QtCore/QPluginLoader>
#include <QtCore/QProcess>
#include <QtCore/QVersionNumber>
#include <QtNetwork/QLocalServer>

#include <algorithm>

namespace Vantle::Tool {

namespace {

constexpr std::chrono::seconds loadLimit(30);
constexpr std::chrono::seconds agentLimit(20);

const QString selfTest = QStringLiteral("self-test");
const QString reinstall = QStringLiteral("install Vantle again, with everything below its prefix");

Check ok(const QString &subject, const QString &finding)
{
    return {Check::Ok, subject, finding, QString()};
}

Check failed(const QString &subject, const QString &finding, const QString &wayOut)
{
    return {Check::Failed, subject, finding, wayOut};
}

/// Names of the platform plugins that a program would find, e.g. "xcb".
QStringList platformNames()
{
    QStringList directories = qEnvironmentVariable("QT_PLUGIN_PATH").split(QLatin1Char(':'), Qt::SkipEmptyParts);
    directories.append(QLibraryInfo::path(QLibraryInfo::PluginsPath));
    QStringList names;
    for (const QString &directory : std::as_const(directories)) {
        const QDir platforms(directory + QStringLiteral("/platforms"));
        const QStringList files = platforms.entryList({QStringLiteral("libq*.so")}, QDir::Files, QDir::Name);
        for (const QString &file : files)
            names.append(file.mid(4).chopped(3));
    }
    names.removeDuplicates();
    return names;
}

Check agentReported(const Protocol::Hello &hello)
{
    if (hello.version != toolVersion())
        return failed(selfTest, QStringLiteral("the agent has version %1, the tool %2").arg(hello.version, toolVersion()),
                      reinstall);
    return ok(selfTest, QStringLiteral("the agent was loaded into a program with Qt %1 and reported").arg(hello.qtVersion));
}

} // namespace

QList<Check> checkEverything(const Installation &installation)
{
    QList<Check> checks{checkPrefix(installation), checkPluginFile(installation), checkPluginMetaData(installation),
                        checkPluginLibraries(installation), checkQtVersion(), checkPlatformPlugins(), checkDisplay(),
                        checkExtensionPath(), checkSocketDirectory()};
    const bool isComplete = std::none_of(checks.cbegin(), checks.cend(),
                                         [](const Check &check) { return check.status == Check::Failed; });
    // Without its parts the self-test could only wait for its limit.
    checks.append(isComplete ? checkAgent(installation)
                             : Check{Check::Note, selfTest, QStringLiteral("left out because of what failed"), QString()});
    return checks;
}

Check checkPrefix(const Installation &installation)
{
    const QString subject = QStringLiteral("prefix");
    if (QFileInfo(installation.pluginRoot).isDir())
        return ok(subject, installation.prefix);
    return failed(subject, QStringLiteral("%1 holds no %2").arg(installation.prefix, installation.pluginRoot),
                  QStringLiteral("don't copy the command alone: ") + reinstall);
}

Check checkPluginFile(const Installation &installation)
{
    const QString subject = QStringLiteral("agent");
    const QFileInfo file(installation.plugin);
    if (!file.exists())
        return failed(subject, QStringLiteral("%1 is missing").arg(installation.plugin), reinstall);
    if (!file.isReadable())
        return failed(subject, QStringLiteral("%1 can't be read").arg(installation.plugin),
                      QStringLiteral("give its users the right to read it and its directories"));
    return ok(subject, installation.plugin);
}

Check checkPluginMetaData(const Installation &installation)
{
    const QString subject = QStringLiteral("agent's metadata");
    const QPluginLoader loader(installation.plugin);
    const QJsonObject metaData = loader.metaData();
    const QJsonArray keys = metaData.value(QStringLiteral("MetaData")).toObject().value(QStringLiteral("Keys")).toArray();
    if (keys.contains(QStringLiteral("vantle")))
        return ok(subject, QStringLiteral("Qt knows it as the generic plugin \"vantle\""));
    const QString reason = loader.errorString().isEmpty() ? QStringLiteral("the key \"vantle\" is missing")
                                                          : loader.errorString();
    return failed(subject, reason, QStringLiteral("build Vantle against the Qt that the programs use"));
}

Check checkPluginLibraries(const Installation &installation)
{
    const QString subject = QStringLiteral("agent's libraries");
    QProcess probe;
    probe.setProcessChannelMode(QProcess::MergedChannels);
    probe.start(installation.probe, {QStringLiteral("--load"), installation.plugin});
    if (!probe.waitForStarted())
        return failed(subject, QStringLiteral("cannot start %1: %2").arg(installation.probe, probe.errorString()),
                      reinstall);
    const auto limit = static_cast<int>(std::chrono::milliseconds(loadLimit).count());
    if (!probe.waitForFinished(limit))
        return failed(subject, QStringLiteral("loading them does not come to an end"), reinstall);
    if (probe.exitStatus() != QProcess::NormalExit || probe.exitCode() != 0)
        return failed(subject, QString::fromLocal8Bit(probe.readAll()).simplified(),
                      QStringLiteral("install what is named as missing; Vantle's own libraries come with it"));
    return ok(subject, QStringLiteral("all of them are found"));
}

Check checkQtVersion()
{
    const QString subject = QStringLiteral("Qt");
    const QString running = QString::fromLatin1(qVersion());
    const QString built = QStringLiteral(QT_VERSION_STR);
    const auto minor = [](const QString &version) {
        const QVersionNumber number = QVersionNumber::fromString(version);
        return QVersionNumber(number.majorVersion(), number.minorVersion());
    };
    if (minor(running) < minor(built))
        return failed(subject, QStringLiteral("version %1, but Vantle was built with %2").arg(running, built),
                      QStringLiteral("build Vantle with the older version"));
    return ok(subject, QStringLiteral("version %1, built with %2").arg(running, built));
}

Check checkPlatformPlugins()
{
    const QString subject = QStringLiteral("platform plugins");
    const QStringList names = platformNames();
    if (names.contains(QStringLiteral("offscreen")))
        return ok(subject, names.join(QStringLiteral(", ")));
    return failed(subject, names.isEmpty() ? QStringLiteral("none was found") : QStringLiteral("there is no \"offscreen\""),
                  QStringLiteral("install the platform plugins of Qt 6; on Debian they come with libqt6gui6"));
}

Check checkDisplay()
{
    const QString subject = QStringLiteral("display");
    const QString wayland = qEnvironmentVariable("WAYLAND_DISPLAY");
    const QString x11 = qEnvironmentVariable("DISPLAY");
    if (!wayland.isEmpty())
        return ok(subject, QStringLiteral("WAYLAND_DISPLAY is %1").arg(wayland));
    if (!x11.isEmpty())
        return ok(subject, QStringLiteral("DISPLAY is %1").arg(x11));
    return {Check::Note, subject,
            QStringLiteral("neither DISPLAY nor WAYLAND_DISPLAY is set: programs show no window here, and start only "
                           "with QT_QPA_PLATFORM=offscreen or under xvfb-run"),
            QString()};
}

Check checkExtensionPath()
{
    const QString subject = QStringLiteral("extensions");
    const QString path = qEnvironmentVariable("VANTLE_QTQUICK_EXTENSION_PATH");
    if (path.isEmpty())
        return ok(subject, QStringLiteral("VANTLE_QTQUICK_EXTENSION_PATH is not set; only the installed ones are used"));
    if (QFileInfo(path).isDir())
        return ok(subject, QStringLiteral("VANTLE_QTQUICK_EXTENSION_PATH is %1").arg(path));
    return failed(subject, QStringLiteral("VANTLE_QTQUICK_EXTENSION_PATH is %1, which is no directory").arg(path),
                  QStringLiteral("set it to a directory that holds *.qml files, or unset it"));
}

Check checkSocketDirectory()
{
    const QString subject = QStringLiteral("socket");
    const QString wayOut = QStringLiteral("set XDG_RUNTIME_DIR to a directory that you can write to");
    const Protocol::SocketDirectory directory;
    if (!directory.isValid())
        return failed(subject, directory.errorString(), wayOut);
    QLocalServer server;
    server.setSocketOptions(QLocalServer::UserAccessOption);
    if (!server.listen(directory.socketPath()))
        return failed(subject, QStringLiteral("%1: %2").arg(directory.socketPath(), server.errorString()), wayOut);
    return ok(subject, QStringLiteral("can listen in %1").arg(QFileInfo(directory.socketPath()).path()));
}

Check checkAgent(const Installation &installation)
{
    ProgramUnderTest program(installation);
    QEventLoop loop;
    Check check;
    const auto finish = [&](const Check &result) {
        check = result;
        // Queued: the outcome may come before the loop runs.
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    };
    const auto fail = [&](const QString &reason) {
        finish(failed(selfTest, reason, QStringLiteral("try \"QT_DEBUG_PLUGINS=1 vantle doctor\" to see what Qt loads")));
    };
    QObject::connect(&program, &ProgramUnderTest::agentReady, &loop, [&] { finish(agentReported(*program.agent())); });
    QObject::connect(&program, &ProgramUnderTest::startFailed, &loop, fail);
    QObject::connect(&program, &ProgramUnderTest::agentMissing, &loop, fail);
    QObject::connect(&program, &ProgramUnderTest::ended, &loop, [&](const ProgramEnd &end) {
        fail(QStringLiteral("the test program ended with %1 %2 before the agent reported")
                 .arg(end.crashed ? QStringLiteral("signal") : QStringLiteral("exit code")).arg(end.number));
    });
    LaunchOptions options;
    options.words = QStringList(installation.probe);
    options.startLimit = agentLimit;
    options.environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    options.standardOutputToError = true;
    program.start(options);
    loop.exec();
    return check;
}

} // namespace Vantle::Tool
