#pragma once

#include "protocol/messages.h"
#include "tool/scriptfile.h"

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace Vantle::Tool {

/// Writes a recording: to standard output, unless it is to be kept off there,
/// and, if there is one, to a file.
/// Each line is with the system before the call returns, and on the disk when
/// synchronise() or end() has returned.
class ScriptWriter
{
public:
    /// Makes \p path a second place that the script goes to. False if it can't
    /// be written. Nothing is changed in the file before begin().
    bool openFile(const QString &path);

    /// Writes to the file only.
    void keepOffStandardOutput() { m_prints = false; }

    /// Writes the head of the script.
    void begin(const QStringList &programWords, const QDateTime &now);

    /// Writes one statement. False if the statement makes no line of a script.
    bool add(const Protocol::Statement &statement);

    /// Writes a remark as comment lines, at the place where the script is.
    void addComment(const QString &text);

    /// Writes how the recording ended; nothing if it did not begin.
    void end(const QString &remark);

    /// Puts the file on the disk. One call will do for several statements.
    void synchronise();

    /// All lines that were written, and how many these are.
    QString text() const { return m_text; }
    int lineCount() const { return m_lineCount; }

    bool hasFile() const { return m_file != nullptr; }

    /// Number of statements written.
    int count() const { return m_count; }

    /// The first failure to write; empty if there was none. A closed standard
    /// output counts only if there is no file.
    QString errorString() const { return m_error; }

private:
    void writeLine(const QString &line);
    void noteError(const QString &error);

    std::unique_ptr<ScriptFile> m_file;
    QString m_error;
    QString m_text;
    int m_lineCount = 0;
    int m_count = 0;
    bool m_begun = false;
    bool m_prints = true;
};

} // namespace Vantle::Tool
