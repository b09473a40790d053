#pragma once

#include "wrappers/qt/wrapperglobal.h"

#include <QtCore/QPoint>

/// How drags are measured, for those who record them and those who play them.
///
/// A drag is told by how far it went behind the point where it became one, its
/// crossing. Played, it goes from the press to the crossing, and from there by
/// the distance that was told.
namespace Vantle::QtWrapper {

/// Where a drag of \p distance becomes one, seen from the press: exactly the
/// distance from which on Qt takes a movement for a drag, both axes added up,
/// in the direction of \p distance, or to the right if that is none.
VANTLEQTWRAPPER_EXPORT QPoint crossingOffset(QPoint distance);

/// The distance by which a drag is told that goes by \p way from press to
/// release: the one that leads, with its crossing, to the end of \p way. Where
/// rounding leaves none, the one that ends next to it, a pixel away, or a few
/// for a way that is hardly a drag. No distance for a way that is too short to
/// be a drag at all.
VANTLEQTWRAPPER_EXPORT QPoint distanceBehindCrossing(QPoint way);

} // namespace Vantle::QtWrapper
