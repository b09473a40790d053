#pragma once

#include "tool/programundertest.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>

namespace Vantle::Tool::Replay {

/// What `vantle replay` was asked to do.
struct ReplayOptions
{
    QStringList scripts;
    LaunchOptions launch; ///< without words if the scripts start their programs
    std::chrono::milliseconds waitLimit{20000};
    QString recordFile;
    QString treeFile;
    QString junitFile;
    QString reportFile;
    int workers = 1;
    bool offscreen = false;
    bool shareDisplay = false;
    bool freshSettings = false;
    bool updateImages = false;
    bool allowPaths = false; ///< pictures may lie anywhere, not only beside the script
};

} // namespace Vantle::Tool::Replay
