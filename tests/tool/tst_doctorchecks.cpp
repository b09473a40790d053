#include "tool/doctorchecks.h"
#include "tool/doctorcommand.h"

#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

using namespace Vantle::Tool;

namespace {

/// Sets a variable for as long as it lives.
class Variable
{
public:
    Variable(const char *name, const QByteArray &value)
        : m_name(name), m_before(qgetenv(name)), m_was(qEnvironmentVariableIsSet(name))
    {
        qputenv(name, value);
    }
    ~Variable()
    {
        if (m_was)
            qputenv(m_name, m_before);
        else
            qunsetenv(m_name);
    }
    Q_DISABLE_COPY_MOVE(Variable)

private:
    const char *m_name;
    QByteArray m_before;
    bool m_was;
};

class DoctorChecks : public testing::Test
{
protected:
    DoctorChecks() : installation(Installation::ofExecutable(directory.filePath(QStringLiteral("bin/vantle")))) {}

    void makeFile(const QString &path, const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir directory;
    Installation installation;
};

TEST_F(DoctorChecks, theInstallationFollowsFromThePlaceOfTheExecutable)
{
    EXPECT_EQ(installation.prefix, directory.path());
    EXPECT_TRUE(installation.pluginRoot.startsWith(directory.path() + QStringLiteral("/lib")));
    EXPECT_TRUE(installation.plugin.endsWith(QStringLiteral("/vantle/plugins/generic/libvantle.so")));
    EXPECT_TRUE(installation.probe.endsWith(QStringLiteral("/vantle/vantle-probe")));
}

TEST_F(DoctorChecks, anEmptyPrefixFailsWithAWayOut)
{
    for (const Check &check : {checkPrefix(installation), checkPluginFile(installation),
                               checkPluginMetaData(installation), checkPluginLibraries(installation)}) {
        EXPECT_EQ(check.status, Check::Failed) << qPrintable(check.subject);
        EXPECT_FALSE(check.finding.isEmpty()) << qPrintable(check.subject);
        EXPECT_FALSE(check.wayOut.isEmpty()) << qPrintable(check.subject);
    }
}

TEST_F(DoctorChecks, aFileThatIsNoPluginIsFound)
{
    makeFile(installation.plugin, "not a library");
    EXPECT_EQ(checkPrefix(installation).status, Check::Ok);
    EXPECT_EQ(checkPluginFile(installation).status, Check::Ok);
    EXPECT_EQ(checkPluginMetaData(installation).status, Check::Failed);
}

TEST_F(DoctorChecks, librariesThatAreMissingAreNamed)
{
    makeFile(installation.plugin, "not a library");
    makeFile(installation.probe, "#!/bin/sh\necho \"$2: libmissing.so.1: cannot open\"\nexit 1\n");
    QFile::setPermissions(installation.probe, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const Check check = checkPluginLibraries(installation);
    EXPECT_EQ(check.status, Check::Failed);
    EXPECT_EQ(check.finding, installation.plugin + QStringLiteral(": libmissing.so.1: cannot open"));
}

TEST_F(DoctorChecks, aProbeThatCrashesIsAFailure)
{
    makeFile(installation.probe, "#!/bin/sh\nkill -SEGV $$\n");
    QFile::setPermissions(installation.probe, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(checkPluginLibraries(installation).status, Check::Failed);
}

TEST_F(DoctorChecks, aProbeThatEndsBeforeTheAgentReportsFailsTheSelfTest)
{
    makeFile(installation.probe, "#!/bin/sh\nexit 4\n");
    QFile::setPermissions(installation.probe, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const Check check = checkAgent(installation);
    EXPECT_EQ(check.status, Check::Failed);
    EXPECT_TRUE(check.finding.contains(QStringLiteral("exit code 4"))) << qPrintable(check.finding);
}

TEST_F(DoctorChecks, aMissingProbeFailsTheSelfTest)
{
    const Check check = checkAgent(installation);
    EXPECT_EQ(check.status, Check::Failed);
    EXPECT_TRUE(check.finding.contains(installation.probe)) << qPrintable(check.finding);
}

TEST_F(DoctorChecks, theRunningQtIsGoodEnough)
{
    const Check check = checkQtVersion();
    EXPECT_EQ(check.status, Check::Ok);
    EXPECT_TRUE(check.finding.contains(QLatin1String(qVersion())));
}

TEST_F(DoctorChecks, platformPluginsAreListedAndSearchedInThePluginPath)
{
    makeFile(directory.filePath(QStringLiteral("platforms/libqhouse.so")), "");
    const Variable path("QT_PLUGIN_PATH", QFile::encodeName(directory.path()));
    const Check check = checkPlatformPlugins();
    EXPECT_EQ(check.status, Check::Ok);
    EXPECT_TRUE(check.finding.startsWith(QStringLiteral("house, "))) << qPrintable(check.finding);
    EXPECT_TRUE(check.finding.contains(QStringLiteral("offscreen")));
}

TEST_F(DoctorChecks, aMissingDisplayIsOnlyANote)
{
    const Variable wayland("WAYLAND_DISPLAY", "");
    {
        const Variable x11("DISPLAY", "");
        EXPECT_EQ(checkDisplay().status, Check::Note);
    }
    const Variable x11("DISPLAY", ":7");
    EXPECT_EQ(checkDisplay().status, Check::Ok);
    EXPECT_EQ(checkDisplay().finding, QStringLiteral("DISPLAY is :7"));
}

TEST_F(DoctorChecks, anExtensionPathHasToBeADirectory)
{
    {
        const Variable path("VANTLE_QTQUICK_EXTENSION_PATH", QFile::encodeName(directory.path()));
        EXPECT_EQ(checkExtensionPath().status, Check::Ok);
    }
    const Variable path("VANTLE_QTQUICK_EXTENSION_PATH", "/nowhere/at/all");
    EXPECT_EQ(checkExtensionPath().status, Check::Failed);
    EXPECT_FALSE(checkExtensionPath().wayOut.isEmpty());
}

TEST_F(DoctorChecks, aSocketCanBeMade)
{
    EXPECT_EQ(checkSocketDirectory().status, Check::Ok);
}

TEST(CheckLine, showsTheStateFirstAndTheWayOutLast)
{
    EXPECT_EQ(checkLine({Check::Ok, QStringLiteral("a"), QStringLiteral("b"), QString()}), QStringLiteral("ok     a: b\n"));
    EXPECT_EQ(checkLine({Check::Note, QStringLiteral("a"), QStringLiteral("b"), QString()}),
              QStringLiteral("note   a: b\n"));
    EXPECT_EQ(checkLine({Check::Failed, QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}),
              QStringLiteral("FAILED a: b -- c\n"));
}

} // namespace
