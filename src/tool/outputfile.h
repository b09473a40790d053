#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// Files that the tool writes: all of them go through here, the script that
/// grows while it is recorded aside (scriptfile.h).
namespace Vantle::Tool {

/// Writes \p content in place of what \p path holds: wholly, and with the disk
/// when this returns, or not at all, so that a disk that is full costs nothing.
/// A link stays, and what it leads to is written; so are devices, pipes, and
/// the tool's own streams, such as /dev/stdout, which take what comes. A pipe
/// that nobody reads is waited for some seconds. Empty, or why it could not,
/// with the file's name.
QString writeOutput(const QString &path, const QByteArray &content);

/// Like writeOutput(), but makes the folders that the file lies in.
QString writeOutputWithFolders(const QString &path, const QByteArray &content);

/// Empty, or why writeOutput() would fail, as far as that shows ahead of it.
/// Writes nothing.
QString outputError(const QString &path);

/// A file that is made beside another one to take its place.
class Replacement
{
public:
    /// Nothing has been made yet. \p target is a regular file, or is none yet.
    explicit Replacement(const QByteArray &target);
    /// Removes the file again, unless commit() was called. Leaves the descriptor open.
    ~Replacement();
    Q_DISABLE_COPY_MOVE(Replacement)

    /// Makes the file, with the mode of the old one. Gives a descriptor for
    /// writing and appending, or -1 and the reason in errno.
    int open();
    /// Puts it on the disk and in the place of the old one. False, with the reason in errno, on failure.
    bool commit();

private:
    QByteArray m_target;
    QByteArray m_name;
    int m_descriptor = -1;
};

/// What \p path leads to at the end of all links, whether or not it is there.
QByteArray linkTarget(const QString &path);

/// Whether another file can take the place of \p target, which is not a link:
/// one that is a regular file of this user's with a single name, or is none
/// yet, in a directory that can be written.
bool canBeReplaced(const QByteArray &target);

} // namespace Vantle::Tool
