#include "agent/environment.h"

#include "protocol/endpoint.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QTemporaryDir>

#include <optional>

using namespace Vantle;
using namespace Vantle::Agent;

namespace {

constexpr char GenericPlugins[] = "QT_QPA_GENERIC_PLUGINS";
constexpr char PluginPath[] = "QT_PLUGIN_PATH";

/// Gives the environment back as it was.
class Environment : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const char *variable : variables) {
            m_before.append(qEnvironmentVariableIsSet(variable) ? std::optional(qgetenv(variable)) : std::nullopt);
            qunsetenv(variable);
        }
    }
    void TearDown() override
    {
        for (qsizetype i = 0; i < m_before.size(); ++i) {
            if (m_before.at(i))
                qputenv(variables[i], *m_before.at(i));
            else
                qunsetenv(variables[i]);
        }
    }

    /// Where the plugin would have to be for Qt to find what is in this program.
    static QString ownDirectory()
    {
        return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/.."));
    }

    static void invite()
    {
        qputenv(Protocol::Variable::socket, "/run/vantle/socket");
        qputenv(Protocol::Variable::token, "secret");
    }

private:
    static constexpr const char *variables[] = {GenericPlugins, PluginPath, Protocol::Variable::socket,
                                                Protocol::Variable::token};
    QList<std::optional<QByteArray>> m_before;
};

} // namespace

TEST(WithoutEntry, TakesTheEntryOutWhereverItStands)
{
    EXPECT_EQ(withoutEntry("vantle,evdevkeyboard,tslib", ',', "vantle"), "evdevkeyboard,tslib");
    EXPECT_EQ(withoutEntry("evdevkeyboard,vantle,tslib", ',', "vantle"), "evdevkeyboard,tslib");
    EXPECT_EQ(withoutEntry("evdevkeyboard,tslib,vantle", ',', "vantle"), "evdevkeyboard,tslib");
    EXPECT_EQ(withoutEntry("vantle", ',', "vantle"), "");
}

TEST(WithoutEntry, TakesEveryOneOut)
{
    EXPECT_EQ(withoutEntry("vantle,a,vantle", ',', "vantle"), "a");
    EXPECT_EQ(withoutEntry("vantle,vantle", ',', "vantle"), "");
}

TEST(WithoutEntry, LeavesOtherEntriesAlone)
{
    EXPECT_EQ(withoutEntry("", ',', "vantle"), "");
    EXPECT_EQ(withoutEntry("vantle2,myvantle,vantle:x, vantle", ',', "vantle"), "vantle2,myvantle,vantle:x, vantle");
    EXPECT_EQ(withoutEntry("a,,b", ',', "vantle"), "a,,b");
    EXPECT_EQ(withoutEntry("/a:/vantle/b", ':', "vantle"), "/a:/vantle/b");
}

TEST(WithoutDirectory, TakesOutWhatLeadsThere)
{
    const QTemporaryDir temporary;
    const QDir directory(temporary.path());
    ASSERT_TRUE(directory.mkpath(QStringLiteral("plugins/generic")));
    ASSERT_TRUE(directory.mkpath(QStringLiteral("others")));
    ASSERT_TRUE(QFile::link(directory.filePath(QStringLiteral("plugins")), directory.filePath(QStringLiteral("link"))));
    const QByteArray base = QFile::encodeName(temporary.path());
    const QByteArray plugins = base + "/plugins";
    const QByteArray others = base + "/others";
    for (const QByteArray &way : {plugins, plugins + '/', base + "//plugins", base + "/others/../plugins",
                                  plugins + "/generic/..", base + "/link"}) {
        EXPECT_EQ(withoutDirectory(way, ':', plugins), "") << way.constData();
        EXPECT_EQ(withoutDirectory(others + ':' + way + ":/usr/lib", ':', plugins), others + ":/usr/lib")
            << way.constData();
    }
}

TEST(WithoutDirectory, LeavesOtherDirectoriesAlone)
{
    EXPECT_EQ(withoutDirectory("", ':', "/nowhere/plugins"), "");
    EXPECT_EQ(withoutDirectory("/nowhere/a::/nowhere/b", ':', "/nowhere/plugins"), "/nowhere/a::/nowhere/b");
    EXPECT_EQ(withoutDirectory("/nowhere/a:", ':', ""), "/nowhere/a");
}

TEST(WithoutDirectory, NeedsNoDirectoryThatExists)
{
    EXPECT_EQ(withoutDirectory("/nowhere/plugins:/usr/lib", ':', "/nowhere/plugins"), "/usr/lib");
}

TEST_F(Environment, InvitationIsReadAndTakenAway)
{
    invite();
    const std::optional<Invitation> invitation = takeInvitation();
    ASSERT_TRUE(invitation);
    EXPECT_EQ(invitation->socket, QStringLiteral("/run/vantle/socket"));
    EXPECT_EQ(invitation->token, "secret");
    EXPECT_FALSE(qEnvironmentVariableIsSet(Protocol::Variable::socket));
    EXPECT_FALSE(qEnvironmentVariableIsSet(Protocol::Variable::token));
    EXPECT_FALSE(takeInvitation());
}

TEST_F(Environment, NobodyWaitsWithoutBothHalvesOfTheInvitation)
{
    EXPECT_FALSE(takeInvitation());
    qputenv(Protocol::Variable::socket, "/run/vantle/socket");
    EXPECT_FALSE(takeInvitation());
    qputenv(Protocol::Variable::token, "secret");
    EXPECT_FALSE(takeInvitation());
    qputenv(Protocol::Variable::socket, "");
    qputenv(Protocol::Variable::token, "secret");
    EXPECT_FALSE(takeInvitation());
    EXPECT_FALSE(qEnvironmentVariableIsSet(Protocol::Variable::token));
}

TEST_F(Environment, VariablesThatHeldOnlyOurEntriesAreUnset)
{
    qputenv(GenericPlugins, "vantle");
    qputenv(PluginPath, QFile::encodeName(ownDirectory()));
    takeInvitation();
    EXPECT_FALSE(qEnvironmentVariableIsSet(GenericPlugins));
    EXPECT_FALSE(qEnvironmentVariableIsSet(PluginPath));
}

TEST_F(Environment, OtherEntriesStay)
{
    invite();
    qputenv(GenericPlugins, "evdevkeyboard:/dev/input/event3,vantle,tslib");
    qputenv(PluginPath, "/usr/lib/plugins:" + QFile::encodeName(ownDirectory()) + ":/opt/plugins");
    takeInvitation();
    EXPECT_EQ(qgetenv(GenericPlugins), "evdevkeyboard:/dev/input/event3,tslib");
    EXPECT_EQ(qgetenv(PluginPath), "/usr/lib/plugins:/opt/plugins");
}

TEST_F(Environment, ProgramsThatThisOneStartsAreLeftAlone)
{
    invite();
    qputenv(GenericPlugins, "vantle");
    takeInvitation();
    QProcess child;
    child.start(QStringLiteral("env"), QStringList());
    ASSERT_TRUE(child.waitForFinished());
    const QByteArray environment = child.readAllStandardOutput();
    EXPECT_TRUE(environment.contains("PATH="));
    EXPECT_FALSE(environment.contains("VANTLE_AGENT"));
    EXPECT_FALSE(environment.contains("QT_QPA_GENERIC_PLUGINS"));
}
