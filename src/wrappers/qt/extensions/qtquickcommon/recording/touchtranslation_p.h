#pragma once

class QObject;
class QTouchEvent;

namespace Vantle::QtWrapper {

struct SyntheticEvent;

/// Fills the touch fields of \p result, apart from `touchEventType`, and
/// records the event against what lies under the primary finger: the one that
/// began the sequence. Remembers that finger from the begin of a sequence to
/// its end. Without it the event is recorded against \p receiver.
void translateTouchEvent(SyntheticEvent *result, QObject *receiver, const QTouchEvent &event);

} // namespace Vantle::QtWrapper
