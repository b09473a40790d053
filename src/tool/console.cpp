#include "tool/console.h"

#include "tool/descriptor.h"

#include <unistd.h>

namespace Vantle::Tool::Console {

bool print(const QString &text)
{
    return writeWhole(STDOUT_FILENO, text.toUtf8());
}

void say(const QString &message)
{
    writeWhole(STDERR_FILENO, QStringLiteral("vantle: %1\n").arg(message).toUtf8());
}

QString seconds(qint64 milliseconds)
{
    return QStringLiteral("%1 s").arg(static_cast<double>(milliseconds) / 1000.0);
}

} // namespace Vantle::Tool::Console
