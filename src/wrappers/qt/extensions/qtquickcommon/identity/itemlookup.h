#pragma once

#include "hook/object.h"
#include "hook/objectname.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

#include <QtCore/QList>
#include <QtCore/QString>

class QQuickItem;

namespace Vantle::QtWrapper {

/// The item that \p name means among \p roots and all that is below them; a
/// null pointer if there is none.
///
/// The roots are the item children of the container, and the name comes
/// without it: an occurrence then means what qualifiedQuickItemName() counted.
///
/// \p mismatched takes the keys on which the closest item failed, and is worth
/// reading only if nothing was found. It is not cleared first: what it holds
/// counts as the closest so far.
///
/// Runs on the thread that owns the items and, unless the name holds nothing
/// but type and object name, code of the program: items that aren't guarded
/// may be gone afterwards.
VANTLEQTQUICKCOMMON_EXPORT SharedPtr<Object> findQuickItem(const QList<QQuickItem *> &roots, const ObjectName &name,
                                                           QList<QString> &mismatched);

} // namespace Vantle::QtWrapper
