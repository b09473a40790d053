#pragma once

#include "tool/installation.h"

#include <QtCore/QList>
#include <QtCore/QString>

namespace Vantle::Tool {

/// Result of looking at one thing.
struct Check
{
    enum Status { Ok, Note, Failed };

    Status status = Ok;
    QString subject;
    QString finding;
    QString wayOut; ///< what to do about it; for failures
};

/// Looks at everything that recording needs, in the order in which one thing
/// builds on another. Runs an event loop and starts a small program of our own.
QList<Check> checkEverything(const Installation &installation);

Check checkPrefix(const Installation &installation);
Check checkPluginFile(const Installation &installation);
Check checkPluginMetaData(const Installation &installation);
Check checkPluginLibraries(const Installation &installation);
Check checkQtVersion();
Check checkPlatformPlugins();
Check checkDisplay();
Check checkExtensionPath();
Check checkSocketDirectory();
Check checkAgent(const Installation &installation);

} // namespace Vantle::Tool
