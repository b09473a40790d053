#pragma once

#include <QtCore/QString>

/// The tool's own words to its user, in UTF-8. A stream that was closed is
/// written to in vain, without further notice.
namespace Vantle::Tool::Console {

/// Writes \p text as it is to standard output, at once. False if it could not
/// be written whole.
bool print(const QString &text);

/// \p text with control characters, line feeds and tabs aside, as `\x1b`: names
/// and messages of programs must not speak to the terminal.
QString visible(const QString &text);

/// Writes "vantle: ", \p message in its visible form and a line feed to standard error.
void say(const QString &message);

/// A number of seconds in words fit for a message, e.g. "15 s" or "0.5 s".
QString seconds(qint64 milliseconds);

} // namespace Vantle::Tool::Console
