#pragma once

#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

namespace VantleTest {

/// One run of the command in a process of its own. Kills what is left of it.
class ToolRun
{
public:
    explicit ToolRun(const QStringList &arguments, const QMap<QString, QString> &environment = {},
                     const QByteArray &input = {});
    ~ToolRun();
    Q_DISABLE_COPY_MOVE(ToolRun)

    /// Waits for the end of the command and gives its exit code; -1 if it does
    /// not end, -2 if it crashed.
    int exitCode();

    /// Waits until standard output (or error) holds \p text.
    bool printed(const QString &text);
    bool said(const QString &text);

    /// Everything so far, for messages and for looking at the whole.
    QString output();
    QString errors();

    void sendSignal(int number);
    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

private:
    void collect();

    // A tool that a test kills can't remove its socket; this directory can.
    QTemporaryDir m_runtimeDirectory;
    QProcess m_process;
    QByteArray m_output;
    QByteArray m_errors;
};

/// `record OPTIONS -- fakeagent ACTIONS`.
QStringList recordFake(const QStringList &actions, const QStringList &options = {});

/// The content of a file; a null text if it can't be read.
QString contentOf(const QString &path);

/// Waits for a file and gives its content.
QString awaitFile(const QString &path);

/// True while a process with this number is running (a zombie isn't).
bool isAlive(qint64 process);

} // namespace VantleTest
