#pragma once

#include <QtCore/QString>

namespace Vantle::Tool::Replay {

/// Turns the `import` and `export` statements of \p text into what a plain
/// script can do. \p code is the same text with comments and literals blanked
/// out; \p importer names the function that takes a module's name and an array
/// of the names that it has to export, and gives the module's exports.
QString withoutModuleSyntax(const QString &text, const QString &code, const QString &importer);

} // namespace Vantle::Tool::Replay
