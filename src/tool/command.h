#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

namespace Vantle::Tool {

class Arguments;

/// One option of a command, as it is parsed and as the help shows it.
struct Option
{
    QChar shortName; ///< null if there is only the long form
    QString longName;
    QString valueName; ///< empty for an option without value
    QString help;
    bool repeatable = false;
};

/// One command of the tool: what its help says, what it accepts, and what it
/// does. `run` gets arguments that fit the options and gives the exit code.
struct Command
{
    QString name;
    QString summary;
    QString usage; ///< what follows "vantle NAME" in the help
    QString description;
    QList<Option> options;
    QStringList examples;
    bool takesProgram = false; ///< ends in PROGRAM ARGS, which is required then
    /// Files come ahead of "--" and PROGRAM ARGS behind it: the files are
    /// required then, and the program is not.
    bool takesFiles = false;
    int (*run)(const Arguments &arguments) = nullptr;
};

} // namespace Vantle::Tool
