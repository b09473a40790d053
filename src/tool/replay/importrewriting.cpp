#include "tool/replay/importrewriting.h"

#include "tool/stringliteral.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>

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

/// The call that takes the place of one statement.
QString importCall(const QString &importer, const QString &module, const QStringList &names, int line)
{
    QStringList literals;
    for (const QString &name : names)
        literals.append(stringLiteral(name));
    return QStringLiteral("%1(%2, [%3], %4)").arg(importer, module, literals.join(QStringLiteral(", "))).arg(line);
}

QString importStatement(const QString &call, const ImportClause &clause)
{
    if (!clause.everything.isEmpty() && clause.defaultName.isEmpty())
        return QStringLiteral("const %1 = %2;").arg(clause.everything, call);
    if (!clause.everything.isEmpty())
        return QStringLiteral("const %1 = %2, %3 = %1.default;").arg(clause.everything, call, clause.defaultName);
    if (clause.patterns.isEmpty())
        return call + QLatin1Char(';');
    return QStringLiteral("const { %1 } = %2;").arg(clause.patterns.join(QStringLiteral(", ")), call);
}

/// One statement: its piece of the text, what stays there, and what comes ahead
/// of everything else.
struct Replacement
{
    qsizetype begin = 0;
    qsizetype length = 0;
    QString text;
    QString hoisted;
};

/// As many line ends as there were.
QString lineEndsOf(const QString &text)
{
    return QString(text.count(QLatin1Char('\n')), QLatin1Char('\n'));
}

/// Walks over the statements of one text. Literals are blank in the code, but
/// for their quotes.
class Rewriting
{
public:
    Rewriting(const QString &text, const QString &code, const QString &importer)
        : m_text(text)
        , m_code(code)
        , m_importer(importer)
    {
    }

    QList<Replacement> run()
    {
        addImports();
        addExportsFromElsewhere();
        addExports();
        std::sort(m_replacements.begin(), m_replacements.end(),
                  [](const Replacement &one, const Replacement &other) { return one.begin < other.begin; });
        return m_replacements;
    }

private:
    QString moduleIn(const QRegularExpressionMatch &match, int group) const
    {
        return m_text.mid(match.capturedStart(group), match.capturedLength(group));
    }

    int lineOf(const QRegularExpressionMatch &match) const
    {
        return static_cast<int>(QStringView(m_text).first(match.capturedEnd(1)).count(QLatin1Char('\n'))) + 1;
    }

    void add(const QRegularExpressionMatch &match, const QString &rest, const QString &hoisted = QString())
    {
        m_replacements.append({match.capturedStart(), match.capturedLength(),
                               match.captured(1) + rest + lineEndsOf(match.captured()), hoisted});
    }

    void addImports()
    {
        static const QRegularExpression statement(QStringLiteral(
            "(?<=^|[;\\n}])([ \\t]*)import(?:\\s*([\\w$*{][^;\"'()]*?)\\bfrom)?\\s*([\"'] *[\"'])[ \\t]*;?"));
        auto matches = statement.globalMatch(m_code);
        while (matches.hasNext()) {
            const auto match = matches.next();
            const ImportClause clause = parseClause(match.captured(2));
            add(match, QString(),
                importStatement(importCall(m_importer, moduleIn(match, 3), clause.names, lineOf(match)), clause));
        }
    }

    /// Nobody imports the script itself: all that is left of such an export is
    /// that the module runs and has these names.
    void addExportsFromElsewhere()
    {
        static const QRegularExpression statement(
            QStringLiteral("(?<=^|[;\\n}])([ \\t]*)export\\s*(?:\\*(?:\\s*as\\s+[\\w$]+)?|(\\{[^}]*\\}))\\s*from\\s*"
                           "([\"'] *[\"'])[ \\t]*;?"));
        auto matches = statement.globalMatch(m_code);
        while (matches.hasNext()) {
            const auto match = matches.next();
            const QStringList names = parseClause(match.captured(2)).names;
            add(match, QString(), importCall(m_importer, moduleIn(match, 3), names, lineOf(match)) + QLatin1Char(';'));
        }
    }

    void addExports()
    {
        static const QRegularExpression statement(QStringLiteral(
            "(?<=^|[;\\n}])([ \\t]*)export\\b(?!\\s*\\*)(?!\\s*\\{[^}]*\\}\\s*from\\b)"
            "(?:(\\s+default\\b)(?!\\s+(?:async\\s+)?(?:function\\b\\s*\\*?|class\\b)\\s*(?!extends\\b)[\\w$])|"
            "\\s+default\\b|\\s*\\{[^}]*\\}[ \\t]*;?)?"));
        auto matches = statement.globalMatch(m_code);
        while (matches.hasNext()) {
            const auto match = matches.next();
            // What has no name is an expression.
            add(match, match.captured(2).isEmpty() ? QString() : QStringLiteral("void"));
        }
    }

    const QString &m_text;
    const QString &m_code;
    const QString &m_importer;
    QList<Replacement> m_replacements;
};

} // namespace

QString withoutModuleSyntax(const QString &text, const QString &code, const QString &importer)
{
    const QList<Replacement> replacements = Rewriting(text, code, importer).run();
    QString hoisted;
    QString body;
    qsizetype from = 0;
    for (const Replacement &replacement : replacements) {
        hoisted += replacement.hoisted;
        body += QStringView(text).sliced(from, replacement.begin - from);
        body += replacement.text;
        from = replacement.begin + replacement.length;
    }
    body += QStringView(text).sliced(from);
    return hoisted + QLatin1Char('\n') + body;
}

} // namespace Vantle::Tool::Replay
