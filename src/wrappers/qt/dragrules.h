#pragma once

#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QPoint>

/// What recording and playing have to agree about in a drag.
namespace Vantle::QtWrapper {

/// How far a drag of \p distance goes until it is one: exactly the distance
/// from which on Qt takes a movement for a drag, both axes added up, in the
/// direction of \p distance, or to the right if that is none.
VANTLEQTWRAPPER_EXPORT QPoint crossingOffset(QPoint distance);

} // namespace Vantle::QtWrapper
