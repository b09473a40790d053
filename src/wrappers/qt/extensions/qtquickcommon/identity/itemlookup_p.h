#pragma once

#include "hook/object.h"
#include "hook/objectname.h"

#include <QtCore/QList>
#include <QtCore/QString>

class QQuickItem;

namespace Vantle::QtWrapper {

/// The item on which \p remaining, counted down by each item that fits
/// \p properties, becomes 0. Without \p searchInvisible, invisible items and
/// what is below them are passed over. For \p mismatched see findQuickItem().
SharedPtr<Object> searchItems(const QList<QQuickItem *> &items, const ObjectName::Properties &properties,
                              qint32 *remaining, bool searchInvisible, QList<QString> &mismatched);

} // namespace Vantle::QtWrapper
