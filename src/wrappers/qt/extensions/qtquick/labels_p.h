#pragma once

#include <QtCore/QString>

class QQuickItem;

namespace Vantle::QtWrapper {

/// What a user reads beside \p item, which must not be null, and takes for its
/// label: what a form says it is, the text whose `buddy` it is, the text ahead
/// of it in its row or above it in its column, the text that shares a parent
/// with what only takes presses; of a button, an entry of a view or the like that
/// has no text of its own, the first text in it. Empty if there is none.
///
/// A text that holds the item's own value is no label of it. Reads properties of
/// the program, which may destroy \p item.
QString labelOf(QQuickItem *item);

} // namespace Vantle::QtWrapper
