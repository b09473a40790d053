#include "tool/scriptwriter.h"

#include "tool/console.h"
#include "tool/installation.h"
#include "tool/statementtext.h"
#include "tool/stringliteral.h"

namespace Vantle::Tool {

bool ScriptWriter::openFile(const QString &path)
{
    m_file = std::make_unique<ScriptFile>();
    if (m_file->open(path))
        return true;
    m_error = m_file->errorString();
    return false;
}

void ScriptWriter::begin(const QStringList &programWords, const QDateTime &now)
{
    m_begun = true;
    QStringList words;
    for (const QString &word : programWords)
        words.append(plainOrQuoted(word));
    const QString date = now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODate);
    writeLine(QStringLiteral("// Recorded by vantle ") + toolVersion() + QStringLiteral(" on ") + date);
    writeLine(QStringLiteral("// Program: ") + words.join(QLatin1Char(' ')));
}

bool ScriptWriter::add(const Protocol::Statement &statement)
{
    const auto text = statementText(statement);
    if (!text)
        return false;
    ++m_count;
    writeLine(*text);
    return true;
}

void ScriptWriter::addComment(const QString &text)
{
    if (!m_begun)
        return;
    const QStringList lines = plainLines(text);
    for (const QString &line : lines)
        writeLine(QStringLiteral("// ") + line);
}

void ScriptWriter::end(const QString &remark)
{
    if (!m_begun)
        return;
    writeLine(QStringLiteral("// ") + remark);
    synchronise();
    m_begun = false;
}

void ScriptWriter::synchronise()
{
    if (m_file && m_begun && !m_file->synchronise())
        noteError(m_file->errorString());
}

void ScriptWriter::writeLine(const QString &line)
{
    m_text += line + QLatin1Char('\n');
    ++m_lineCount;
    const bool printed = !m_prints || Console::print(line + QLatin1Char('\n'));
    if (m_file && !m_file->append(line))
        noteError(m_file->errorString());
    else if (!m_file && !printed)
        noteError(QStringLiteral("cannot write the script to standard output"));
}

void ScriptWriter::noteError(const QString &error)
{
    if (m_error.isEmpty())
        m_error = error;
}

} // namespace Vantle::Tool
