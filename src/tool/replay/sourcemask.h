#pragma once

#include <QtCore/QString>

namespace Vantle::Tool::Replay {

/// The JavaScript text \p source with everything that is no code blanked out:
/// comments and the insides of string, template and regular expression
/// literals become blanks. Length, line ends and quotes stay, so a place in the
/// result is the same place in the source.
///
/// What stands in `${…}` of a template is blanked out with it.
QString maskedSource(const QString &source);

} // namespace Vantle::Tool::Replay
