#include "tool/installation.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace Vantle::Tool {

Installation Installation::ofExecutable(const QString &executable)
{
    QDir prefix(QFileInfo(executable).absolutePath());
    const QString binaryDirectory = QDir::cleanPath(QStringLiteral(VANTLE_BIN_DIR));
    const auto levels = binaryDirectory.split(QLatin1Char('/'), Qt::SkipEmptyParts).size();
    for (qsizetype i = 0; i < levels; ++i)
        prefix.setPath(QDir::cleanPath(prefix.filePath(QStringLiteral(".."))));

    Installation installation;
    installation.prefix = prefix.path();
    installation.pluginRoot = prefix.filePath(QStringLiteral(VANTLE_LIB_DIR "/vantle/plugins"));
    installation.plugin = installation.pluginRoot + QStringLiteral("/generic/libvantle.so");
    installation.probe = prefix.filePath(QStringLiteral(VANTLE_LIBEXEC_DIR "/vantle/vantle-probe"));
    return installation;
}

Installation Installation::own()
{
    return ofExecutable(QCoreApplication::applicationFilePath());
}

QString toolVersion()
{
    return QStringLiteral(VANTLE_VERSION);
}

} // namespace Vantle::Tool
