#include "tool/stringliteral.h"

#include <algorithm>

namespace Vantle::Tool {

namespace {

bool isReadable(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph: return false;
    default: return true;
    }
}

QString numericEscape(char32_t character)
{
    if (QChar::requiresSurrogates(character))
        return QStringLiteral("\\u{%1}").arg(static_cast<uint>(character), 0, 16);
    return QStringLiteral("\\u%1").arg(static_cast<uint>(character), 4, 16, QLatin1Char('0'));
}

QString escaped(char32_t character)
{
    switch (character) {
    case U'"': return QStringLiteral("\\\"");
    case U'\\': return QStringLiteral("\\\\");
    case U'\n': return QStringLiteral("\\n");
    case U'\r': return QStringLiteral("\\r");
    case U'\t': return QStringLiteral("\\t");
    case U'\b': return QStringLiteral("\\b");
    case U'\f': return QStringLiteral("\\f");
    default: break;
    }
    return isReadable(character) ? QString::fromUcs4(&character, 1) : numericEscape(character);
}

} // namespace

QString stringLiteral(const QString &text)
{
    QString literal(QLatin1Char('"'));
    for (qsizetype i = 0; i < text.size(); ++i) {
        // A lone surrogate stands for itself and is escaped as that.
        char32_t character = text.at(i).unicode();
        if (text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            character = QChar::surrogateToUcs4(text.at(i), text.at(i + 1));
            ++i;
        }
        literal += escaped(character);
    }
    return literal + QLatin1Char('"');
}

QString plainOrQuoted(const QString &word)
{
    const auto isHarmless = [](QChar c) {
        return (c.unicode() < 0x80 && c.isLetterOrNumber()) || QStringLiteral("_-./:=,+@%").contains(c);
    };
    const bool isPlain = !word.isEmpty() && std::all_of(word.cbegin(), word.cend(), isHarmless);
    return isPlain ? word : stringLiteral(word);
}

QStringList plainLines(const QString &text)
{
    QStringList lines;
    const QStringList own = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (QString line : own) {
        for (QChar &c : line) {
            if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
                c = QLatin1Char(' ');
        }
        if (!line.trimmed().isEmpty())
            lines.append(line.trimmed());
    }
    return lines;
}

} // namespace Vantle::Tool
