#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariant>
#include <QtQuick/QQuickItem>

namespace Vantle::QtWrapper {

/// Tells extensions what there is to say about an item besides its properties.
class ItemNames : public QObject
{
    Q_OBJECT

public:
    /// The text of computedProperty(); undefined for keys that it doesn't know,
    /// for items that have none, and for null.
    Q_INVOKABLE QVariant valueOf(QQuickItem *item, const QString &key) const;
};

} // namespace Vantle::QtWrapper
