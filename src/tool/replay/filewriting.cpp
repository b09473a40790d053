#include "tool/replay/filewriting.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace Vantle::Tool::Replay {

QString writeWithFolders(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush())
        return QString();
    return QStringLiteral("cannot write \"%1\": %2").arg(path, file.errorString());
}

} // namespace Vantle::Tool::Replay
