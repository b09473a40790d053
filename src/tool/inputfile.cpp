#include "tool/inputfile.h"

#include <QtCore/QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Vantle::Tool {

std::optional<QByteArray> readInput(const QString &path, qint64 limit, QString *error)
{
    if (path.contains(QChar::Null)) {
        *error = QStringLiteral("a name of a file can't hold the character NUL");
        return std::nullopt;
    }
    // A pipe without a writer would be waited for.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0) {
        *error = qt_error_string(errno);
        return std::nullopt;
    }
    QFile file;
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        *error = QStringLiteral("it is no regular file");
        ::close(descriptor);
        return std::nullopt;
    }
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        *error = file.errorString();
        ::close(descriptor);
        return std::nullopt;
    }
    QByteArray content = file.read(limit + 1);
    if (file.error() != QFileDevice::NoError) {
        *error = file.errorString();
        return std::nullopt;
    }
    if (content.size() > limit) {
        *error = QStringLiteral("it is larger than %1 MB").arg(limit >> 20);
        return std::nullopt;
    }
    return content;
}

} // namespace Vantle::Tool
