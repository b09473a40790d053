#pragma once

#include <QtCore/qglobal.h>

namespace Vantle::QtWrapper {

/// The wall clock of recording, in milliseconds since the Unix epoch.
///
/// Events are stamped with it and alarms are judged by it, so that all times
/// that are compared with each other come from one source.
quint64 currentTime();

/// A function that tells the time in place of the system clock.
using TimeSource = quint64 (*)();

/// Makes currentTime() ask \p source, or the system clock again if it is
/// null. For tests, which tick their clock by hand.
void setTimeSource(TimeSource source);

} // namespace Vantle::QtWrapper
