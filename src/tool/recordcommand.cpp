#include "tool/recordcommand.h"

#include "tool/arguments.h"
#include "tool/console.h"
#include "tool/exitcode.h"
#include "tool/programoptions.h"

namespace Vantle::Tool {

namespace {

const QString outputOption = QStringLiteral("output");
const QString debugOption = QStringLiteral("debug-compression");
const QString withoutCoordinatesOption = QStringLiteral("without-coordinates");
const QString treeOption = QStringLiteral("tree");
const QString keepRunningOption = QStringLiteral("keep-running");

constexpr int highestDebugLevel = 2;

QList<Option> options()
{
    const QList<Option> own{
        {QLatin1Char('o'), outputOption, QStringLiteral("FILE"),
         QStringLiteral("Write the script to FILE as well, replacing what is in it.\n"
                        "Each statement is on the disk as soon as it is recorded.")},
        {QChar(), withoutCoordinatesOption, QStringLiteral("CLASS"),
         QStringLiteral("Record clicks and taps on objects of CLASS, or a class\n"
                        "derived from it, without coordinates. Can be repeated."),
         true},
        {QChar(), treeOption, QStringLiteral("FILE"),
         QStringLiteral("Write the objects that are there when the recording is\n"
                        "ended to FILE, like \"vantle inspect --json\".")},
        {QChar(), keepRunningOption, QString(),
         QStringLiteral("Leave the program running when the recording is ended.")},
        startTimeoutOption(),
        {QChar(), debugOption, QStringLiteral("LEVEL"),
         QStringLiteral("Log to standard error how input becomes statements:\n"
                        "0 nothing, 1 each input event, 2 each decision as well.")},
    };
    return own + agentOptions();
}

int runRecord(const Arguments &arguments)
{
    QString error;
    const auto parsed = recordOptions(arguments, &error);
    if (!parsed) {
        Console::say(error);
        return Failed;
    }
    RecordSession session(*parsed, Installation::own());
    return session.run();
}

} // namespace

Command recordCommand()
{
    Command command;
    command.name = QStringLiteral("record");
    command.summary = QStringLiteral("Record what a user does in a program as a script.");
    command.usage = QStringLiteral("[OPTIONS] -- PROGRAM [ARGS...]");
    command.description = QStringLiteral(
        "Starts PROGRAM and writes each click, drag, key and gesture as a statement of\n"
        "a script, until the program ends or Ctrl-C is pressed. The script goes to\n"
        "standard output, and to a file with -o. Without -o, what the program itself\n"
        "prints goes to standard error.");
    command.options = options();
    command.examples = {
        QStringLiteral("vantle record -- pentobi"),
        QStringLiteral("vantle record -o login.js -- ./notes --new"),
        QStringLiteral("vantle record --without-coordinates QQuickAbstractButton -o t.js -- ./notes"),
    };
    command.takesProgram = true;
    command.run = runRecord;
    return command;
}

std::optional<RecordOptions> recordOptions(const Arguments &arguments, QString *error)
{
    RecordOptions result;
    result.launch.words = arguments.programWords();
    result.keepRunning = arguments.has(keepRunningOption);
    result.launch.settings.classesWithoutCoordinates = arguments.values(withoutCoordinatesOption);
    result.file = arguments.value(outputOption);
    if (arguments.has(outputOption) && result.file.isEmpty()) {
        *error = QStringLiteral("option \"--output\" needs the name of a file");
        return std::nullopt;
    }
    result.treeFile = arguments.value(treeOption);
    if (arguments.has(treeOption) && result.treeFile.isEmpty()) {
        *error = QStringLiteral("option \"--tree\" needs the name of a file");
        return std::nullopt;
    }
    if (result.launch.settings.classesWithoutCoordinates.contains(QString())) {
        *error = QStringLiteral("option \"--without-coordinates\" needs the name of a class");
        return std::nullopt;
    }
    if (arguments.has(debugOption)) {
        bool ok = false;
        const int level = arguments.value(debugOption).toInt(&ok);
        if (!ok || level < 0 || level > highestDebugLevel) {
            *error = QStringLiteral("\"--debug-compression\" is 0, 1 or 2, not \"%1\"")
                         .arg(arguments.value(debugOption));
            return std::nullopt;
        }
        result.launch.settings.debugCompression = level;
    }
    const auto limit = startTimeout(arguments, error);
    if (!limit || !readAgentOptions(arguments, &result.launch.settings, error))
        return std::nullopt;
    result.launch.startLimit = *limit;
    return result;
}

} // namespace Vantle::Tool
