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

void ScriptWriter::end(const QString &remark)
{
    if (m_begun)
        writeLine(QStringLiteral("// ") + remark);
    m_begun = false;
}

void ScriptWriter::writeLine(const QString &line)
{
    const bool printed = Console::print(line + QLatin1Char('\n'));
    const bool filed = !m_file || m_file->append(line);
    if (!m_error.isEmpty())
        return;
    if (!filed)
        m_error = m_file->errorString();
    else if (!printed && !m_file)
        m_error = QStringLiteral("cannot write the script to standard output");
}

} // namespace Vantle::Tool
