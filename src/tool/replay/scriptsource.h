#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace Vantle::Tool::Replay {

/// The text of a script file and what can be told about it without running it.
/// Lines and columns count from 1. A plain value.
class ScriptSource
{
public:
    ScriptSource() = default;
    explicit ScriptSource(const QString &text);

    /// Reads a file; nothing and the reason in \p error if that can't be done
    /// or the file is no UTF-8.
    static std::optional<ScriptSource> read(const QString &path, QString *error);

    /// A line as it stands, without its end; empty if there is none.
    QString line(int number) const { return m_lines.value(number - 1); }

    /// The statement that begins in a line: that line, and those that follow
    /// up to the closing of its brackets, five at most, without the indentation
    /// that they share.
    /// Of several in a line, the one that begins at \p column.
    QString statementAt(int number, int column = 1) const;

    /// The column in which \p name is called in a line, at \p from or behind it; else
    /// that of the first character there that is no blank.
    int columnOfCall(int number, const QString &name, int from = 1) const;

    /// Number of lines that hold code, in all or up to \p number and with it.
    int codeLineCount() const { return m_codeLines.isEmpty() ? 0 : m_codeLines.last(); }
    int codeLinesUpTo(int number) const;

    /// True if the function \p name is called somewhere by its bare name.
    bool calls(const QString &name) const;
    /// The same, with at least one argument.
    bool callsWithArguments(const QString &name) const;

    /// The text with its `import` and `export` statements turned into what a
    /// plain script can do: `import {a as b} from "./x.mjs"` becomes a call of
    /// \p importer with the file's name, the names that have to be there and the
    /// line of the statement. These calls stand all in a line ahead of the first
    /// one, since imports come before everything else; it has the number 0, and
    /// every other line stays at its own.
    ///
    /// The engine tells where an error came from only for plain scripts.
    QString asPlainScript(const QString &importer) const;

    /// A place in the text.
    struct Place
    {
        int line = 0;
        int column = 1;
    };

    /// asPlainScript() with each statement on a line of its own, as the engine tells
    /// lines and no columns. placeOf() says where in the text such a line is.
    QString asStatementLines(const QString &importer) const;
    Place placeOf(int statementLine) const;

private:
    int endOfStatement(int line, int column) const;

    QString m_text;
    QString m_code; ///< the text with everything that is no code blanked out
    QStringList m_lines;
    QList<int> m_codeLines; ///< for each line the number of code lines up to it
    QList<Place> m_places;  ///< of the lines that asStatementLines() makes, from line 1 on
};

} // namespace Vantle::Tool::Replay
