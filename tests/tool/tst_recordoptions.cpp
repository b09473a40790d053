#include "tool/arguments.h"
#include "tool/recordcommand.h"

#include <gtest/gtest.h>

using namespace Vantle::Tool;

namespace {

std::optional<RecordOptions> parsed(const QString &words, QString *error = nullptr)
{
    const Arguments arguments(recordCommand(), words.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    EXPECT_EQ(arguments.errorString(), QString()) << qPrintable(words);
    QString ignored;
    return recordOptions(arguments, error ? error : &ignored);
}

TEST(RecordOptions, haveDefaults)
{
    const auto options = parsed(QStringLiteral("-- program a b"));
    ASSERT_TRUE(options);
    EXPECT_EQ(options->file, QString());
    EXPECT_FALSE(options->keepRunning);
    EXPECT_EQ(options->launch.startLimit, std::chrono::seconds(15));
    EXPECT_EQ(options->launch.words,
              QStringList({QStringLiteral("program"), QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(options->launch.settings.debugCompression, 0);
    EXPECT_TRUE(options->launch.settings.classesWithoutCoordinates.isEmpty());
}

TEST(RecordOptions, areTakenFromTheCommandLine)
{
    const auto options = parsed(QStringLiteral("-o f.js --keep-running --start-timeout 0.25 --debug-compression=2 "
                                               "--without-coordinates A --without-coordinates B program"));
    ASSERT_TRUE(options);
    EXPECT_EQ(options->file, QStringLiteral("f.js"));
    EXPECT_TRUE(options->keepRunning);
    EXPECT_EQ(options->launch.startLimit, std::chrono::milliseconds(250));
    EXPECT_EQ(options->launch.settings.debugCompression, 2);
    EXPECT_EQ(options->launch.settings.classesWithoutCoordinates,
              QStringList({QStringLiteral("A"), QStringLiteral("B")}));
}

TEST(RecordOptions, aTimeoutIsNeverRoundedToNothing)
{
    const auto options = parsed(QStringLiteral("--start-timeout 0.0000001 p"));
    ASSERT_TRUE(options);
    EXPECT_EQ(options->launch.startLimit, std::chrono::milliseconds(1));
}

TEST(RecordOptions, valuesThatMakeNoSenseAreNamed)
{
    const char *wrong[] = {"--start-timeout 0 p", "--start-timeout -1 p", "--start-timeout nan p",
                           "--start-timeout inf p", "--start-timeout 86401 p", "--start-timeout 5s p",
                           "--start-timeout= p", "--debug-compression 3 p", "--debug-compression -1 p",
                           "--debug-compression x p", "--debug-compression= p", "--output= p",
                           "--without-coordinates= p"};
    for (const char *words : wrong) {
        QString error;
        EXPECT_FALSE(parsed(QLatin1String(words), &error)) << words;
        const QString option = QString(QLatin1String(words)).section(QLatin1Char(' '), 0, 0).section(QLatin1Char('='), 0, 0);
        EXPECT_TRUE(error.contains(option)) << qPrintable(error);
    }
}

} // namespace
