#include "protocol/endpoint.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>

#include <array>

namespace Vantle::Protocol {

namespace {

// A socket's path has room for 107 bytes, and the server makes the socket
// under a longer, temporary name beside it first.
constexpr qsizetype longestParent = 60;

bool isUsableParent(const QString &path)
{
    const QFileInfo info(path);
    return !path.isEmpty() && info.isAbsolute() && info.isDir() && info.isWritable()
        && QFile::encodeName(path).size() <= longestParent;
}

QString parentDirectory()
{
    const QString runtimeDirectory = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (isUsableParent(runtimeDirectory))
        return runtimeDirectory;
    return isUsableParent(QDir::tempPath()) ? QDir::tempPath() : QStringLiteral("/tmp");
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

SocketDirectory::SocketDirectory()
    : m_directory(std::make_unique<QTemporaryDir>(parentDirectory() + QStringLiteral("/vantle-XXXXXX")))
{
}

bool SocketDirectory::isValid() const
{
    return m_directory->isValid();
}

QString SocketDirectory::errorString() const
{
    if (isValid())
        return QString();
    return QStringLiteral("cannot make a directory for the agent's socket in %1: %2")
        .arg(parentDirectory(), m_directory->errorString());
}

QString SocketDirectory::socketPath() const
{
    return m_directory->filePath(QStringLiteral("agent"));
}

} // namespace Vantle::Protocol
