#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include <memory>

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

/// A directory that only this user can enter, made for one socket and removed
/// with this object. It stands in XDG_RUNTIME_DIR where that can be used, else
/// in the directory for temporary files.
class SocketDirectory
{
public:
    SocketDirectory();

    bool isValid() const;

    /// Why there is no directory; empty if there is one.
    QString errorString() const;

    /// Full path for the socket, short enough for the system's limit.
    QString socketPath() const;

private:
    std::unique_ptr<QTemporaryDir> m_directory;
};

} // namespace Vantle::Protocol
