#include "tool/console.h"

#include <cerrno>

#include <unistd.h>

namespace Vantle::Tool::Console {

namespace {

bool writeAll(int descriptor, const QByteArray &bytes)
{
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t result =
            ::write(descriptor, bytes.constData() + written, static_cast<size_t>(bytes.size() - written));
        if (result >= 0)
            written += result;
        else if (errno != EINTR)
            return false;
    }
    return true;
}

} // namespace

bool print(const QString &text)
{
    return writeAll(STDOUT_FILENO, text.toUtf8());
}

void say(const QString &message)
{
    writeAll(STDERR_FILENO, QStringLiteral("vantle: %1\n").arg(message).toUtf8());
}

QString seconds(qint64 milliseconds)
{
    return QStringLiteral("%1 s").arg(static_cast<double>(milliseconds) / 1000.0);
}

} // namespace Vantle::Tool::Console
