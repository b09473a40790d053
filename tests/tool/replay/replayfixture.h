#pragma once

#include "tool/toolrun.h"

#include <gtest/gtest.h>

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

#include <memory>

namespace VantleTest {

/// A directory with scripts, and runs of `vantle replay` on the fake program.
class Replay : public testing::Test
{
protected:
    QString path(const char *name) const { return m_directory.filePath(QLatin1String(name)); }

    void write(const char *name, const QByteArray &text) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(text), text.size());
    }

    /// Runs "script.js" with this text; \p actions are for the program.
    ToolRun &replay(const QByteArray &text, const QStringList &options = {}, const QStringList &actions = {},
                    const QMap<QString, QString> &environment = {})
    {
        write("script.js", text);
        return replayFiles({path("script.js")}, options, actions, environment);
    }

    ToolRun &replayFiles(const QStringList &files, const QStringList &options = {}, const QStringList &actions = {},
                         const QMap<QString, QString> &environment = {})
    {
        return start(QStringList{QStringLiteral("--offscreen")} + options + files
                         + QStringList{QStringLiteral("--"), QStringLiteral(VANTLE_FAKE_PROGRAM)} + actions,
                     environment);
    }

    /// `vantle replay WORDS`.
    ToolRun &start(const QStringList &words, const QMap<QString, QString> &environment = {})
    {
        m_run = std::make_unique<ToolRun>(QStringList{QStringLiteral("replay")} + words, environment);
        return *m_run;
    }

    /// True, or the whole output as the reason why a test fails.
    testing::AssertionResult passes(const QByteArray &text, const QStringList &options = {},
                                    const QStringList &actions = {})
    {
        return endsWith(0, replay(text, options, actions));
    }

    static testing::AssertionResult endsWith(int code, ToolRun &run)
    {
        const int actual = run.exitCode();
        if (actual == code)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "exit code " << actual << "\n" << qPrintable(run.output() + run.errors());
    }

    static testing::AssertionResult says(ToolRun &run, const QString &text)
    {
        run.exitCode();
        if (run.output().contains(text))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "\"" << qPrintable(text) << "\" is not in\n"
                                           << qPrintable(run.output() + run.errors());
    }

private:
    QTemporaryDir m_directory;
    std::unique_ptr<ToolRun> m_run;
};

} // namespace VantleTest
