#pragma once

#include <QtCore/QString>

namespace Vantle::Tool {

/// Where the parts of this installation are. All of it follows from the place
/// of the tool's own executable, so that a prefix can be moved.
struct Installation
{
    QString prefix;
    QString pluginRoot; ///< goes into QT_PLUGIN_PATH
    QString plugin;     ///< the agent
    QString probe;      ///< the program that `vantle doctor` starts

    /// The installation that \p executable (a full path) belongs to.
    static Installation ofExecutable(const QString &executable);

    /// The installation of the running tool.
    static Installation own();
};

/// Version of this tool.
QString toolVersion();

} // namespace Vantle::Tool
