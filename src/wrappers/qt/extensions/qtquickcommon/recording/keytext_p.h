#pragma once

#include <QtCore/QByteArray>

class QKeyEvent;

namespace Vantle::QtWrapper {

/// What \p event writes into a script, in UTF-8: printable text as it stands,
/// a key or key combination by its portable name in angle brackets, and
/// nothing for a modifier key.
QByteArray keyEventText(const QKeyEvent &event);

} // namespace Vantle::QtWrapper
