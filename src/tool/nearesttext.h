#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace Vantle::Tool {

/// The one of \p texts that \p text was probably meant to be: the first of those
/// from which it differs in the fewest letters, upper and lower case alike. Empty
/// if all differ in more than a third of its letters.
QString nearestText(const QString &text, const QStringList &texts);

} // namespace Vantle::Tool
