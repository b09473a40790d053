#pragma once

#include <QtCore/QString>

namespace Vantle::Tool {

/// \p text as a JavaScript string literal in double quotes. Whatever could be
/// misread in a source file (quotes, controls, line separators, characters
/// that steer the direction of writing, lone surrogates) is escaped, so that
/// the literal means exactly \p text and stays on one line.
QString stringLiteral(const QString &text);

/// \p word as it is if it consists of harmless characters only, else as a
/// string literal: for comments, which must not be left by a line feed.
QString plainOrQuoted(const QString &word);

} // namespace Vantle::Tool
