#pragma once

#include "hook/object.h"

#include <QtCore/QString>

namespace Vantle {
class Class;
}

/// Playback of recorded flicks. No gesture is simulated: the content goes to
/// its new place at once, and the program sees a movement begin and end. Runs
/// on the thread that owns the items.
namespace Vantle::QtWrapper {

/// The script function `flick`. \p arguments are the flickable and how far its
/// content goes, horizontally and vertically. Null after a failure, which the
/// script has been told about.
SharedPtr<Object> flickFunction(const ObjectList &arguments, const Class *context);

/// Moves the content position of \p object, a flickable, by (\p dx, \p dy) in
/// the item's content coordinates. Returns why it can't, and leaves the item
/// alone then; empty on success. The content's bounds and the directions in
/// which a user could flick are not looked at.
QString flickQuickItem(const SharedPtr<Object> &object, int dx, int dy);

} // namespace Vantle::QtWrapper
