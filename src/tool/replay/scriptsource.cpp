#include "tool/replay/scriptsource.h"

#include "tool/replay/importrewriting.h"
#include "tool/replay/sourcemask.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringDecoder>

#include <algorithm>

namespace Vantle::Tool::Replay {

namespace {

constexpr int longestStatement = 5;

qsizetype indentationOf(const QString &line)
{
    const auto first = std::find_if(line.cbegin(), line.cend(), [](QChar c) { return !c.isSpace(); });
    return first - line.cbegin();
}

int bracketBalance(QStringView code)
{
    int balance = 0;
    for (const QChar c : code) {
        if (QStringLiteral("([{").contains(c))
            ++balance;
        else if (QStringLiteral(")]}").contains(c))
            --balance;
    }
    return balance;
}

QRegularExpression callOf(const QString &name)
{
    return QRegularExpression(QStringLiteral("(?<![\\w$.])%1\\s*\\(").arg(QRegularExpression::escape(name)));
}

QString withoutIndentation(const QStringList &lines)
{
    qsizetype shared = indentationOf(lines.first());
    QStringList result;
    for (const QString &line : lines) {
        if (!line.trimmed().isEmpty())
            shared = std::min(shared, indentationOf(line));
    }
    for (const QString &line : lines)
        result.append(line.mid(shared));
    return result.join(QLatin1Char('\n'));
}

} // namespace

ScriptSource::ScriptSource(const QString &text) : m_text(text), m_code(maskedSource(text))
{
    m_lines = QString(text).remove(QLatin1Char('\r')).split(QLatin1Char('\n'));
    int count = 0;
    const QStringList codeLines = m_code.split(QLatin1Char('\n'));
    for (const QString &line : codeLines) {
        count += line.trimmed().isEmpty() ? 0 : 1;
        m_codeLines.append(count);
    }
}

std::optional<ScriptSource> ScriptSource::read(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read \"%1\": %2").arg(path, file.errorString());
        return std::nullopt;
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder.decode(file.readAll());
    if (file.error() != QFile::NoError || decoder.hasError()) {
        const QString reason = decoder.hasError() ? QStringLiteral("it is no UTF-8 text") : file.errorString();
        *error = QStringLiteral("cannot read \"%1\": %2").arg(path, reason);
        return std::nullopt;
    }
    return ScriptSource(text);
}

QString ScriptSource::statementAt(int number) const
{
    const QStringList code = m_code.split(QLatin1Char('\n'));
    QStringList lines;
    int open = 0;
    for (int i = number; i < number + longestStatement && i <= m_lines.size(); ++i) {
        lines.append(line(i));
        open += bracketBalance(code.value(i - 1));
        if (open <= 0)
            break;
    }
    // The body of a loop or a function is no part of the statement's line.
    const bool opensBlock = code.value(number - 1).trimmed().endsWith(QLatin1Char('{'));
    if (lines.isEmpty())
        return QString();
    return opensBlock || open > 0 ? lines.first().trimmed() : withoutIndentation(lines);
}

int ScriptSource::columnOfCall(int number, const QString &name) const
{
    const QString code = m_code.split(QLatin1Char('\n')).value(number - 1);
    const auto match = name.isEmpty() ? QRegularExpressionMatch() : callOf(name).match(code);
    return static_cast<int>(match.hasMatch() ? match.capturedStart() : indentationOf(line(number))) + 1;
}

int ScriptSource::codeLinesUpTo(int number) const
{
    if (m_codeLines.isEmpty() || number < 1)
        return 0;
    return m_codeLines.at(std::min<qsizetype>(number, m_codeLines.size()) - 1);
}

bool ScriptSource::calls(const QString &name) const
{
    return m_code.contains(callOf(name));
}

bool ScriptSource::callsWithArguments(const QString &name) const
{
    return m_code.contains(QRegularExpression(callOf(name).pattern() + QStringLiteral("\\s*[^\\s)]")));
}

QString ScriptSource::asPlainScript(const QString &importer) const
{
    return withoutModuleSyntax(m_text, m_code, importer);
}

} // namespace Vantle::Tool::Replay
