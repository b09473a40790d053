#include "tool/replay/failurepictures.h"

#include "tool/outputfile.h"

#include <QtCore/QDir>
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

} // namespace

QString keepFailurePictures(std::vector<ScriptResult> *results, const QString &junitFile)
{
    const QFileInfo report(junitFile);
    // A report that goes nowhere gets no pictures either.
    if (!report.dir().exists() || (report.exists() && !report.isFile()))
        return QString();
    const QString directory = report.completeBaseName() + QStringLiteral("-pictures");
    QSet<QString> taken;
    for (ScriptResult &result : *results) {
        const QString script = freeName(QFileInfo(result.file).completeBaseName(), &taken);
        for (Step &step : result.steps) {
            const Picture *picture = result.pictures.find(step.after);
            if (!picture || (step.state != Step::Failed && step.state != Step::Broken))
                continue;
            const QString name = QStringLiteral("%1/%2-step%3.png").arg(directory, script).arg(step.number);
            const QString error = writeOutputWithFolders(report.dir().filePath(name), picture->png);
            if (!error.isEmpty())
                return error;
            step.pictureFile = name;
        }
    }
    return QString();
}

} // namespace Vantle::Tool::Replay
