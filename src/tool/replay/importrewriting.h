#pragma once

#include <QtCore/QString>

namespace Vantle::Tool::Replay {

/// Turns the `import` and `export` statements of \p text into what a plain
/// script can do. \p code is the same text with comments and literals blanked
/// out; \p importer names the function that takes a module's name, an array of
/// the names that it has to export and the line of the statement, and gives the
/// module's exports. Its calls come ahead of everything else, in a line of their
/// own that is there in any case; the others follow, as many as there were.
QString withoutModuleSyntax(const QString &text, const QString &code, const QString &importer);

} // namespace Vantle::Tool::Replay
