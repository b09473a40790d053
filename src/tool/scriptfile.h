#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>

namespace Vantle::Tool {

/// A script that is being written. Every line is on the disk before append()
/// returns, so that a crash of anything costs nothing.
class ScriptFile
{
public:
    ~ScriptFile();

    /// Opens \p path for writing and leaves what is in it alone until the first
    /// line is written: a recording that never begins destroys nothing, and
    /// leaves no empty file behind. False if the file can't be written.
    bool open(const QString &path);

    /// Replaces the content with nothing, then adds lines. False on failure.
    bool append(const QString &line);

    /// What went wrong, with the file's name.
    QString errorString() const { return m_error; }

private:
    bool fail();

    QFile m_file;
    QString m_error;
    bool m_created = false;
    bool m_begun = false;
};

} // namespace Vantle::Tool
