#pragma once

#include "hook/object.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemproperties_p.h"

#include <QtCore/QList>

class QQuickItem;

namespace Vantle::QtWrapper {

/// The items among the children of \p container, which must not be null, in
/// their order. The container itself is none of them.
QList<QQuickItem *> containerChildItems(const SharedPtr<Object> &container);

/// Adds to \p count the items that fit \p properties, from the first of
/// \p candidates to \p target and including it. False if the walk does not
/// come to \p target. Invisible items count, but what is below them is walked
/// over only with \p searchInvisible.
bool countOccurrences(QQuickItem *target, const QList<QQuickItem *> &candidates,
                      const ObjectName::Properties &properties, bool searchInvisible, quint32 &count);

} // namespace Vantle::QtWrapper
