#include "tool/arguments.h"
#include "tool/programoptions.h"
#include "tool/recordcommand.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

using namespace Vantle;
using namespace Vantle::Tool;

namespace {

class ProgramOptions : public testing::Test
{
protected:
    /// What the agent will be told; the reason in error() if the words are wrong.
    std::optional<Protocol::HelloResult> settings(const QStringList &words)
    {
        const Arguments arguments(recordCommand(), words + QStringList{QStringLiteral("program")});
        EXPECT_EQ(arguments.errorString(), QString());
        m_error.clear();
        Protocol::HelloResult result;
        return readAgentOptions(arguments, &result, &m_error) ? std::optional(result) : std::nullopt;
    }
    QString namesFile(const QByteArray &content)
    {
        QFile file(m_directory.filePath(QStringLiteral("names.json")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    /// The complaint about a names file with that content.
    QString complaintAbout(const QByteArray &content)
    {
        EXPECT_FALSE(settings({QStringLiteral("--names"), namesFile(content)})) << content.constData();
        EXPECT_TRUE(m_error.contains(QStringLiteral("names.json"))) << qPrintable(m_error);
        return m_error;
    }
    QString directory() const { return m_directory.path(); }
    const QString &error() const { return m_error; }

private:
    QTemporaryDir m_directory;
    QString m_error;
};

} // namespace

TEST_F(ProgramOptions, AreNothingByDefault)
{
    const auto none = settings({});
    ASSERT_TRUE(none);
    EXPECT_TRUE(none->extensionDirectories.isEmpty());
    EXPECT_TRUE(none->namesFile.isEmpty());
}

TEST_F(ProgramOptions, GoToTheAgentAsFullPathsInTheirOrder)
{
    const QString names = namesFile("{\"a\": \"Window\"}");
    const QDir here;
    const auto result = settings({QStringLiteral("--extensions"), here.relativeFilePath(directory()),
                                  QStringLiteral("--extensions=/"), QStringLiteral("--names"),
                                  here.relativeFilePath(names)});
    ASSERT_TRUE(result) << qPrintable(error());
    ASSERT_EQ(result->extensionDirectories.size(), 2);
    EXPECT_TRUE(QDir::isAbsolutePath(result->extensionDirectories.first()));
    EXPECT_EQ(QDir(result->extensionDirectories.first()), QDir(directory()));
    EXPECT_EQ(result->extensionDirectories.last(), QStringLiteral("/"));
    EXPECT_TRUE(QDir::isAbsolutePath(result->namesFile));
    EXPECT_TRUE(QFile::exists(result->namesFile));
}

TEST_F(ProgramOptions, NameTheDirectoryThatIsNotThere)
{
    EXPECT_FALSE(settings({QStringLiteral("--extensions"), QStringLiteral("/nowhere/at/all")}));
    EXPECT_TRUE(error().contains(QStringLiteral("\"/nowhere/at/all\""))) << qPrintable(error());
    EXPECT_FALSE(settings({QStringLiteral("--extensions="), QStringLiteral("--extensions=/")}));
    EXPECT_TRUE(error().contains(QStringLiteral("--extensions"))) << qPrintable(error());
}

TEST_F(ProgramOptions, NameTheFileThatIsNoDirectory)
{
    const QString file = namesFile("{}");
    EXPECT_FALSE(settings({QStringLiteral("--extensions"), file}));
    EXPECT_TRUE(error().contains(file) && error().contains(QStringLiteral("no directory"))) << qPrintable(error());
}

TEST_F(ProgramOptions, SayWhyANamesFileCannotBeRead)
{
    EXPECT_FALSE(settings({QStringLiteral("--names"), QStringLiteral("/nowhere/names.json")}));
    EXPECT_TRUE(error().contains(QStringLiteral("/nowhere/names.json"))) << qPrintable(error());
    EXPECT_FALSE(settings({QStringLiteral("--names"), directory()}));
    EXPECT_FALSE(settings({QStringLiteral("--names=")}));
    EXPECT_TRUE(error().contains(QStringLiteral("--names"))) << qPrintable(error());
}

TEST_F(ProgramOptions, SayWhereANamesFileIsWrong)
{
    EXPECT_TRUE(complaintAbout("{\n  \"a\": \"Window\",\n  oops\n}").contains(QStringLiteral("line 3")));
    EXPECT_TRUE(complaintAbout("").contains(QStringLiteral("no JSON")));
    EXPECT_TRUE(complaintAbout("[]").contains(QStringLiteral("object")));
    EXPECT_TRUE(complaintAbout("{\"a\": \"Window\", \"b\": 1}").contains(QStringLiteral("\"b\"")));
}
