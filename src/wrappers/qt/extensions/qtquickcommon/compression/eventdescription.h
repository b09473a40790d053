#pragma once

#include "hook/inputvalues.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"

#include <QtCore/QByteArray>

#include <list>

namespace Vantle::QtWrapper {

/// The event as one line of UTF-8, such as
///
///     @1000 mouse event: (press, LeftButton, 100/200) on object of type 'QQuickItem' which is ready
///
/// An event without a class has an empty type, a button without a name none.
QByteArray describeEvent(const SyntheticEvent &event);

/// "None", or the names of the bits that have one: "[Control,Shift]".
QByteArray describeModifiers(Modifier::Value modifiers);

/// Logs a heading, then every event of \p queue, under the name of whoever is about to compress it.
void dumpQueue(const char *name, const std::list<SyntheticEvent> &queue, Modifier::Value initialModifiers);
/// Logs every event of \p queue alone.
void dumpEvents(const std::list<SyntheticEvent> &queue, const char *name);

} // namespace Vantle::QtWrapper
