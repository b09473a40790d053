#include "tool/commands.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QProcess>

using namespace Vantle::Tool;

namespace {

QString contentOf(const char *path)
{
    QFile file{QLatin1String(path)};
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll());
}

/// What bash offers for the last of \p words.
QStringList offeredByBash(const QStringList &words)
{
    QProcess bash;
    const QString script = QStringLiteral("source \"$1\"; shift; COMP_WORDS=(vantle \"$@\"); COMP_CWORD=$#; _vantle; "
                                          "printf '%s\\n' \"${COMPREPLY[@]}\"");
    bash.setProcessChannelMode(QProcess::MergedChannels);
    bash.start(QStringLiteral("bash"), QStringList({QStringLiteral("--norc"), QStringLiteral("-c"), script,
                                                    QStringLiteral("bash"), QStringLiteral(VANTLE_BASH_COMPLETION)})
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
    EXPECT_TRUE(offeredByBash({replay, QStringLiteral("a.js"), begun}) == QStringList(QStringLiteral("--fresh-settings")));
    EXPECT_TRUE(offeredByBash({replay, QStringLiteral("a.js"), QStringLiteral("--"), QStringLiteral("bas")})
                    .contains(QStringLiteral("bash")));
    EXPECT_TRUE(offeredByBash({replay, QStringLiteral("a.js"), QStringLiteral("--"), QStringLiteral("x"), begun}).isEmpty());
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
