#include "tool/console.h"

#include "tool/descriptor.h"

#include <algorithm>

#include <unistd.h>

namespace Vantle::Tool::Console {

bool print(const QString &text)
{
    return writeWhole(STDOUT_FILENO, text.toUtf8());
}

void say(const QString &message)
{
    writeWhole(STDERR_FILENO, QStringLiteral("vantle: %1\n").arg(visible(message)).toUtf8());
}

QString visible(const QString &text)
{
    const auto isControl = [](QChar c) {
        return (c.unicode() < 0x20 && c != u'\n' && c != u'\t') || (c.unicode() >= 0x7F && c.unicode() < 0xA0);
    };
    if (std::none_of(text.begin(), text.end(), isControl))
        return text;
    QString result;
    for (const QChar c : text)
        result += isControl(c) ? QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0')) : QString(c);
    return result;
}

QString seconds(qint64 milliseconds)
{
    return QStringLiteral("%1 s").arg(static_cast<double>(milliseconds) / 1000.0);
}

} // namespace Vantle::Tool::Console
