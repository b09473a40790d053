#include "tool/outputfile.h"

#include "tool/descriptor.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Vantle::Tool {

namespace {

constexpr mode_t newFileMode = 0666;
constexpr int mostLinks = 40;

constexpr std::chrono::seconds readerLimit(10);
constexpr std::chrono::milliseconds readerInterval(50);

QString failure(const QString &path)
{
    return QStringLiteral("cannot write \"%1\": %2").arg(path, qt_error_string(errno));
}

QByteArray directoryOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : slash == 0 ? QByteArray("/") : path.left(slash);
}

mode_t maskedMode()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return newFileMode & ~mask;
}

/// Writes into a regular file that can't be replaced. Room is made first: what
/// was there stays if there isn't enough.
bool writeInPlace(int descriptor, qint64 oldSize, const QByteArray &content)
{
    if (const int error = ::posix_fallocate(descriptor, 0, std::max<qint64>(content.size(), 1))) {
        if (error != EINVAL && error != EOPNOTSUPP) {
            // What was added can be taken back in any case.
            [[maybe_unused]] const int ignored = ::ftruncate(descriptor, oldSize);
            errno = error;
            return false;
        }
    }
    return writeWhole(descriptor, content) && ::ftruncate(descriptor, content.size()) == 0 && ::fsync(descriptor) == 0;
}

bool replace(const QByteArray &target, const QByteArray &content)
{
    Replacement replacement(target);
    const int descriptor = replacement.open();
    if (descriptor < 0)
        return false;
    const bool isWritten = writeWhole(descriptor, content) && replacement.commit();
    const int error = errno;
    ::close(descriptor);
    errno = error;
    return isWritten;
}

/// Opens what can't be replaced. A pipe is given some time to find its reader.
int openForWriting(const QByteArray &target)
{
    const auto end = std::chrono::steady_clock::now() + readerLimit;
    for (;;) {
        const int descriptor = ::open(target.constData(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (descriptor >= 0) {
            ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
            return descriptor;
        }
        if (errno != ENXIO || std::chrono::steady_clock::now() > end)
            return -1;
        std::this_thread::sleep_for(readerInterval);
    }
}

/// The one of the tool's own streams that is the file of \p status; -1 if none is.
int ownStream(const struct stat &status)
{
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
        struct stat own = {};
        if (::fstat(stream, &own) == 0 && own.st_dev == status.st_dev && own.st_ino == status.st_ino)
            return stream;
    }
    return -1;
}

bool write(const QByteArray &target, const struct stat &status, const QByteArray &content)
{
    const int descriptor = openForWriting(target);
    if (descriptor < 0)
        return false;
    const bool isWritten = S_ISREG(status.st_mode) ? writeInPlace(descriptor, status.st_size, content)
                                                   : writeWhole(descriptor, content);
    const int error = errno;
    const bool isClosed = ::close(descriptor) == 0;
    if (!isWritten)
        errno = error;
    return isWritten && isClosed;
}

} // namespace

QByteArray linkTarget(const QString &path)
{
    QByteArray name = QFile::encodeName(path);
    for (int i = 0; i < mostLinks; ++i) {
        QByteArray next(PATH_MAX, '\0');
        const ssize_t size = ::readlink(name.constData(), next.data(), static_cast<size_t>(next.size()));
        if (size <= 0)
            break;
        next.truncate(size);
        name = next.startsWith('/') ? next : directoryOf(name) + '/' + next;
    }
    return name;
}

bool canBeReplaced(const QByteArray &target)
{
    struct stat status = {};
    if (::lstat(target.constData(), &status) == 0
        && (!S_ISREG(status.st_mode) || status.st_nlink != 1 || status.st_uid != ::geteuid()
            || ::access(target.constData(), W_OK) != 0))
        return false;
    return ::access(directoryOf(target).constData(), W_OK | X_OK) == 0;
}

QString writeOutput(const QString &path, const QByteArray &content)
{
    if (path.contains(QChar::Null)) {
        errno = EINVAL;
        return failure(path);
    }
    struct stat status = {};
    const bool isThere = ::stat(QFile::encodeName(path).constData(), &status) == 0;
    if (isThere) {
        if (const int stream = ownStream(status); stream >= 0)
            return writeWhole(stream, content) ? QString() : failure(path);
    }
    const QByteArray target = linkTarget(path);
    const bool isWritten = !isThere || (S_ISREG(status.st_mode) && canBeReplaced(target))
        ? replace(target, content)
        : write(target, status, content);
    return isWritten ? QString() : failure(path);
}

QString writeOutputWithFolders(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    return writeOutput(path, content);
}

QString outputError(const QString &path)
{
    const QByteArray target = linkTarget(path);
    struct stat status = {};
    bool isWritable = false;
    if (path.contains(QChar::Null)) {
        errno = EINVAL;
    } else if (::stat(target.constData(), &status) == 0) {
        isWritable = !S_ISDIR(status.st_mode) && ::access(target.constData(), W_OK) == 0;
        if (S_ISDIR(status.st_mode))
            errno = EISDIR;
    } else if (errno == ENOENT) {
        isWritable = ::access(directoryOf(target).constData(), W_OK | X_OK) == 0;
    }
    return isWritable ? QString() : failure(path);
}

Replacement::Replacement(const QByteArray &target) : m_target(target)
{
}

Replacement::~Replacement()
{
    if (!m_name.isEmpty())
        ::unlink(m_name.constData());
}

int Replacement::open()
{
    QByteArray name = directoryOf(m_target) + "/.vantle-XXXXXX";
    m_descriptor = ::mkostemp(name.data(), O_APPEND | O_CLOEXEC);
    if (m_descriptor < 0)
        return -1;
    m_name = name;
    struct stat old = {};
    const bool isThere = ::stat(m_target.constData(), &old) == 0;
    ::fchmod(m_descriptor, isThere ? old.st_mode & 07777 : maskedMode());
    return m_descriptor;
}

bool Replacement::commit()
{
    // Some file systems can't, and lose nothing by it.
    if (::fsync(m_descriptor) != 0 && errno != EINVAL && errno != ENOTSUP)
        return false;
    if (::rename(m_name.constData(), m_target.constData()) != 0)
        return false;
    m_name.clear();
    return true;
}

} // namespace Vantle::Tool
