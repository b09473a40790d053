#include "tool/inspect/inspectcommand.h"

#include "tool/arguments.h"
#include "tool/console.h"
#include "tool/exitcode.h"
#include "tool/inspect/inspectsession.h"
#include "tool/programoptions.h"

namespace Vantle::Tool::Inspect {

namespace {

const QString nameOption = QStringLiteral("name");
const QString functionsOption = QStringLiteral("functions");
const QString checkNamesOption = QStringLiteral("check-names");
const QString jsonOption = QStringLiteral("json");
const QString timeoutOption = QStringLiteral("timeout");

QList<Option> options()
{
    const QList<Option> own{
        {QChar(), nameOption, QStringLiteral("SELECTOR"),
         QStringLiteral("Print the properties of the object with that name. If\n"
                        "there is none, print what comes closest, and in which\n"
                        "properties it differs.")},
        {QChar(), functionsOption, QString(),
         QStringLiteral("Print the functions that scripts can call, with the\n"
                        "names and types of their arguments.")},
        {QChar(), checkNamesOption, QString(),
         QStringLiteral("Name every object, look it up by its name, and print\n"
                        "which ones are not found.")},
        {QChar(), jsonOption, QString(), QStringLiteral("Print JSON.")},
        {QChar(), timeoutOption, QStringLiteral("SECONDS"),
         QStringLiteral("How long to wait for the first window, and then for the\n"
                        "object of --name; 10 is the default.")},
        startTimeoutOption(),
    };
    return own + agentOptions();
}

int runInspect(const Arguments &arguments)
{
    QString error;
    const auto parsed = inspectOptions(arguments, &error);
    if (!parsed) {
        Console::say(error);
        return Failed;
    }
    InspectSession session(*parsed, Installation::own());
    return session.run();
}

} // namespace

Command inspectCommand()
{
    Command command;
    command.name = QStringLiteral("inspect");
    command.summary = QStringLiteral("Show the objects of a program and their names.");
    command.usage = QStringLiteral("[OPTIONS] -- PROGRAM [ARGS...]");
    command.description = QStringLiteral(
        "Starts PROGRAM, waits until it shows a window and has come to rest, prints the\n"
        "objects of every window with type, place, readiness and the name by which\n"
        "scripts find them, and ends the program again. What the program itself prints\n"
        "goes to standard error.\n"
        "\n"
        "Exit codes: 0 all is well, 1 the object of --name was not found, or one of\n"
        "--check-names, 2 the program under test crashed, 3 the command failed.");
    command.options = options();
    command.examples = {
        QStringLiteral("vantle inspect -- pentobi"),
        QStringLiteral("vantle inspect --name 'Main ToolButton:nth(2)' -- pentobi"),
        QStringLiteral("vantle inspect --functions -- ./notes"),
        QStringLiteral("vantle inspect --json --extensions ./extensions -- ./notes > notes.json"),
    };
    command.takesProgram = true;
    command.run = runInspect;
    return command;
}

std::optional<InspectOptions> inspectOptions(const Arguments &arguments, QString *error)
{
    InspectOptions result;
    result.launch.words = arguments.programWords();
    result.asJson = arguments.has(jsonOption);
    result.name = arguments.value(nameOption);
    if (arguments.has(nameOption) && result.name.trimmed().isEmpty()) {
        *error = QStringLiteral("option \"--name\" needs a selector");
        return std::nullopt;
    }
    int subjects = 0;
    const auto choose = [&](const QString &option, InspectOptions::Subject subject) {
        if (!arguments.has(option))
            return;
        result.subject = subject;
        ++subjects;
    };
    choose(nameOption, InspectOptions::OneObject);
    choose(functionsOption, InspectOptions::Functions);
    choose(checkNamesOption, InspectOptions::Names);
    if (subjects > 1) {
        *error = QStringLiteral("\"--name\", \"--functions\" and \"--check-names\" exclude each other");
        return std::nullopt;
    }
    const auto limit = timeOption(arguments, timeoutOption, result.limit, error);
    const auto startLimit = startTimeout(arguments, error);
    if (!limit || !startLimit || !readAgentOptions(arguments, &result.launch.settings, error))
        return std::nullopt;
    result.limit = *limit;
    result.launch.startLimit = *startLimit;
    return result;
}

} // namespace Vantle::Tool::Inspect
