#include "tool/replay/imagecheck.h"

#include "tool/inputfile.h"
#include "tool/outputfile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace Vantle::Tool::Replay {

namespace {

QString besides(const QString &file, const char *suffix)
{
    const QFileInfo info(file);
    return info.path() + QLatin1Char('/') + info.completeBaseName() + QLatin1String(suffix);
}

QString foundFile(const QString &file)
{
    return besides(file, "-found.png");
}

QString differenceFile(const QString &file)
{
    return besides(file, "-difference.png");
}

void removeOldResults(const QString &file)
{
    QFile::remove(foundFile(file));
    QFile::remove(differenceFile(file));
}

ImageCheck keepPicture(const QByteArray &found, const QString &file)
{
    const QString error = writeOutputWithFolders(file, found);
    if (!error.isEmpty())
        return {false, error, {}, {}};
    removeOldResults(file);
    return {true, QStringLiteral("kept as ") + file, found, {}};
}

} // namespace

ImageCheck checkImage(const QByteArray &found, const QString &file, const PictureTolerance &tolerance, bool update)
{
    const bool isThere = QFileInfo::exists(file);
    QString readError;
    const auto read = isThere ? readInput(file, longestPicture, &readError) : std::nullopt;
    if (!readError.isEmpty())
        return {false, QStringLiteral("cannot read \"%1\": %2").arg(file, readError), {}, {}};
    const QByteArray kept = read.value_or(QByteArray());
    const PictureDifference difference = isThere ? comparePictures(found, kept, tolerance) : PictureDifference();
    if (difference.alike) {
        removeOldResults(file);
        return {true, {}, kept, {}};
    }
    if (update)
        return keepPicture(found, file);

    QStringList message{isThere ? difference.message : QStringLiteral("there is no picture %1 yet").arg(file)};
    const QString writeError = writeOutputWithFolders(foundFile(file), found);
    message.append(writeError.isEmpty() ? QStringLiteral("found: %1").arg(foundFile(file)) : writeError);
    if (!difference.picture.isEmpty() && writeOutputWithFolders(differenceFile(file), difference.picture).isEmpty())
        message.append(QStringLiteral("difference: %1").arg(differenceFile(file)));
    message.append(QStringLiteral("--update-images keeps what was found"));
    return {false, message.join(QStringLiteral("; ")), kept, difference.picture};
}

} // namespace Vantle::Tool::Replay
