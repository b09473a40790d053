#include "tool/doctorcommand.h"

#include "tool/arguments.h"
#include "tool/console.h"
#include "tool/exitcode.h"

namespace Vantle::Tool {

namespace {

int runDoctor(const Arguments &)
{
    bool healthy = true;
    const QList<Check> checks = checkEverything(Installation::own());
    for (const Check &check : checks) {
        Console::print(checkLine(check));
        healthy = healthy && check.status != Check::Failed;
    }
    Console::print(healthy ? QStringLiteral("All is well.\n") : QStringLiteral("Recording will not work here.\n"));
    return healthy ? Success : Failed;
}

} // namespace

Command doctorCommand()
{
    Command command;
    command.name = QStringLiteral("doctor");
    command.summary = QStringLiteral("Check the installation and say what is wrong.");
    command.usage = QStringLiteral("[OPTIONS]");
    command.description = QStringLiteral("Looks at everything that recording needs, one line each, and loads the agent\n"
                                         "into a small program of its own, without a window. Exit code 0 if all is\n"
                                         "well, else 3.");
    command.examples = {
        QStringLiteral("vantle doctor"),
        QStringLiteral("xvfb-run vantle doctor"),
    };
    command.run = runDoctor;
    return command;
}

QString checkLine(const Check &check)
{
    QString mark;
    switch (check.status) {
    case Check::Ok: mark = QStringLiteral("ok    "); break;
    case Check::Note: mark = QStringLiteral("note  "); break;
    case Check::Failed: mark = QStringLiteral("FAILED"); break;
    }
    QString line = mark + QLatin1Char(' ') + check.subject + QStringLiteral(": ") + check.finding;
    if (!check.wayOut.isEmpty())
        line += QStringLiteral(" -- ") + check.wayOut;
    return line + QLatin1Char('\n');
}

} // namespace Vantle::Tool
