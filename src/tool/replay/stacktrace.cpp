#include "tool/replay/stacktrace.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtCore/QUrl>

namespace Vantle::Tool::Replay {

QList<Position> positionsOfStack(const QString &text)
{
    static const QRegularExpression frame(QStringLiteral("@(.*):(-?\\d+)$"));
    QList<Position> result;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        const auto match = frame.match(line);
        // The engine's own functions are frames without a file.
        if (match.captured(1).isEmpty() || match.captured(1).endsWith(QLatin1String(preludeName)))
            continue;
        const QUrl url(match.captured(1));
        result.append({url.isLocalFile() ? url.toLocalFile() : match.captured(1), match.captured(2).toInt(), 0});
    }
    return result;
}

QString shownFile(const QString &path)
{
    const QString relative = QDir::current().relativeFilePath(path);
    return relative.size() < path.size() && !relative.startsWith(QLatin1String("../../")) ? relative : path;
}

QString positionText(const Position &position)
{
    QString text = shownFile(position.file);
    if (position.line > 0)
        text += QLatin1Char(':') + QString::number(position.line);
    if (position.line > 0 && position.column > 0)
        text += QLatin1Char(':') + QString::number(position.column);
    return text;
}

} // namespace Vantle::Tool::Replay
