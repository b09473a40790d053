#pragma once

#include <QtCore/QString>

namespace Vantle::Tool {

/// A signal in words: "signal 9 (SIGKILL)", or without the name if it has none.
QString signalText(int number);

} // namespace Vantle::Tool
