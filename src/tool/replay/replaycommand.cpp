#include "tool/replay/replaycommand.h"

#include "tool/arguments.h"
#include "tool/console.h"
#include "tool/exitcode.h"
#include "tool/outputfile.h"
#include "tool/programoptions.h"
#include "tool/replay/replayrun.h"
#include "tool/replay/scriptsource.h"
#include "tool/replay/virtualdisplay.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace Vantle::Tool::Replay {

namespace {

const QString timeoutOption = QStringLiteral("timeout");
const QString junitOption = QStringLiteral("junit");
const QString reportOption = QStringLiteral("report");
const QString updateImagesOption = QStringLiteral("update-images");
const QString allowPathsOption = QStringLiteral("allow-paths");
const QString treeOption = QStringLiteral("tree");
const QString recordOption = QStringLiteral("record");
const QString workersOption = QStringLiteral("workers");
const QString offscreenOption = QStringLiteral("offscreen");
const QString shareDisplayOption = QStringLiteral("share-display");
const QString strictOption = QStringLiteral("strict");
const QString freshSettingsOption = QStringLiteral("fresh-settings");
const QString fileValue = QStringLiteral("FILE");

constexpr int mostWorkers = 256;

QList<Option> options()
{
    const QList<Option> own{
        {QChar(), timeoutOption, QStringLiteral("SECONDS"),
         QStringLiteral("How long functions wait for their object, and scripts\n"
                        "for a condition, unless they say otherwise; 20 is the\n"
                        "default.")},
        startTimeoutOption(),
        {QChar(), junitOption, fileValue, QStringLiteral("Write the results as JUnit XML, for a CI server.")},
        {QChar(), reportOption, fileValue,
         QStringLiteral("Write a report as one HTML file: every statement with\n"
                        "time, result and pictures before and after.")},
        {QChar(), updateImagesOption, QString(),
         QStringLiteral("Keep what test.compareImage finds as the pictures to\n"
                        "compare with from now on.")},
        {QChar(), allowPathsOption, QString(),
         QStringLiteral("Let scripts read and write pictures anywhere, not only in\n"
                        "their own folder and below.")},
        {QChar(), recordOption, fileValue,
         QStringLiteral("Record what the replay does as a second script, to\n"
                        "compare it with the first. For one script only.")},
        {QChar(), treeOption, fileValue,
         QStringLiteral("Write the objects that are there at the end of the script\n"
                        "to FILE, like \"vantle inspect --json\". For one script only.")},
        {QChar(), workersOption, QStringLiteral("N"),
         QStringLiteral("Run N scripts side by side, each with its own program,\n"
                        "settings and virtual display (Xvfb).")},
        {QChar(), strictOption, QString(),
         QStringLiteral("Take a name without \":nth\" that fits several objects for\n"
                        "an error, in place of the first of them.")},
        {QChar(), offscreenOption, QString(),
         QStringLiteral("Run the program without any display, on Qt's platform\n"
                        "\"offscreen\".")},
        {QChar(), shareDisplayOption, QString(), QStringLiteral("Let all workers use the one display that is there.")},
        {QChar(), freshSettingsOption, QString(),
         QStringLiteral("Give the program settings directories of its own, which\n"
                        "are empty and go away. Workers always do that.")},
    };
    return own + agentOptions();
}

/// True for what the system runs by itself: a binary, or a text that names its
/// interpreter.
bool isProgram(const QString &path)
{
    QFile file(path);
    if (!QFileInfo(path).isExecutable() || !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray beginning = file.read(4096);
    return beginning.startsWith("#!") || beginning.contains('\0');
}

/// Empty, or which script can't be read.
QString scriptError(const QStringList &scripts)
{
    for (const QString &script : scripts) {
        const QFileInfo info(script);
        if (!info.isFile() || !info.isReadable())
            return QStringLiteral("there is no script \"%1\" that can be read").arg(script);
        QString error;
        if (isProgram(script))
            return QStringLiteral("\"%1\" is a program and no script; put \"--\" ahead of the program").arg(script);
        if (!ScriptSource::read(script, &error))
            return error;
    }
    return QString();
}

/// The same for every way to write the name of a file, whether or not there is
/// one by now.
QString realPath(const QString &file)
{
    const QFileInfo info(file);
    if (info.exists())
        return info.canonicalFilePath();
    const QString directory = QFileInfo(info.absolutePath()).canonicalFilePath();
    return directory + QLatin1Char('/') + info.fileName();
}

/// Empty, or which script would be lost under a file that is to be written.
QString overwritingError(const ReplayOptions &options)
{
    const QPair<QString, QString> outputs[] = {{recordOption, options.recordFile},
                                               {treeOption, options.treeFile},
                                               {junitOption, options.junitFile},
                                               {reportOption, options.reportFile}};
    for (const auto &[option, file] : outputs) {
        for (const QString &script : options.scripts) {
            if (!file.isEmpty() && realPath(file) == realPath(script))
                return QStringLiteral("\"--%1 %2\" would overwrite the script \"%3\"").arg(option, file, script);
        }
    }
    return QString();
}

/// Empty, or why these options don't go together here.
QString combinationError(const ReplayOptions &options)
{
    if (!options.recordFile.isEmpty() && options.scripts.size() > 1)
        return QStringLiteral("\"--record\" goes with one script, not with %1").arg(options.scripts.size());
    if (!options.treeFile.isEmpty() && options.scripts.size() > 1)
        return QStringLiteral("\"--tree\" goes with one script, not with %1").arg(options.scripts.size());
    if (options.offscreen && options.shareDisplay)
        return QStringLiteral("\"--offscreen\" and \"--share-display\" exclude each other");
    if (ReplayWorker::needsOwnDisplay(options) && !VirtualDisplay::isAvailable()) {
        return QStringLiteral("several workers need a virtual display each, but Xvfb is not installed; install it, or "
                              "give --offscreen or --share-display");
    }
    return QString();
}

int runReplay(const Arguments &arguments)
{
    QString error;
    const auto parsed = replayOptions(arguments, &error);
    if (!parsed) {
        Console::say(error);
        return Failed;
    }
    ReplayRun run(*parsed, Installation::own());
    return run.run();
}

} // namespace

Command replayCommand()
{
    Command command;
    command.name = QStringLiteral("replay");
    command.summary = QStringLiteral("Run scripts on a program and report what they found.");
    command.usage = QStringLiteral("[OPTIONS] SCRIPT... [-- PROGRAM [ARGS...]]");
    command.description = QStringLiteral("Starts PROGRAM anew for each SCRIPT and does what the script says: a script\n"
                                         "that was recorded, or one that was written by hand, with waits and checks.\n"
                                         "Without PROGRAM the scripts start their programs themselves.\n"
                                         "\n"
                                         "Exit codes: 0 all scripts passed, 1 a check failed or an error ended a\n"
                                         "script, 2 the program died, 3 something could not be begun or was stopped.");
    command.options = options();
    command.examples = {
        QStringLiteral("vantle replay login.js -- ./notes --new"),
        QStringLiteral("vantle replay --report report.html tests/*.js -- ./notes"),
        QStringLiteral("vantle replay --workers 4 --junit results.xml tests/*.js -- ./notes"),
        QStringLiteral("vantle replay --offscreen --fresh-settings login.js -- ./notes"),
        QStringLiteral("vantle replay --update-images looks.js -- ./notes"),
    };
    command.takesProgram = true;
    command.takesFiles = true;
    command.run = runReplay;
    return command;
}

std::optional<ReplayOptions> replayOptions(const Arguments &arguments, QString *error)
{
    ReplayOptions result;
    result.scripts = arguments.fileWords();
    result.launch.words = arguments.programWords();
    result.offscreen = arguments.has(offscreenOption);
    result.shareDisplay = arguments.has(shareDisplayOption);
    result.freshSettings = arguments.has(freshSettingsOption);
    result.updateImages = arguments.has(updateImagesOption);
    result.launch.settings.strict = arguments.has(strictOption);
    result.allowPaths = arguments.has(allowPathsOption);
    const QPair<QString, QString *> files[] = {{recordOption, &result.recordFile},
                                               {treeOption, &result.treeFile},
                                               {junitOption, &result.junitFile},
                                               {reportOption, &result.reportFile}};
    for (const auto &[name, value] : files) {
        *value = arguments.value(name);
        if (arguments.has(name) && value->isEmpty()) {
            *error = QStringLiteral("option \"--%1\" needs the name of a file").arg(name);
            return std::nullopt;
        }
        if (!value->isEmpty())
            *error = outputError(*value);
        if (!error->isEmpty())
            return std::nullopt;
    }
    const auto waitLimit = timeOption(arguments, timeoutOption, result.waitLimit, error);
    const auto startLimit = startTimeout(arguments, error);
    if (!waitLimit || !startLimit || !readAgentOptions(arguments, &result.launch.settings, error))
        return std::nullopt;
    result.waitLimit = *waitLimit;
    result.launch.startLimit = *startLimit;
    if (arguments.has(workersOption)) {
        bool ok = false;
        result.workers = arguments.value(workersOption).toInt(&ok);
        if (!ok || result.workers < 1 || result.workers > mostWorkers) {
            *error = QStringLiteral("\"--workers\" is a number from 1 to %1, not \"%2\"")
                         .arg(mostWorkers)
                         .arg(arguments.value(workersOption));
            return std::nullopt;
        }
    }
    *error = scriptError(result.scripts);
    if (error->isEmpty())
        *error = overwritingError(result);
    if (error->isEmpty())
        *error = combinationError(result);
    return error->isEmpty() ? std::optional(result) : std::nullopt;
}

} // namespace Vantle::Tool::Replay
