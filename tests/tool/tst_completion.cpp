#include "tool/commands.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

using namespace Vantle::Tool;

namespace {

QString contentOf(const char *path)
{
    QFile file{QLatin1String(path)};
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

/// What bash offers for the last of \p words in the folder \p directory.
QStringList offeredByBash(const QStringList &words, const QString &directory = QDir::currentPath())
{
    QProcess bash;
    bash.setWorkingDirectory(directory);
    const QString script = QStringLiteral("source \"$1\"; shift; COMP_WORDS=(vantle \"$@\"); COMP_CWORD=$#; _vantle; "
                                          "printf '%s\\n' \"${COMPREPLY[@]}\"");
    bash.setProcessChannelMode(QProcess::MergedChannels);
    bash.start(QStringLiteral("bash"),
               QStringList({QStringLiteral("--norc"), QStringLiteral("-c"), script, QStringLiteral("bash"),
                            QStringLiteral(VANTLE_BASH_COMPLETION)})
                   + words);
    EXPECT_TRUE(bash.waitForFinished());
    return QString::fromUtf8(bash.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList allOptions(const Command &command)
{
    QStringList options{QStringLiteral("-h"), QStringLiteral("--help")};
    for (const Option &option : command.options) {
        if (!option.shortName.isNull())
            options.append(QLatin1Char('-') + QString(option.shortName));
        options.append(QStringLiteral("--") + option.longName);
    }
    return options;
}

TEST(BashCompletion, offersEveryCommand)
{
    QStringList expected{QStringLiteral("--help"), QStringLiteral("--version")};
    for (const Command &command : commands())
        expected.append(command.name);
    QStringList offered = offeredByBash({QString()});
    offered.sort();
    expected.sort();
    EXPECT_TRUE(offered == expected) << qPrintable(offered.join(QLatin1Char(' ')));
}

TEST(BashCompletion, offersExactlyTheOptionsOfACommand)
{
    for (const Command &command : commands()) {
        QStringList expected = allOptions(command);
        if (command.takesProgram)
            expected.append(QStringLiteral("--"));
        QStringList offered = offeredByBash({command.name, QStringLiteral("-")});
        offered.sort();
        expected.sort();
        EXPECT_TRUE(offered == expected) << qPrintable(offered.join(QLatin1Char(' ')));
    }
}

TEST(BashCompletion, offersValuesWhereTheyAreKnown)
{
    const QString record = QStringLiteral("record");
    const QStringList levels{QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")};
    EXPECT_TRUE(offeredByBash({record, QStringLiteral("--debug-compression"), QString()}) == levels);
    EXPECT_TRUE(offeredByBash({record, QStringLiteral("--start-timeout"), QString()}).isEmpty());
}

// In a terminal bash takes words apart at "=", unless it has been told not to.
TEST(BashCompletion, offersFilesAndFoldersAsValues)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile(folder.filePath(QStringLiteral("file-a"))).open(QIODevice::WriteOnly));
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("file-b")));
    const QString begun = QStringLiteral("fil");
    for (const Command &command : commands()) {
        for (const Option &option : command.options) {
            const QString name = QStringLiteral("--") + option.longName;
            if (option.valueName != QLatin1String("FILE") && option.valueName != QLatin1String("DIR"))
                continue;
            QStringList expected{QStringLiteral("file-b")};
            if (option.valueName == QLatin1String("FILE"))
                expected.prepend(QStringLiteral("file-a"));
            const auto offered = [&](const QStringList &words) {
                QStringList names = offeredByBash(QStringList(command.name) + words, folder.path());
                names.sort();
                return names;
            };
            EXPECT_EQ(offered({name, begun}), expected) << qPrintable(command.name + name);
            EXPECT_EQ(offered({name, QStringLiteral("="), begun}), expected) << qPrintable(command.name + name);
            EXPECT_EQ(offered({name, QStringLiteral("=")}), expected) << qPrintable(command.name + name);
            EXPECT_EQ(offered({name + QLatin1Char('=') + begun}),
                      expected.replaceInStrings(QStringLiteral("file"), name + QStringLiteral("=file")))
                << qPrintable(command.name + name);
        }
    }
}

TEST(BashCompletion, knowsWhichOptionsTakeAValue)
{
    for (const Command &command : commands()) {
        for (const Option &option : command.options) {
            const QString name = QStringLiteral("--") + option.longName;
            const QStringList offered = offeredByBash({command.name, name, QStringLiteral("--hel")});
            // What follows an option without value is the next option.
            EXPECT_EQ(offered.contains(QStringLiteral("--help")), option.valueName.isEmpty())
                << qPrintable(command.name + name);
            EXPECT_EQ(offeredByBash({command.name, name, QStringLiteral("x"), QStringLiteral("--hel")})
                          .contains(QStringLiteral("--help")),
                      !option.valueName.isEmpty() || !command.takesProgram || command.takesFiles)
                << qPrintable(command.name + name);
        }
    }
}

TEST(BashCompletion, leavesTheProgramsOwnArgumentsAlone)
{
    const QString record = QStringLiteral("record");
    const QString begun = QStringLiteral("--keep");
    const QStringList offered = offeredByBash({record, QStringLiteral("--"), QStringLiteral("program"), begun});
    EXPECT_TRUE(offered.isEmpty()) << qPrintable(offered.join(QLatin1Char(' ')));
    EXPECT_TRUE(offeredByBash({record, QStringLiteral("-o"), QStringLiteral("f"), begun})
                == QStringList(QStringLiteral("--keep-running")));
}

TEST(BashCompletion, offersProgramsBehindTheSeparator)
{
    EXPECT_TRUE(offeredByBash({QStringLiteral("record"), QStringLiteral("--"), QStringLiteral("bas")})
                    .contains(QStringLiteral("bash")));
}

TEST(BashCompletion, offersScriptsAndOptionsUpToTheProgram)
{
    const QString replay = QStringLiteral("replay");
    const QString begun = QStringLiteral("--fresh");
    EXPECT_TRUE(offeredByBash({replay, QStringLiteral("a.js"), begun})
                == QStringList(QStringLiteral("--fresh-settings")));
    EXPECT_TRUE(offeredByBash({replay, QStringLiteral("a.js"), QStringLiteral("--"), QStringLiteral("bas")})
                    .contains(QStringLiteral("bash")));
    EXPECT_TRUE(
        offeredByBash({replay, QStringLiteral("a.js"), QStringLiteral("--"), QStringLiteral("x"), begun}).isEmpty());
    EXPECT_TRUE(offeredByBash({replay, QStringLiteral("--workers"), QString()}).isEmpty());
}

TEST(ZshCompletion, knowsEveryCommandAndOption)
{
    const QString script = contentOf(VANTLE_ZSH_COMPLETION);
    EXPECT_TRUE(script.startsWith(QStringLiteral("#compdef vantle\n")));
    for (const Command &command : commands()) {
        EXPECT_TRUE(script.contains(QStringLiteral("%1\\:").arg(command.name))) << qPrintable(command.name);
        const QString begin = QStringLiteral("\n    %1)\n").arg(command.name);
        const QString block = script.section(begin, 1).section(QStringLiteral(";;"), 0, 0);
        for (const QString &option : allOptions(command))
            EXPECT_TRUE(block.contains(option)) << qPrintable(option);
        EXPECT_EQ(block.contains(QStringLiteral("1:program:")), command.takesProgram && !command.takesFiles);
        EXPECT_EQ(block.contains(QStringLiteral("*:script:")), command.takesFiles);
    }
    EXPECT_TRUE(script.contains(QStringLiteral("--version")));
}

} // namespace
