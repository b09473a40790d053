#include "tool/commands.h"
#include "tool/exitcode.h"
#include "tool/installation.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>

using namespace Vantle::Tool;

namespace {

/// The page as its reader sees it: plain dashes, no font changes or quotes.
QString manPage()
{
    QFile file(QStringLiteral(VANTLE_MAN_PAGE));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(file.readAll());
    text.replace(QStringLiteral("\\-"), QStringLiteral("-"));
    for (const char *font : {"\\fI", "\\fR", "\\fB", "\""})
        text.remove(QLatin1String(font));
    while (text.contains(QStringLiteral("  ")))
        text.replace(QStringLiteral("  "), QStringLiteral(" "));
    return text;
}

TEST(ManPage, explainsEveryCommand)
{
    const QString page = manPage();
    for (const Command &command : commands())
        EXPECT_TRUE(page.contains(QStringLiteral("\n.SS vantle %1").arg(command.name))) << qPrintable(command.name);
}

TEST(ManPage, explainsEveryOptionWithItsValue)
{
    const QString page = manPage();
    int count = 0;
    for (const Command &command : commands()) {
        for (const Option &option : command.options) {
            QString head = option.shortName.isNull() ? QString() : QStringLiteral("-%1 , ").arg(option.shortName);
            head += QStringLiteral("--") + option.longName;
            if (!option.valueName.isEmpty())
                head += QLatin1Char(' ') + option.valueName;
            EXPECT_TRUE(page.contains(QStringLiteral(" %1\n").arg(head))) << qPrintable(head);
            ++count;
        }
    }
    EXPECT_GE(count, 5);
    EXPECT_TRUE(page.contains(QStringLiteral("-h , --help\n")));
    EXPECT_TRUE(page.contains(QStringLiteral(" --version\n")));
}

TEST(ManPage, namesEveryExitCode)
{
    const QString page = manPage();
    const QString codes = page.mid(page.indexOf(QStringLiteral(".SH EXIT STATUS"))).section(QStringLiteral(".SH ENV"), 0, 0);
    for (const int code : {Success, ChecksFailed, ProgramCrashed, Failed})
        EXPECT_TRUE(codes.contains(QStringLiteral("\n.B %1\n").arg(code))) << code;
}

TEST(ManPage, carriesTheVersionOfTheTool)
{
    EXPECT_TRUE(manPage().startsWith(QStringLiteral(".TH VANTLE 1 Vantle %1 ").arg(toolVersion())));
}

} // namespace
