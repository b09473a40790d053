#include "tool/outputfile.h"
#include "tool/scriptfile.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

#include <csignal>
#include <thread>

#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Vantle::Tool;

namespace {

/// Lets no file grow beyond so many bytes: what is written then fails half way.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};

class OutputFile : public testing::Test
{
protected:
    QString in(const char *name) const { return m_directory.filePath(QLatin1String(name)); }
    QStringList files() const
    {
        return QDir(m_directory.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }
    static void put(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

private:
    QTemporaryDir m_directory;
};

const QByteArray Old = "what was there\n";

} // namespace

TEST_F(OutputFile, IsWrittenInPlaceOfWhatWasThere)
{
    EXPECT_EQ(writeOutput(in("new"), "content"), QString());
    EXPECT_EQ(contentOf(in("new")), "content");
    EXPECT_EQ(writeOutput(in("new"), "less"), QString());
    EXPECT_EQ(contentOf(in("new")), "less");
    EXPECT_EQ(files(), QStringList(QStringLiteral("new")));
}

TEST_F(OutputFile, KeepsTheModeOfTheOldOne)
{
    put(in("old"), Old);
    ASSERT_EQ(::chmod(QFile::encodeName(in("old")).constData(), 0640), 0);
    EXPECT_EQ(writeOutput(in("old"), "content"), QString());
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(in("old")).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, mode_t(0640));
}

TEST_F(OutputFile, ThatDoesNotFitLeavesTheOldOneWhole)
{
    put(in("old"), Old);
    {
        const FileSizeLimit limit(100);
        const QString error = writeOutput(in("old"), QByteArray(800, 'x'));
        EXPECT_TRUE(error.contains(in("old"))) << qPrintable(error);
        EXPECT_FALSE(writeOutput(in("new"), QByteArray(800, 'x')).isEmpty());
    }
    EXPECT_EQ(contentOf(in("old")), Old);
    EXPECT_EQ(files(), QStringList(QStringLiteral("old")));
}

TEST_F(OutputFile, ThatCannotBeReplacedIsLeftWholeToo)
{
    put(in("old"), Old);
    ASSERT_EQ(::link(QFile::encodeName(in("old")).constData(), QFile::encodeName(in("other")).constData()), 0);
    {
        const FileSizeLimit limit(100);
        EXPECT_FALSE(writeOutput(in("old"), QByteArray(800, 'x')).isEmpty());
    }
    EXPECT_EQ(contentOf(in("other")), Old);
    EXPECT_EQ(writeOutput(in("old"), "both"), QString());
    EXPECT_EQ(contentOf(in("other")), "both");
}

TEST_F(OutputFile, OnAFullDiskIsAnErrorAndLeavesTheOldOneWhole)
{
    const QByteArray disk = QFile::encodeName(in("disk"));
    ASSERT_TRUE(QDir().mkdir(in("disk")));
    if (::mount("vantle-test", disk.constData(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no file system can be mounted here";
    put(in("disk/old"), Old);
    put(in("disk/script.js"), Old);
    QFile filler(in("disk/filler"));
    ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(4096, 'f')) > 0) {
    }
    const QString error = writeOutput(in("disk/old"), QByteArray(800, 'x'));
    ScriptFile script;
    const bool isOpen = script.open(in("disk/script.js"));
    const bool isAppended = script.append(QStringLiteral("mouseClick();"));
    const QByteArray old = contentOf(in("disk/old"));
    const QByteArray oldScript = contentOf(in("disk/script.js"));
    filler.close();
    EXPECT_EQ(::umount2(disk.constData(), MNT_DETACH), 0);
    EXPECT_FALSE(error.isEmpty());
    EXPECT_EQ(old, Old);
    EXPECT_TRUE(isOpen);
    EXPECT_FALSE(isAppended);
    EXPECT_FALSE(script.errorString().isEmpty());
    EXPECT_EQ(oldScript, Old);
}

TEST_F(OutputFile, IsWrittenToWhereALinkLeads)
{
    put(in("real"), Old);
    ASSERT_TRUE(QFile::link(QStringLiteral("real"), in("link")));
    ASSERT_TRUE(QFile::link(in("nothing yet"), in("dangling")));
    EXPECT_EQ(writeOutput(in("link"), "content"), QString());
    EXPECT_EQ(writeOutput(in("dangling"), "more"), QString());
    EXPECT_TRUE(QFileInfo(in("link")).isSymLink());
    EXPECT_TRUE(QFileInfo(in("dangling")).isSymLink());
    EXPECT_EQ(contentOf(in("real")), "content");
    EXPECT_EQ(contentOf(in("nothing yet")), "more");
}

TEST_F(OutputFile, MayBeADevice)
{
    EXPECT_EQ(writeOutput(QStringLiteral("/dev/null"), "content"), QString());
    EXPECT_FALSE(writeOutput(QStringLiteral("/dev/full"), "content").isEmpty());
    struct stat status = {};
    ASSERT_EQ(::stat("/dev/null", &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

TEST_F(OutputFile, MayBeAPipe)
{
    const QByteArray pipe = QFile::encodeName(in("pipe"));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    QByteArray read;
    std::thread reader([&] { read = contentOf(in("pipe")); });
    EXPECT_EQ(writeOutput(in("pipe"), "content"), QString());
    reader.join();
    EXPECT_EQ(read, "content");
    struct stat status = {};
    ASSERT_EQ(::stat(pipe.constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(OutputFile, ThatCannotBeWrittenIsFoundAhead)
{
    put(in("old"), Old);
    EXPECT_EQ(outputError(in("old")), QString());
    EXPECT_EQ(outputError(in("new")), QString());
    EXPECT_EQ(outputError(QStringLiteral("/dev/null")), QString());
    for (const QString &wrong : {in(""), in("nowhere/new"), in("old/new"), QString(in("new") + QChar::Null + u'x')})
        EXPECT_FALSE(outputError(wrong).isEmpty()) << qPrintable(wrong);
    EXPECT_EQ(contentOf(in("old")), Old);
    EXPECT_EQ(files(), QStringList(QStringLiteral("old")));
}

TEST_F(OutputFile, HasANameWithoutNul)
{
    EXPECT_FALSE(writeOutput(in("new") + QChar::Null + QStringLiteral("x"), "content").isEmpty());
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(OutputFile, OfARecordingIsRefusedToASecondOne)
{
    put(in("script.js"), Old);
    ScriptFile first;
    ASSERT_TRUE(first.open(in("script.js")));
    ScriptFile second;
    EXPECT_FALSE(second.open(in("script.js")));
    EXPECT_TRUE(second.errorString().contains(QStringLiteral("another recording"))) << qPrintable(second.errorString());
    ASSERT_TRUE(first.append(QStringLiteral("one")));
    ScriptFile third;
    EXPECT_FALSE(third.open(in("script.js")));
    ASSERT_TRUE(first.append(QStringLiteral("two")));
    EXPECT_EQ(contentOf(in("script.js")), "one\ntwo\n");

    ScriptFile device;
    ScriptFile sameDevice;
    EXPECT_TRUE(device.open(QStringLiteral("/dev/null")));
    EXPECT_TRUE(sameDevice.open(QStringLiteral("/dev/null")));
}

TEST_F(OutputFile, OfARecordingLeavesTheOldOneWholeUntilItsFirstLineFits)
{
    put(in("script.js"), Old);
    {
        ScriptFile script;
        ASSERT_TRUE(script.open(in("script.js")));
        const FileSizeLimit limit(100);
        EXPECT_FALSE(script.append(QString(800, u'x')));
    }
    EXPECT_EQ(contentOf(in("script.js")), Old);
    EXPECT_EQ(files(), QStringList(QStringLiteral("script.js")));
}
