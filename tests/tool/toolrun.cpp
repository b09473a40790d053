#include "toolrun.h"

#include "support/waiting.h"

#include <QtCore/QFile>
#include <QtCore/QProcessEnvironment>

#include <csignal>

namespace VantleTest {

namespace {

constexpr std::chrono::seconds limit(30);

} // namespace

ToolRun::ToolRun(const QStringList &arguments, const QMap<QString, QString> &environment, const QByteArray &input)
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_runtimeDirectory.path());
    for (auto it = environment.cbegin(); it != environment.cend(); ++it)
        variables.insert(it.key(), it.value());
    m_process.setProcessEnvironment(variables);
    m_process.start(QStringLiteral(VANTLE_TOOL), arguments);
    m_process.write(input);
    m_process.closeWriteChannel();
}

ToolRun::~ToolRun()
{
    // The second request ends the program as well, and at once; a killed tool
    // would leave it running.
    if (isRunning()) {
        sendSignal(SIGTERM);
        sendSignal(SIGTERM);
    }
    if (!m_process.waitForFinished(5000))
        m_process.kill();
    m_process.waitForFinished();
}

int ToolRun::exitCode()
{
    if (!waitUntil([this] { return !isRunning(); }, limit))
        return -1;
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -2;
}

bool ToolRun::printed(const QString &text)
{
    return waitUntil([&] { return output().contains(text); }, limit);
}

bool ToolRun::said(const QString &text)
{
    return waitUntil([&] { return errors().contains(text); }, limit);
}

QString ToolRun::output()
{
    collect();
    return QString::fromUtf8(m_output);
}

QString ToolRun::errors()
{
    collect();
    return QString::fromUtf8(m_errors);
}

void ToolRun::sendSignal(int number)
{
    ::kill(static_cast<pid_t>(m_process.processId()), number);
}

void ToolRun::collect()
{
    m_output += m_process.readAllStandardOutput();
    m_errors += m_process.readAllStandardError();
}

QStringList recordFake(const QStringList &actions, const QStringList &options)
{
    return QStringList(QStringLiteral("record")) + options
        + QStringList({QStringLiteral("--"), QStringLiteral(VANTLE_FAKE_AGENT)}) + actions;
}

QString contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString awaitFile(const QString &path)
{
    waitUntil([&] { return QFile::exists(path); }, limit);
    return contentOf(path);
}

bool isAlive(qint64 process)
{
    const QString status = contentOf(QStringLiteral("/proc/%1/stat").arg(process));
    return !status.isEmpty() && !status.section(QLatin1Char(')'), -1).startsWith(QLatin1String(" Z"));
}

} // namespace VantleTest
