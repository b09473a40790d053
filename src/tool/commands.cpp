#include "tool/commands.h"

#include "tool/arguments.h"
#include "tool/console.h"
#include "tool/doctorcommand.h"
#include "tool/exitcode.h"
#include "tool/helptext.h"
#include "tool/inspect/inspectcommand.h"
#include "tool/installation.h"
#include "tool/recordcommand.h"
#include "tool/replay/replaycommand.h"

#include <algorithm>

namespace Vantle::Tool {

namespace {

int runCommand(const Command &command, const QStringList &words)
{
    const Arguments arguments(command, words);
    if (arguments.wantsHelp())
        return Console::print(commandHelp(command)) ? Success : Failed;
    if (!arguments.errorString().isEmpty()) {
        Console::say(QStringLiteral("%1; see \"vantle %2 --help\"").arg(arguments.errorString(), command.name));
        return Failed;
    }
    return command.run(arguments);
}

QString commandNames()
{
    QStringList names;
    for (const Command &command : commands())
        names.append(command.name);
    return names.join(QStringLiteral(", "));
}

} // namespace

const QList<Command> &commands()
{
    static const QList<Command> table{recordCommand(), Replay::replayCommand(), Inspect::inspectCommand(),
                                      doctorCommand()};
    return table;
}

int runTool(const QStringList &words)
{
    if (words.isEmpty()) {
        Console::say(QStringLiteral("a command is missing; there are: %1. See \"vantle --help\"").arg(commandNames()));
        return Failed;
    }
    const QString &name = words.first();
    if (name == QLatin1String("--help") || name == QLatin1String("-h"))
        return Console::print(generalHelp(commands())) ? Success : Failed;
    if (name == QLatin1String("--version"))
        return Console::print(QStringLiteral("vantle ") + toolVersion() + QLatin1Char('\n')) ? Success : Failed;

    const auto found = std::find_if(commands().cbegin(), commands().cend(),
                                    [&](const Command &command) { return command.name == name; });
    if (found != commands().cend())
        return runCommand(*found, words.mid(1));
    if (name.startsWith(QLatin1Char('-')))
        Console::say(QStringLiteral("unknown option \"%1\"; see \"vantle --help\"").arg(name));
    else
        Console::say(QStringLiteral("unknown command \"%1\"; there are: %2").arg(name, commandNames()));
    return Failed;
}

} // namespace Vantle::Tool
