#pragma once

#include <QtCore/QByteArray>

namespace Vantle::Tool {

/// Writes all of \p bytes to an open file descriptor, however many calls that
/// takes. False on failure, with the reason in errno.
bool writeWhole(int descriptor, const QByteArray &bytes);

} // namespace Vantle::Tool
