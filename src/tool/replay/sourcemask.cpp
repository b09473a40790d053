#include "tool/replay/sourcemask.h"

#include <QtCore/QRegularExpression>

namespace Vantle::Tool::Replay {

namespace {

/// Walks over a source text and copies what is code.
class Mask
{
public:
    explicit Mask(const QString &source) : m_source(source), m_result(source) {}

    QString run()
    {
        while (m_at < m_source.size())
            step();
        return m_result;
    }

private:
    QChar current() const { return m_source.at(m_at); }
    bool startsWith(const char *text) const
    {
        return QStringView(m_source).sliced(m_at).startsWith(QLatin1String(text));
    }

    void step()
    {
        const QChar c = current();
        if (startsWith("//"))
            blankLineComment();
        else if (startsWith("/*"))
            blankBlockComment();
        else if (c == QLatin1Char('"') || c == QLatin1Char('\'') || c == QLatin1Char('`'))
            blankLiteral(c);
        else if (c == QLatin1Char('/') && regularExpressionMayStart())
            blankLiteral(c);
        else
            ++m_at;
    }

    void blank()
    {
        if (current() != QLatin1Char('\n') && current() != QLatin1Char('\r'))
            m_result[m_at] = QLatin1Char(' ');
        ++m_at;
    }

    void blankLineComment()
    {
        while (m_at < m_source.size() && current() != QLatin1Char('\n'))
            blank();
    }

    void blankBlockComment()
    {
        const qsizetype close = m_source.indexOf(QLatin1String("*/"), m_at + 2);
        const qsizetype end = close < 0 ? m_source.size() : close + 2;
        while (m_at < end)
            blank();
    }

    /// From the opening quote (kept) to the closing one (kept). Only a template
    /// goes on behind the end of a line.
    void blankLiteral(QChar quote)
    {
        bool inCharacterClass = false;
        ++m_at;
        while (m_at < m_source.size()) {
            const QChar c = current();
            if (c == QLatin1Char('\n') && quote != QLatin1Char('`'))
                return;
            if (c == quote && !inCharacterClass) {
                ++m_at;
                return;
            }
            if (quote == QLatin1Char('/') && (c == QLatin1Char('[') || c == QLatin1Char(']')))
                inCharacterClass = c == QLatin1Char('[');
            blank();
            if (c == QLatin1Char('\\') && m_at < m_source.size())
                blank();
        }
    }

    /// A slash divides behind a value and opens a regular expression elsewhere.
    bool regularExpressionMayStart() const
    {
        qsizetype before = m_at - 1;
        while (before >= 0 && m_result.at(before).isSpace())
            --before;
        if (before < 0)
            return true;
        const QChar c = m_result.at(before);
        if (!c.isLetterOrNumber() && c != QLatin1Char('_') && c != QLatin1Char('$'))
            return !QStringLiteral(")]}\"'`/").contains(c);
        static const QRegularExpression keyword(QStringLiteral("\\b(return|typeof|case|in|of|delete|void|throw|new)$"));
        return keyword.match(m_result.first(before + 1)).hasMatch();
    }

    const QString &m_source;
    QString m_result;
    qsizetype m_at = 0;
};

} // namespace

QString maskedSource(const QString &source)
{
    return Mask(source).run();
}

} // namespace Vantle::Tool::Replay
