#include "tool/replay/importrewriting.h"

#include "tool/stringliteral.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

namespace Vantle::Tool::Replay {

namespace {

/// What stands between `import` and `from`.
struct ImportClause
{
    QString defaultName;
    QString everything;   ///< name behind `* as`
    QStringList names;    ///< as exported
    QStringList patterns; ///< `exported: local`
};

ImportClause parseClause(const QString &text)
{
    ImportClause clause;
    static const QRegularExpression star(QStringLiteral("\\*\\s*as\\s+([\\w$]+)"));
    static const QRegularExpression braces(QStringLiteral("\\{([^}]*)\\}"));
    static const QRegularExpression first(QStringLiteral("^\\s*([\\w$]+)"));
    static const QRegularExpression as(QStringLiteral("\\s+as\\s+"));
    clause.everything = star.match(text).captured(1);
    clause.defaultName = first.match(text).captured(1);
    const QStringList parts = braces.match(text).captured(1).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const QStringList sides = part.trimmed().split(as);
        if (sides.first().isEmpty())
            continue;
        clause.names.append(sides.first());
        clause.patterns.append(sides.first() + QStringLiteral(": ") + sides.last());
    }
    if (!clause.defaultName.isEmpty()) {
        clause.names.append(QStringLiteral("default"));
        clause.patterns.append(QStringLiteral("default: ") + clause.defaultName);
    }
    return clause;
}

QString importCall(const QString &importer, const QString &module, const ImportClause &clause)
{
    QStringList names;
    for (const QString &name : clause.names)
        names.append(stringLiteral(name));
    return QStringLiteral("%1(%2, [%3])").arg(importer, module, names.join(QStringLiteral(", ")));
}

QString importStatement(const QString &importer, const QString &module, const ImportClause &clause)
{
    const QString call = importCall(importer, module, clause);
    if (!clause.everything.isEmpty() && clause.defaultName.isEmpty())
        return QStringLiteral("const %1 = %2;").arg(clause.everything, call);
    if (!clause.everything.isEmpty())
        return QStringLiteral("const %1 = %2, %3 = %1.default;").arg(clause.everything, call, clause.defaultName);
    if (clause.patterns.isEmpty())
        return call + QLatin1Char(';');
    return QStringLiteral("const { %1 } = %2;").arg(clause.patterns.join(QStringLiteral(", ")), call);
}

/// One piece of the text and what takes its place.
struct Replacement
{
    qsizetype begin = 0;
    qsizetype length = 0;
    QString text;
};

QList<Replacement> importReplacements(const QString &text, const QString &code, const QString &importer)
{
    // Literals are blank in the code, but for their quotes.
    static const QRegularExpression statement(QStringLiteral(
        "(?<=^|[;\\n}])([ \\t]*)import(?:\\s*([\\w$*{][^;\"'()]*?)\\bfrom)?\\s*([\"'] *[\"'])[ \\t]*;?"));
    QList<Replacement> result;
    auto matches = statement.globalMatch(code);
    while (matches.hasNext()) {
        const auto match = matches.next();
        const QString module = text.mid(match.capturedStart(3), match.capturedLength(3));
        const QString clause = match.captured(2);
        const QString lineEnds(match.captured().count(QLatin1Char('\n')), QLatin1Char('\n'));
        result.append({match.capturedStart(), match.capturedLength(),
                       match.captured(1) + importStatement(importer, module, parseClause(clause)) + lineEnds});
    }
    return result;
}

QList<Replacement> exportReplacements(const QString &code)
{
    static const QRegularExpression statement(
        QStringLiteral("(?<=^|[;\\n}])([ \\t]*)export\\b(?:\\s+default\\b|\\s*\\{[^}]*\\}[ \\t]*;?)?"));
    QList<Replacement> result;
    auto matches = statement.globalMatch(code);
    while (matches.hasNext()) {
        const auto match = matches.next();
        const QString lineEnds(match.captured().count(QLatin1Char('\n')), QLatin1Char('\n'));
        result.append({match.capturedStart(), match.capturedLength(), match.captured(1) + lineEnds});
    }
    return result;
}

} // namespace

QString withoutModuleSyntax(const QString &text, const QString &code, const QString &importer)
{
    QList<Replacement> replacements = importReplacements(text, code, importer) + exportReplacements(code);
    std::sort(replacements.begin(), replacements.end(),
              [](const Replacement &one, const Replacement &other) { return one.begin > other.begin; });
    QString result = text;
    for (const Replacement &replacement : std::as_const(replacements))
        result.replace(replacement.begin, replacement.length, replacement.text);
    return result;
}

} // namespace Vantle::Tool::Replay
