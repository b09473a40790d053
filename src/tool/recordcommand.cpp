#include "tool/recordcommand.h"

#include "tool/arguments.h"
#include "tool/console.h"
#include "tool/exitcode.h"
#include "tool/outputfile.h"
#include "tool/programoptions.h"
#include "tool/verify/verification.h"

namespace Vantle::Tool {

namespace {

const QString outputOption = QStringLiteral("output");
const QString debugOption = QStringLiteral("debug-compression");
const QString withoutCoordinatesOption = QStringLiteral("without-coordinates");
const QString treeOption = QStringLiteral("tree");
const QString verifyOption = QStringLiteral("verify");
const QString freshSettingsOption = QStringLiteral("fresh-settings");
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
        {QChar(), verifyOption, QString(),
         QStringLiteral("When the recording ends, replay the script in a fresh\n"
                        "instance of the program, and say whether that came back\n"
                        "to the same state, or what differs.")},
        {QChar(), freshSettingsOption, QString(),
         QStringLiteral("Give the program settings directories of its own, which\n"
                        "are empty and go away.")},
        {QChar(), keepRunningOption, QString(),
         QStringLiteral("Leave the program running when the recording is ended.")},
        startTimeoutOption(),
        {QChar(), debugOption, QStringLiteral("LEVEL"),
         QStringLiteral("Log to standard error how input becomes statements:\n"
                        "0 nothing, 1 each input event, 2 each decision as well.")},
    };
    return own + agentOptions();
}

/// How the script of such a recording is replayed.
Replay::ReplayOptions replayOptions(const RecordOptions &options)
{
    Replay::ReplayOptions result;
    result.launch = options.launch;
    result.freshSettings = options.freshSettings;
    return result;
}

int runRecord(const Arguments &arguments)
{
    QString error;
    const auto parsed = recordOptions(arguments, &error);
    if (!parsed) {
        Console::say(error);
        return Failed;
    }
    std::optional<Verify::Evidence> evidence;
    int code = Failed;
    {
        // Nothing of the recorded program is to be left when the other starts.
        RecordSession session(*parsed, Installation::own());
        code = session.run();
        evidence = session.evidence();
    }
    const bool wasRecorded = code == Success || code == ProgramCrashed;
    if (!parsed->verify || !wasRecorded)
        return code;
    if (!evidence) {
        Console::say(QStringLiteral("could not verify: nobody knows in which state the recording ended"));
        return Failed;
    }
    const int verified = Verify::Verification(*evidence, replayOptions(*parsed), Installation::own()).run();
    return code == Success ? verified : code;
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
        "prints goes to standard error.\n"
        "\n"
        "Exit codes: 0 it was recorded, 1 with --verify: the replay did not come back to\n"
        "the recorded state, 2 the program crashed, 3 something could not be begun,\n"
        "written or verified.");
    command.options = options();
    command.examples = {
        QStringLiteral("vantle record -- pentobi"),
        QStringLiteral("vantle record -o login.js -- ./notes --new"),
        QStringLiteral("vantle record --verify -o login.js -- ./notes --new"),
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
    result.verify = arguments.has(verifyOption);
    result.freshSettings = arguments.has(freshSettingsOption);
    if (result.verify && result.keepRunning) {
        *error = QStringLiteral("\"--verify\" and \"--keep-running\" exclude each other");
        return std::nullopt;
    }
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
    if (arguments.has(treeOption)) {
        *error = outputError(result.treeFile);
        if (!error->isEmpty())
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
