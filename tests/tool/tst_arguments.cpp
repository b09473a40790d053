#include "tool/arguments.h"

#include <gtest/gtest.h>

using namespace Vantle::Tool;

namespace {

const QString file = QStringLiteral("file");
const QString name = QStringLiteral("name");
const QString quick = QStringLiteral("quick");

Command someCommand(bool takesProgram)
{
    Command command;
    command.options = {
        {QLatin1Char('f'), file, QStringLiteral("FILE"), QString()},
        {QChar(), name, QStringLiteral("NAME"), QString(), true},
        {QLatin1Char('q'), quick, QString(), QString()},
    };
    command.takesProgram = takesProgram;
    return command;
}

Arguments parsed(const QString &words, bool takesProgram = true)
{
    return Arguments(someCommand(takesProgram), words.split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

TEST(Arguments, aValueMayStandBehindItsOptionOrBeAttached)
{
    for (const char *words : {"-f x -- p", "-fx -- p", "--file x -- p", "--file=x -- p"}) {
        const Arguments arguments = parsed(QLatin1String(words));
        EXPECT_EQ(arguments.errorString(), QString()) << words;
        EXPECT_EQ(arguments.value(file), QStringLiteral("x")) << words;
        EXPECT_EQ(arguments.programWords(), QStringList(QStringLiteral("p"))) << words;
    }
}

TEST(Arguments, aValueMayHoldAnEqualsSignOrBeEmptyOrLookLikeAnOption)
{
    EXPECT_EQ(parsed(QStringLiteral("--file=a=b p")).value(file), QStringLiteral("a=b"));
    const Arguments empty = parsed(QStringLiteral("--file= p"));
    EXPECT_TRUE(empty.has(file));
    EXPECT_EQ(empty.value(file), QString());
    EXPECT_EQ(parsed(QStringLiteral("--file -x p")).value(file), QStringLiteral("-x"));
}

TEST(Arguments, whatFollowsTheProgramIsItsOwn)
{
    const QStringList expected{QStringLiteral("p"), QStringLiteral("-q"), QStringLiteral("--"), QStringLiteral("--help")};
    for (const char *words : {"-q -- p -q -- --help", "-q p -q -- --help"}) {
        const Arguments arguments = parsed(QLatin1String(words));
        EXPECT_EQ(arguments.errorString(), QString());
        EXPECT_FALSE(arguments.wantsHelp());
        EXPECT_EQ(arguments.programWords(), expected) << words;
    }
}

TEST(Arguments, filesStandAheadOfTheProgramAmongTheOptions)
{
    Command command = someCommand(true);
    command.takesFiles = true;
    const auto read = [&](const char *words) {
        return Arguments(command, QString(QLatin1String(words)).split(QLatin1Char(' '), Qt::SkipEmptyParts));
    };
    const Arguments arguments = read("one -q two --file=x three -- p -q four");
    EXPECT_EQ(arguments.errorString(), QString());
    EXPECT_EQ(arguments.fileWords().join(QLatin1Char(' ')), QStringLiteral("one two three"));
    EXPECT_EQ(arguments.programWords().join(QLatin1Char(' ')), QStringLiteral("p -q four"));
    EXPECT_TRUE(arguments.has(quick));

    EXPECT_EQ(read("one two").errorString(), QString());
    EXPECT_TRUE(read("one two").programWords().isEmpty());
    EXPECT_EQ(read("-q -- p").errorString(), QStringLiteral("the name of a file is missing ahead of \"--\""));
    EXPECT_EQ(read("one --nonsense").errorString(), QStringLiteral("unknown option \"--nonsense\""));
    EXPECT_TRUE(read("one --help").wantsHelp());
}

TEST(Arguments, aProgramMayBeginWithADashBehindTheSeparator)
{
    EXPECT_EQ(parsed(QStringLiteral("-- -p")).programWords(), QStringList(QStringLiteral("-p")));
    EXPECT_EQ(parsed(QStringLiteral("-")).programWords(), QStringList(QStringLiteral("-")));
}

TEST(Arguments, aRepeatedOptionKeepsAllValuesInOrder)
{
    const Arguments arguments = parsed(QStringLiteral("--name b --name=a p"));
    EXPECT_EQ(arguments.values(name), QStringList({QStringLiteral("b"), QStringLiteral("a")}));
    EXPECT_FALSE(arguments.has(file));
    EXPECT_EQ(arguments.value(file), QString());
    EXPECT_TRUE(arguments.values(file).isEmpty());
}

TEST(Arguments, helpWinsOverEverythingThatFollows)
{
    EXPECT_TRUE(parsed(QStringLiteral("--help")).wantsHelp());
    EXPECT_TRUE(parsed(QStringLiteral("-q -h --unknown")).wantsHelp());
    EXPECT_EQ(parsed(QStringLiteral("-h --unknown")).errorString(), QString());
}

TEST(Arguments, mistakesAreNamed)
{
    struct Mistake
    {
        const char *words;
        const char *error;
    };
    const Mistake mistakes[] = {
        {"", "the program to start is missing"},
        {"--", "the program to start is missing"},
        {"-q", "the program to start is missing"},
        {"--unknown p", "unknown option \"--unknown\""},
        {"--unknown=x p", "unknown option \"--unknown\""},
        {"-x p", "unknown option \"-x\""},
        {"--f p", "unknown option \"--f\""},
        {"--file", "option \"--file\" needs a value: FILE"},
        {"-f", "option \"-f\" needs a value: FILE"},
        {"-f -- p", "option \"-f\" needs a value: FILE"},
        {"--quick=yes p", "option \"--quick\" takes no value"},
        {"-qf p", "option \"-q\" takes no value"},
        {"-f a --file b p", "option \"--file\" was given twice"},
        {"-q -q p", "option \"-q\" was given twice"},
    };
    for (const Mistake &mistake : mistakes)
        EXPECT_EQ(parsed(QLatin1String(mistake.words)).errorString(), QLatin1String(mistake.error)) << mistake.words;
}

TEST(Arguments, anEmptyProgramIsMissing)
{
    const Arguments arguments(someCommand(true), {QStringLiteral("--"), QString()});
    EXPECT_EQ(arguments.errorString(), QStringLiteral("the program to start is missing"));
}

TEST(Arguments, aCommandWithoutProgramTakesNoFurtherWords)
{
    EXPECT_EQ(parsed(QStringLiteral("-q"), false).errorString(), QString());
    EXPECT_EQ(parsed(QStringLiteral("-q x"), false).errorString(), QStringLiteral("unexpected argument \"x\""));
    EXPECT_EQ(parsed(QStringLiteral("-- x"), false).errorString(), QStringLiteral("unexpected argument \"x\""));
}

} // namespace
