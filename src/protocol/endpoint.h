#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include <memory>
#include <optional>

namespace Vantle::Protocol {

/// Environment variables by which the tool tells the agent where to call and
/// how to show that it was sent.
namespace Variable {
inline constexpr char socket[] = "VANTLE_AGENT_SOCKET";
inline constexpr char token[] = "VANTLE_AGENT_TOKEN";
} // namespace Variable

/// A fresh token: 32 bytes from the system's random generator, as 64 lower-case
/// hexadecimal digits.
QByteArray createToken();

/// Compares two tokens in a time that depends on their lengths only. Empty
/// tokens are never the same.
bool sameToken(QByteArrayView one, QByteArrayView other);

/// Who is at the other end of a local socket, as the system says.
struct Peer
{
    qint64 process = 0; ///< 0 if it lives where its number can't be seen from
    bool isSameUser = false;
};

/// The process that connected to a socket of a server, or that made the server
/// which a client is connected to. Nothing if the system does not say.
std::optional<Peer> peerOf(qintptr socketDescriptor);

/// A directory that only this user can enter, made for one socket and removed
/// with this object; what a tool that was killed has left behind is removed by
/// the next. It stands in XDG_RUNTIME_DIR where that can be used, else in the
/// directory for temporary files: both only if nobody but this user and root
/// could put something else in its place.
class SocketDirectory
{
public:
    SocketDirectory();
    ~SocketDirectory();
    Q_DISABLE_COPY_MOVE(SocketDirectory)

    bool isValid() const;

    /// Why there is no directory; empty if there is one.
    QString errorString() const;

    /// Full path for the socket, short enough for the system's limit.
    QString socketPath() const;

private:
    void makeIn(const QString &parent);

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_error;
    int m_lock = -1;
};

} // namespace Vantle::Protocol
