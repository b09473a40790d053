#pragma once

class QPointF;
class QQuickItem;

namespace Vantle::QtWrapper {

/// \p point of the parent in the coordinates of \p child.
///
/// QQuickItem::mapFromItem goes up to the scene and down again, which costs the
/// more the deeper the items lie.
QPointF mapFromParent(const QQuickItem &child, const QPointF &point);

} // namespace Vantle::QtWrapper
