#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Vantle::Tool {

/// \p text as a JavaScript string literal in double quotes. Whatever could be
/// misread in a source file (quotes, controls, line separators, characters
/// that steer the direction of writing, lone surrogates) is escaped, so that
/// the literal means exactly \p text and stays on one line.
QString stringLiteral(const QString &text);

/// \p word as it is if it consists of harmless characters only, else as a
/// string literal: for comments, which must not be left by a line feed.
QString plainOrQuoted(const QString &word);

/// The lines of \p text that aren't empty, for a comment or a terminal: what would
/// end a line of JavaScript, or commands a terminal, is a blank in them.
QStringList plainLines(const QString &text);

} // namespace Vantle::Tool
