#include "tool/commands.h"
#include "tool/helptext.h"

#include <gtest/gtest.h>

#include <QtCore/QSet>

using namespace Vantle::Tool;

namespace {

TEST(HelpText, theGeneralHelpListsEveryCommand)
{
    const QString help = generalHelp(commands());
    ASSERT_FALSE(commands().isEmpty());
    for (const Command &command : commands()) {
        EXPECT_TRUE(help.contains(QStringLiteral("\n  %1 ").arg(command.name))) << qPrintable(command.name);
        EXPECT_TRUE(help.contains(command.summary));
    }
}

TEST(HelpText, theHelpOfACommandListsEveryOptionWithItsValue)
{
    for (const Command &command : commands()) {
        const QString help = commandHelp(command);
        for (const Option &option : command.options) {
            const QString shown = QStringLiteral("--") + option.longName
                + (option.valueName.isEmpty() ? QString() : QLatin1Char(' ') + option.valueName);
            EXPECT_TRUE(help.contains(shown + QLatin1Char('\n'))) << qPrintable(shown);
            EXPECT_FALSE(option.help.isEmpty()) << qPrintable(shown);
        }
        EXPECT_TRUE(help.contains(QStringLiteral("-h, --help\n")));
    }
}

TEST(HelpText, everyCommandHasAnExampleAndSomethingToRun)
{
    for (const Command &command : commands()) {
        EXPECT_FALSE(command.examples.isEmpty()) << qPrintable(command.name);
        EXPECT_NE(command.run, nullptr) << qPrintable(command.name);
        for (const QString &example : command.examples)
            EXPECT_TRUE(example.contains(QStringLiteral("vantle %1").arg(command.name))) << qPrintable(example);
    }
}

TEST(HelpText, fitsIntoEightyColumns)
{
    QStringList texts{generalHelp(commands())};
    for (const Command &command : commands())
        texts.append(commandHelp(command));
    for (const QString &text : texts) {
        for (const QString &line : text.split(QLatin1Char('\n')))
            EXPECT_LE(line.size(), 80) << qPrintable(line);
    }
}

TEST(HelpText, namesOfCommandsAndOptionsAreUnique)
{
    QSet<QString> names;
    for (const Command &command : commands()) {
        EXPECT_FALSE(names.contains(command.name));
        names.insert(command.name);
        QSet<QString> options{QStringLiteral("help"), QStringLiteral("h")};
        for (const Option &option : command.options) {
            EXPECT_FALSE(options.contains(option.longName)) << qPrintable(option.longName);
            options.insert(option.longName);
            if (option.shortName.isNull())
                continue;
            EXPECT_FALSE(options.contains(option.shortName)) << qPrintable(option.longName);
            options.insert(option.shortName);
        }
    }
}

} // namespace
