#include "tool/scriptfile.h"
#include "tool/scriptwriter.h"
#include "tool/signalnames.h"

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <QtCore/QTimeZone>

using namespace Vantle::Tool;

namespace {

class ScriptWriting : public testing::Test
{
protected:
    QString path() const { return directory.filePath(QStringLiteral("script.js")); }

    QByteArray content() const
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    void writeOld(const QByteArray &text) const
    {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QTemporaryDir directory;
};

TEST_F(ScriptWriting, openingChangesNothing)
{
    writeOld("old\n");
    {
        ScriptFile file;
        EXPECT_TRUE(file.open(path()));
    }
    EXPECT_EQ(content(), "old\n");
}

TEST_F(ScriptWriting, theFirstLineReplacesTheOldContent)
{
    writeOld("old and long\n");
    ScriptFile file;
    ASSERT_TRUE(file.open(path()));
    EXPECT_TRUE(file.append(QStringLiteral("ä")));
    EXPECT_EQ(content(), "\xc3\xa4\n");
    EXPECT_TRUE(file.append(QStringLiteral("b")));
    EXPECT_EQ(content(), "\xc3\xa4\nb\n");
}

TEST_F(ScriptWriting, aNewFileWithoutALineGoesAgain)
{
    {
        ScriptFile file;
        ASSERT_TRUE(file.open(path()));
        EXPECT_TRUE(QFile::exists(path()));
    }
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(ScriptWriting, aNewFileWithALineStays)
{
    {
        ScriptFile file;
        ASSERT_TRUE(file.open(path()));
        EXPECT_TRUE(file.append(QStringLiteral("x")));
    }
    EXPECT_EQ(content(), "x\n");
}

TEST_F(ScriptWriting, aDirectoryIsNoScript)
{
    ScriptFile file;
    EXPECT_FALSE(file.open(directory.path()));
    EXPECT_TRUE(file.errorString().startsWith(QStringLiteral("cannot write \"%1\": ").arg(directory.path())));
}

TEST_F(ScriptWriting, aDeviceThatCannotBeSynchronisedIsWritten)
{
    ScriptFile file;
    ASSERT_TRUE(file.open(QStringLiteral("/dev/null")));
    EXPECT_TRUE(file.append(QStringLiteral("x"))) << qPrintable(file.errorString());
}

TEST_F(ScriptWriting, theHeadNamesTheProgramAndTheTimeWithItsZone)
{
    ScriptWriter writer;
    ASSERT_TRUE(writer.openFile(path()));
    const QDateTime time(QDate(2024, 2, 29), QTime(1, 2, 3), QTimeZone(3600));
    writer.begin({QStringLiteral("/bin/a b"), QStringLiteral("-x"), QStringLiteral("line\nfeed")}, time);
    EXPECT_EQ(content(), "// Recorded by vantle 0.1.0 on 2024-02-29T01:02:03+01:00\n"
                         "// Program: \"/bin/a b\" -x \"line\\nfeed\"\n");
}

TEST_F(ScriptWriting, aRecordingHasOneEndAndOnlyIfItBegan)
{
    ScriptWriter writer;
    ASSERT_TRUE(writer.openFile(path()));
    writer.end(QStringLiteral("too early"));
    EXPECT_EQ(content(), "");
    writer.begin({QStringLiteral("p")}, QDateTime::currentDateTime());
    writer.end(QStringLiteral("first"));
    writer.end(QStringLiteral("second"));
    EXPECT_TRUE(content().endsWith("// Program: p\n// first\n"));
}

TEST_F(ScriptWriting, aStatementThatIsNoneIsNotCounted)
{
    ScriptWriter writer;
    writer.begin({QStringLiteral("p")}, QDateTime::currentDateTime());
    EXPECT_TRUE(writer.add({QStringLiteral("f"), QStringLiteral("o"), {}, QString()}));
    EXPECT_FALSE(writer.add({QStringLiteral("f f"), QStringLiteral("o"), {}, QString()}));
    EXPECT_EQ(writer.count(), 1);
    EXPECT_FALSE(writer.hasFile());
    EXPECT_EQ(writer.errorString(), QString());
}

TEST_F(ScriptWriting, theFirstFailureIsKept)
{
    ScriptWriter writer;
    ASSERT_TRUE(writer.openFile(QStringLiteral("/dev/full")));
    writer.begin({QStringLiteral("p")}, QDateTime::currentDateTime());
    EXPECT_TRUE(writer.errorString().startsWith(QStringLiteral("cannot write \"/dev/full\": ")));
}

TEST(SignalText, namesTheSignalsThatHaveNames)
{
    EXPECT_EQ(signalText(9), QStringLiteral("signal 9 (SIGKILL)"));
    EXPECT_EQ(signalText(11), QStringLiteral("signal 11 (SIGSEGV)"));
    EXPECT_EQ(signalText(64), QStringLiteral("signal 64"));
    EXPECT_EQ(signalText(0), QStringLiteral("signal 0"));
}

} // namespace
