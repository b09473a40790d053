#pragma once

#include "hook/touchbuilder.h"
#include "wrappers/qt/extensions/qtquickcommon/compression/eventpredicates_p.h"

namespace Vantle::QtWrapper {

/// How far a finger moved, in whole pixels.
struct TouchOffset
{
    qint32 dx = 0;
    qint32 dy = 0;

    /// The sum of both axes.
    qint64 distance() const noexcept;
};

bool isSingleTouchBegin(const SyntheticEvent &event);

/// Whether \p event lifts the finger that was the primary one in \p begin.
bool isPrimaryTouchEnd(const SyntheticEvent &event, const SyntheticEvent &begin);

/// Advances \p event over what may lie inside a touch sequence: updates, and
/// the mouse and wheel events that come along with it. Returns the largest
/// number of fingers in an update on the way, 0 if there was none.
std::size_t skipTouchSpan(EventIterator &event, EventIterator end);

/// The way of the primary finger from \p a to \p b, truncated toward zero.
/// (0, 0) where either event lacks that finger.
TouchOffset primaryDelta(const SyntheticEvent &a, const SyntheticEvent &b);

/// Appends the fingers of the touch event \p event to a gesture that started with \p begin.
void addGestureStep(TouchBuilder::MultiTouchInfo &info, const SyntheticEvent &begin, const SyntheticEvent &event);

} // namespace Vantle::QtWrapper
