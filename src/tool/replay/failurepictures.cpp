#include "tool/replay/failurepictures.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSet>

namespace Vantle::Tool::Replay {

namespace {

/// A name that \p taken does not hold yet: scripts in several directories may
/// be called the same.
QString freeName(const QString &wanted, QSet<QString> *taken)
{
    QString name = wanted;
    for (int i = 2; taken->contains(name); ++i)
        name = QStringLiteral("%1-%2").arg(wanted).arg(i);
    taken->insert(name);
    return name;
}

/// Empty, or why the file can't be written.
QString writePicture(const QString &path, const QByteArray &png)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(png) == png.size() && file.flush())
        return QString();
    return QStringLiteral("cannot write \"%1\": %2").arg(path, file.errorString());
}

} // namespace

QString keepFailurePictures(std::vector<ScriptResult> *results, const QString &junitFile)
{
    const QFileInfo report(junitFile);
    if (report.exists() && !report.isFile())
        return QString();
    const QString directory = report.completeBaseName() + QStringLiteral("-pictures");
    QSet<QString> taken;
    for (ScriptResult &result : *results) {
        const QString script = freeName(QFileInfo(result.file).completeBaseName(), &taken);
        for (Step &step : result.steps) {
            const Picture *picture = result.pictures.find(step.after);
            if (!picture || (step.state != Step::Failed && step.state != Step::Broken))
                continue;
            report.dir().mkdir(directory);
            const QString name = QStringLiteral("%1/%2-step%3.png").arg(directory, script).arg(step.number);
            const QString error = writePicture(report.dir().filePath(name), picture->png);
            if (!error.isEmpty())
                return error;
            step.pictureFile = name;
        }
    }
    return QString();
}

} // namespace Vantle::Tool::Replay
