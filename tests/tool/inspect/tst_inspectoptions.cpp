#include "tool/arguments.h"
#include "tool/inspect/inspectcommand.h"

#include <gtest/gtest.h>

using namespace Vantle::Tool;
using namespace Vantle::Tool::Inspect;

namespace {

std::optional<InspectOptions> parsed(const QString &words, QString *error = nullptr)
{
    const Arguments arguments(inspectCommand(), words.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    EXPECT_EQ(arguments.errorString(), QString()) << qPrintable(words);
    QString ignored;
    return inspectOptions(arguments, error ? error : &ignored);
}

} // namespace

TEST(InspectOptions, ShowTheTreeUnlessTheySayOtherwise)
{
    const auto options = parsed(QStringLiteral("-- program --name x"));
    ASSERT_TRUE(options);
    EXPECT_EQ(options->subject, InspectOptions::Tree);
    EXPECT_FALSE(options->asJson);
    EXPECT_EQ(options->limit, std::chrono::seconds(10));
    EXPECT_EQ(options->launch.startLimit, std::chrono::seconds(15));
    EXPECT_EQ(options->launch.words.size(), 3);
    EXPECT_FALSE(options->launch.settings.record);
}

TEST(InspectOptions, AreTakenFromTheCommandLine)
{
    const auto options = parsed(QStringLiteral("--name A:nth(2) --json --timeout 0.5 --start-timeout 3 program"));
    ASSERT_TRUE(options);
    EXPECT_EQ(options->subject, InspectOptions::OneObject);
    EXPECT_EQ(options->name, QStringLiteral("A:nth(2)"));
    EXPECT_TRUE(options->asJson);
    EXPECT_EQ(options->limit, std::chrono::milliseconds(500));
    EXPECT_EQ(options->launch.startLimit, std::chrono::seconds(3));
    EXPECT_EQ(parsed(QStringLiteral("--functions p"))->subject, InspectOptions::Functions);
    EXPECT_EQ(parsed(QStringLiteral("--check-names p"))->subject, InspectOptions::Names);
}

TEST(InspectOptions, ValuesThatMakeNoSenseAreNamed)
{
    for (const char *words :
         {"--name= p", "--timeout 0 p", "--timeout x p", "--start-timeout -1 p", "--extensions /nowhere/at/all p",
          "--names /nowhere/names.json p", "--functions --check-names p", "--name a --functions p"}) {
        QString error;
        EXPECT_FALSE(parsed(QLatin1String(words), &error)) << words;
        EXPECT_FALSE(error.isEmpty()) << words;
    }
}
