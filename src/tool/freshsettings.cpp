#include "tool/freshsettings.h"

#include <QtCore/QDir>

namespace Vantle::Tool {

QMap<QString, QString> freshSettings(const QString &directory)
{
    QMap<QString, QString> environment;
    for (const char *name : {"CONFIG", "DATA", "CACHE", "STATE"}) {
        const QString path = directory + QLatin1Char('/') + QString::fromLatin1(name).toLower();
        QDir().mkpath(path);
        environment.insert(QStringLiteral("XDG_%1_HOME").arg(QLatin1String(name)), path);
    }
    return environment;
}

} // namespace Vantle::Tool
