#include "tool/console.h"
#include "tool/inputfile.h"
#include "tool/replay/imagecheck.h"
#include "tool/replay/scriptsource.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <sys/stat.h>

using namespace Vantle::Tool;

namespace {

class InputFile : public testing::Test
{
protected:
    QString in(const char *name) const { return m_directory.filePath(QLatin1String(name)); }

private:
    QTemporaryDir m_directory;
};

} // namespace

TEST_F(InputFile, IsReadUpToItsLimit)
{
    QFile file(in("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("1234");
    file.close();
    QString error;
    EXPECT_EQ(readInput(in("file"), 4, &error), QByteArray("1234"));
    EXPECT_TRUE(error.isEmpty());
    EXPECT_FALSE(readInput(in("file"), 3, &error));
    EXPECT_TRUE(error.contains(QStringLiteral("larger"))) << qPrintable(error);
}

TEST_F(InputFile, ThatHasNoEndOrNeverBeginsIsRefused)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(in("pipe")).constData(), 0600), 0);
    const QString wrong[] = {
        QStringLiteral("/dev/zero"),      QStringLiteral("/dev/tty"), in("pipe"), in("nothing"), in("."),
        QString(in("file") + QChar::Null)};
    for (const QString &path : wrong) {
        QString error;
        EXPECT_FALSE(readInput(path, longestTextFile, &error)) << qPrintable(path);
        EXPECT_FALSE(error.isEmpty()) << qPrintable(path);
    }
    QString error;
    EXPECT_FALSE(Replay::ScriptSource::read(in("pipe"), &error));
    EXPECT_TRUE(error.contains(in("pipe"))) << qPrintable(error);
    for (const bool update : {false, true}) {
        const auto check = Replay::checkImage("found", QStringLiteral("/dev/zero"), {}, update);
        EXPECT_FALSE(check.passed);
        EXPECT_TRUE(check.message.contains(QStringLiteral("/dev/zero"))) << qPrintable(check.message);
    }
}

TEST(Terminal, IsSpokenToByTheToolAlone)
{
    EXPECT_EQ(Console::visible(QStringLiteral("plain\ttext\n\u00E4")), QStringLiteral("plain\ttext\n\u00E4"));
    EXPECT_EQ(Console::visible(QStringLiteral("a\x1b[2Jb\r\x07")), QStringLiteral("a\\x1b[2Jb\\x0d\\x07"));
    EXPECT_EQ(Console::visible(QString(QChar(0x9B)) + QChar(0x7F)), QStringLiteral("\\x9b\\x7f"));
}
