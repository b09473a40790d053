#pragma once

#include "wrappers/qt/extensions/qtquickcommon/compression/syntheticevent.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"
#include "wrappers/qt/extensions/qtquickcommon/recording/inputconversions.h"

class QEvent;
class QObject;

namespace Vantle::QtWrapper {

/// Turns \p event, which Qt is about to deliver to \p receiver, into the
/// record \p result, or refuses it: true if the record was filled and is to be
/// recorded. On refusal the record stays as it was.
///
/// The caller makes the record with its default constructor; its `timestamp`
/// is not touched. Neither pointer may be null, apart from the \p receiver of
/// an event that only windows get.
///
/// Some verdicts depend on the events offered before, so every event should be
/// offered once, in order, on the thread that handles Qt's events. May run
/// code of the program and of extensions that names an object or says whether
/// it is ready.
VANTLEQTQUICKCOMMON_EXPORT bool qtEventToSyntheticEvent(QObject *receiver, QEvent *event, SyntheticEvent *result);

} // namespace Vantle::QtWrapper
