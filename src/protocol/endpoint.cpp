#include "protocol/endpoint.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>

#include <array>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Vantle::Protocol {

namespace {

// A socket's path has room for 107 bytes, and the server makes the socket
// under a longer, temporary name beside it first.
constexpr qsizetype longestParent = 60;

// Held by whoever uses the directory, so that one of a tool that was killed is known.
const QString lockName = QStringLiteral("in-use");

/// Whether nobody but this user and root can change what \p directory holds
/// of this user's: where others can write, each keeps what is his own.
bool isSafe(const QByteArray &directory)
{
    struct stat status = {};
    if (::stat(directory.constData(), &status) != 0 || !S_ISDIR(status.st_mode))
        return false;
    const bool isTrusted = status.st_uid == ::geteuid() || status.st_uid == 0;
    return isTrusted && ((status.st_mode & (S_IWGRP | S_IWOTH)) == 0 || (status.st_mode & S_ISVTX) != 0);
}

/// The same for all directories on the way to \p path.
bool isSafeOnAllTheWay(const QString &path)
{
    for (QString way = QFileInfo(path).canonicalFilePath(); !way.isEmpty(); way = QFileInfo(way).path()) {
        if (!isSafe(QFile::encodeName(way)))
            return false;
        if (way == QLatin1String("/"))
            return true;
    }
    return false;
}

bool isUsableParent(const QString &path)
{
    const QFileInfo info(path);
    return !path.isEmpty() && info.isAbsolute() && info.isDir() && info.isWritable()
        && QFile::encodeName(path).size() <= longestParent && isSafeOnAllTheWay(path);
}

/// XDG_RUNTIME_DIR has to be this user's own, which no sticky bit makes up for.
bool isUsableRuntimeDirectory(const QString &path)
{
    struct stat status = {};
    return isUsableParent(path) && ::stat(QFile::encodeName(path).constData(), &status) == 0
        && (status.st_uid == ::geteuid() || (status.st_mode & S_ISVTX) != 0);
}

/// Empty if there is none.
QString parentDirectory()
{
    const QString runtimeDirectory = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (isUsableRuntimeDirectory(runtimeDirectory))
        return runtimeDirectory;
    for (const QString &directory : {QDir::tempPath(), QStringLiteral("/tmp")}) {
        if (isUsableParent(directory))
            return directory;
    }
    return QString();
}

/// Makes the lock of \p directory under its name, so that nobody sees it unlocked.
/// -1 if that can't be done: the directory stays then, whatever happens.
int lockDirectory(const QString &directory)
{
    const QByteArray name = QFile::encodeName(directory + u'/' + lockName);
    const QByteArray first = name + "-new";
    const int descriptor = ::open(first.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return -1;
    if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 && ::rename(first.constData(), name.constData()) == 0)
        return descriptor;
    ::unlink(first.constData());
    ::close(descriptor);
    return -1;
}

/// Whether the tool that made \p directory has gone without removing it.
bool isLeftBehind(const QString &directory)
{
    struct stat status = {};
    if (::lstat(QFile::encodeName(directory).constData(), &status) != 0 || !S_ISDIR(status.st_mode)
        || status.st_uid != ::geteuid())
        return false;
    const QByteArray name = QFile::encodeName(directory + u'/' + lockName);
    const int descriptor = ::open(name.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0)
        return false;
    const bool isFree = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    ::close(descriptor);
    return isFree;
}

void removeLeftBehind(const QString &parent)
{
    const QDir directory(parent);
    const QStringList names = directory.entryList({QStringLiteral("vantle-??????")}, QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        const QString path = directory.filePath(name);
        if (isLeftBehind(path))
            QDir(path).removeRecursively();
    }
}

} // namespace

QByteArray createToken()
{
    std::array<quint32, 8> words{};
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    const QByteArrayView bytes(reinterpret_cast<const char *>(words.data()), sizeof(words));
    return bytes.toByteArray().toHex();
}

bool sameToken(QByteArrayView one, QByteArrayView other)
{
    if (one.isEmpty() || one.size() != other.size())
        return false;
    unsigned difference = 0;
    for (qsizetype i = 0; i < one.size(); ++i)
        difference |= static_cast<unsigned char>(one[i] ^ other[i]);
    return difference == 0;
}

std::optional<Peer> peerOf(qintptr socketDescriptor)
{
    struct ucred credentials = {};
    socklen_t size = sizeof(credentials);
    if (::getsockopt(static_cast<int>(socketDescriptor), SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0)
        return std::nullopt;
    return Peer{credentials.pid, credentials.uid == ::geteuid()};
}

SocketDirectory::SocketDirectory()
{
    const QString parent = parentDirectory();
    if (parent.isEmpty()) {
        m_error = QStringLiteral("there is no directory for the agent's socket that nobody else could tamper with: set "
                                 "XDG_RUNTIME_DIR to one of your own, with a short name, that others can't write");
    } else {
        makeIn(parent);
    }
}

SocketDirectory::~SocketDirectory()
{
    m_directory.reset();
    if (m_lock >= 0)
        ::close(m_lock);
}

void SocketDirectory::makeIn(const QString &parent)
{
    removeLeftBehind(parent);
    m_directory = std::make_unique<QTemporaryDir>(parent + QStringLiteral("/vantle-XXXXXX"));
    if (m_directory->isValid()) {
        m_lock = lockDirectory(m_directory->path());
    } else {
        m_error = QStringLiteral("cannot make a directory for the agent's socket in %1: %2")
                      .arg(parent, m_directory->errorString());
    }
}

bool SocketDirectory::isValid() const
{
    return m_error.isEmpty();
}

QString SocketDirectory::errorString() const
{
    return m_error;
}

QString SocketDirectory::socketPath() const
{
    return isValid() ? m_directory->filePath(QStringLiteral("agent")) : QString();
}

} // namespace Vantle::Protocol
