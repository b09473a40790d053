#pragma once

#include <QtCore/QString>

namespace Vantle::Tool {

/// A script that is being written. Every line is with the system when append()
/// returns, so that no crash of a program costs a line, this one included.
class ScriptFile
{
public:
    ScriptFile() = default;
    ~ScriptFile();
    Q_DISABLE_COPY_MOVE(ScriptFile)

    /// Opens \p path for writing and leaves what is in it alone until the first
    /// line is written: a recording that never begins destroys nothing, and
    /// leaves no empty file behind. False if the file can't be written, or if
    /// another recording is writing to it.
    bool open(const QString &path);

    /// Adds a line; the first one replaces the old content, which stays if there
    /// is no room for it. False on failure.
    bool append(const QString &line);

    /// Has the system put all lines on the disk, where a power failure leaves
    /// them. Takes as long as the disk does. False on failure.
    bool synchronise();

    /// What went wrong, with the file's name.
    QString errorString() const { return m_error; }

private:
    bool begin(const QByteArray &line);
    /// Remembers errno as the reason; gives false.
    bool fail();

    QString m_path;
    QString m_error;
    int m_descriptor = -1;
    bool m_created = false;
    bool m_begun = false;
};

} // namespace Vantle::Tool
