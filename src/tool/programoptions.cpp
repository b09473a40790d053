#include "tool/programoptions.h"

#include "tool/arguments.h"
#include "tool/inputfile.h"
#include "tool/programundertest.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cmath>

namespace Vantle::Tool {

namespace {

const QString startTimeoutName = QStringLiteral("start-timeout");
const QString noStandardExtensionName = QStringLiteral("no-standard-extension");
const QString extensionsName = QStringLiteral("extensions");
const QString namesName = QStringLiteral("names");

constexpr double longestTimeout = 24 * 60 * 60;

/// Empty, or why extensions can't be read from there.
QString directoryError(const QString &path)
{
    const QFileInfo info(path);
    if (path.isEmpty())
        return QStringLiteral("option \"--extensions\" needs the name of a directory");
    if (!info.exists())
        return QStringLiteral("there is no directory \"%1\" with extensions").arg(path);
    if (!info.isDir())
        return QStringLiteral("\"%1\" is no directory; \"--extensions\" takes the one that holds the extensions")
            .arg(path);
    if (!info.isReadable() || !info.isExecutable())
        return QStringLiteral("the directory \"%1\" with extensions can't be read").arg(path);
    return QString();
}

/// Where byte \p offset of \p text is, in words.
QString placeOf(const QByteArray &text, qsizetype offset)
{
    const QByteArray before = text.left(offset);
    return QStringLiteral("line %1, column %2")
        .arg(before.count('\n') + 1)
        .arg(before.size() - before.lastIndexOf('\n'));
}

/// Empty, or why there are no names in that file.
QString namesError(const QString &path)
{
    if (path.isEmpty())
        return QStringLiteral("option \"--names\" needs the name of a file");
    QString reason;
    const auto read = readInput(path, longestTextFile, &reason);
    if (!read)
        return QStringLiteral("cannot read the names file \"%1\": %2").arg(path, reason);
    const QByteArray text = *read;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        return QStringLiteral("the names file \"%1\" is no JSON: %2: %3")
            .arg(path, placeOf(text, error.offset), error.errorString());
    if (!document.isObject())
        return QStringLiteral("the names file \"%1\" has to be one JSON object that gives each alias its selector")
            .arg(path);
    const QJsonObject names = document.object();
    for (auto name = names.begin(); name != names.end(); ++name) {
        if (!name.value().isString())
            return QStringLiteral("the names file \"%1\" gives the alias \"%2\" something else than a selector")
                .arg(path, name.key());
    }
    return QString();
}

} // namespace

Option startTimeoutOption()
{
    return {QChar(), startTimeoutName, QStringLiteral("SECONDS"),
            QStringLiteral("How long the program may take to load the agent; 15 is\n"
                           "the default.")};
}

QList<Option> agentOptions()
{
    return {
        {QChar(), extensionsName, QStringLiteral("DIR"),
         QStringLiteral("Load the extensions (*.qml) in DIR, too. Can be\n"
                        "repeated."),
         true},
        {QChar(), noStandardExtensionName, QString(),
         QStringLiteral("Leave out the extension that comes with Vantle: what\n"
                        "lies on top is named then, whatever answers.")},
        {QChar(), namesName, QStringLiteral("FILE"),
         QStringLiteral("Take aliases from FILE, a JSON object: where an object\n"
                        "has one, it stands in place of its name.")},
    };
}

bool readAgentOptions(const Arguments &arguments, Protocol::HelloResult *settings, QString *error)
{
    // The program may run elsewhere.
    const QStringList directories = arguments.values(extensionsName);
    for (const QString &directory : directories) {
        *error = directoryError(directory);
        if (!error->isEmpty())
            return false;
        settings->extensionDirectories.append(QDir(directory).absolutePath());
    }
    settings->standardExtension = !arguments.has(noStandardExtensionName);
    if (!arguments.has(namesName))
        return true;
    const QString names = arguments.value(namesName);
    *error = namesError(names);
    settings->namesFile = QFileInfo(names).absoluteFilePath();
    return error->isEmpty();
}

std::optional<std::chrono::milliseconds> timeOption(const Arguments &arguments, const QString &name,
                                                    std::chrono::milliseconds otherwise, QString *error)
{
    if (!arguments.has(name))
        return otherwise;
    bool ok = false;
    const double seconds = arguments.value(name).toDouble(&ok);
    if (ok && seconds > 0 && seconds <= longestTimeout)
        return std::chrono::milliseconds(std::llround(std::ceil(seconds * 1000)));
    *error = QStringLiteral("\"--%1\" is a number of seconds above 0 and up to %2, not \"%3\"")
                 .arg(name)
                 .arg(longestTimeout)
                 .arg(arguments.value(name));
    return std::nullopt;
}

std::optional<std::chrono::milliseconds> startTimeout(const Arguments &arguments, QString *error)
{
    return timeOption(arguments, startTimeoutName, LaunchOptions().startLimit, error);
}

} // namespace Vantle::Tool
