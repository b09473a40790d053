#include "tool/agentdiagnosis.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>

using namespace Vantle::Tool;

namespace {

QByteArray mapping(const char *file)
{
    return QByteArray("7f0000000000-7f0000001000 r-xp 00000000 08:01 1234 ") + file + '\n';
}

TEST(AgentDiagnosis, tellsAnotherMajorVersionOfQt)
{
    EXPECT_TRUE(diagnosisOfMaps(mapping("/usr/lib/libQt5Gui.so.5.15.8")).contains(QStringLiteral("another major version")));
    EXPECT_TRUE(diagnosisOfMaps(mapping("/opt/libQtGui.so.4")).contains(QStringLiteral("another major version")));
}

TEST(AgentDiagnosis, tellsAQt6ProgramThatDidNotLoadTheAgent)
{
    const QString text = diagnosisOfMaps(mapping("/usr/lib/libQt6Gui.so.6.4.2"));
    EXPECT_TRUE(text.contains(QStringLiteral("did not load the agent")));
    EXPECT_TRUE(text.contains(QStringLiteral(QT_VERSION_STR)));
}

TEST(AgentDiagnosis, tellsAnAgentThatWasLoadedAndDidNotCall)
{
    const QByteArray maps = mapping("/usr/lib/libQt6Gui.so.6.4.2") + mapping("/p/lib/vantle/plugins/generic/libvantle.so");
    EXPECT_TRUE(diagnosisOfMaps(maps).contains(QStringLiteral("was loaded but did not call")));
}

TEST(AgentDiagnosis, saysNothingWhereItKnowsNothing)
{
    EXPECT_EQ(diagnosisOfMaps(QByteArray()), QString());
    EXPECT_EQ(diagnosisOfMaps(mapping("/usr/lib/libc.so.6")), QString());
    EXPECT_EQ(diagnosisOfProcess(0), QString());
    EXPECT_EQ(diagnosisOfProcess(-1), QString());
}

TEST(AgentDiagnosis, readsARunningProcess)
{
    EXPECT_TRUE(diagnosisOfProcess(QCoreApplication::applicationPid()).contains(QStringLiteral("The program uses Qt 6")));
}

TEST(AgentDiagnosis, theCausesNameThePluginThatHasToBeReadable)
{
    EXPECT_TRUE(likelyCauses(QStringLiteral("/a%1b/libvantle.so")).contains(QStringLiteral("can't read the agent, /a%1b/")));
}

} // namespace
