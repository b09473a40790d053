#include "tool/replay/scriptsource.h"

#include "tool/inputfile.h"
#include "tool/replay/importrewriting.h"
#include "tool/replay/sourcemask.h"

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

/// Where in a line of \p code, which is masked, another statement begins behind a
/// semicolon, given the brackets that were open ahead of it; what is open behind it
/// is left in \p open. Semicolons in the head of a loop end no statement.
QList<qsizetype> statementStarts(QStringView code, QString *open)
{
    QList<qsizetype> starts;
    for (qsizetype i = 0; i < code.size(); ++i) {
        const QChar c = code.at(i);
        if (QStringLiteral("([{").contains(c))
            open->append(c);
        else if (QStringLiteral(")]}").contains(c))
            open->chop(1);
        const bool endsStatement = c == QLatin1Char(';') && (open->isEmpty() || open->back() == QLatin1Char('{'));
        if (endsStatement && !code.sliced(i + 1).trimmed().isEmpty())
            starts.append(i + 1);
    }
    return starts;
}

/// The statements of each line of \p script but the line ahead of the first one.
QList<QStringList> statementLines(const QString &script)
{
    const QStringList lines = script.split(QLatin1Char('\n')).mid(1);
    const QStringList code = maskedSource(lines.join(QLatin1Char('\n'))).split(QLatin1Char('\n'));
    QList<QStringList> result;
    QString open;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QStringList statements;
        qsizetype at = 0;
        const QList<qsizetype> starts = statementStarts(code.at(i), &open);
        for (const qsizetype start : starts) {
            statements.append(lines.at(i).mid(at, start - at));
            at = start;
        }
        statements.append(lines.at(i).mid(at));
        result.append(statements);
    }
    return result;
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
    const QList<QStringList> statements = statementLines(asPlainScript(QStringLiteral("$")));
    for (qsizetype i = 0; i < statements.size(); ++i) {
        int column = 1;
        for (const QString &statement : statements.at(i)) {
            m_places.append({static_cast<int>(i) + 1, column});
            // Where a module's keywords were taken out, columns are not those of the text.
            if (statements.at(i).join(QString()) == m_lines.value(i))
                column += static_cast<int>(statement.size());
        }
    }
}

std::optional<ScriptSource> ScriptSource::read(const QString &path, QString *error)
{
    QString reason;
    const auto content = readInput(path, longestTextFile, &reason);
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = content ? decoder.decode(*content) : QString();
    if (decoder.hasError())
        reason = QStringLiteral("it is no UTF-8 text");
    if (!reason.isEmpty()) {
        *error = QStringLiteral("cannot read \"%1\": %2").arg(path, reason);
        return std::nullopt;
    }
    return ScriptSource(text);
}

QString ScriptSource::statementAt(int number, int column) const
{
    const QStringList code = m_code.split(QLatin1Char('\n'));
    if (const int end = endOfStatement(number, column); end > 0)
        return line(number).mid(column - 1, end - column).trimmed();
    QStringList lines;
    int open = 0;
    for (int i = number; i < number + longestStatement && i <= m_lines.size(); ++i) {
        const int skipped = i == number ? column - 1 : 0;
        lines.append(line(i).mid(skipped));
        open += bracketBalance(QStringView(code.value(i - 1)).mid(skipped));
        if (open <= 0)
            break;
    }
    // The body of a loop or a function is no part of the statement's line.
    const bool opensBlock = code.value(number - 1).trimmed().endsWith(QLatin1Char('{'));
    if (lines.isEmpty())
        return QString();
    return opensBlock || open > 0 ? lines.first().trimmed() : withoutIndentation(lines);
}

/// The column behind the statement that begins there, if another one follows in the
/// line; else 0.
int ScriptSource::endOfStatement(int line, int column) const
{
    const auto next = std::find_if(m_places.cbegin(), m_places.cend(),
                                   [&](const Place &place) { return place.line == line && place.column > column; });
    return next == m_places.cend() ? 0 : next->column;
}

int ScriptSource::columnOfCall(int number, const QString &name, int from) const
{
    const QString code = m_code.split(QLatin1Char('\n')).value(number - 1);
    const auto match = name.isEmpty() ? QRegularExpressionMatch() : callOf(name).match(code, from - 1);
    if (match.hasMatch())
        return static_cast<int>(match.capturedStart()) + 1;
    return static_cast<int>(indentationOf(line(number).mid(from - 1))) + from;
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

QString ScriptSource::asStatementLines(const QString &importer) const
{
    const QString script = asPlainScript(importer);
    QString text = script.section(QLatin1Char('\n'), 0, 0);
    const QList<QStringList> lines = statementLines(script);
    for (const QStringList &statements : lines)
        text += QLatin1Char('\n') + statements.join(QLatin1Char('\n'));
    return text;
}

ScriptSource::Place ScriptSource::placeOf(int statementLine) const
{
    return statementLine >= 1 && statementLine <= m_places.size() ? m_places.at(statementLine - 1)
                                                                  : Place{statementLine, 1};
}

} // namespace Vantle::Tool::Replay
