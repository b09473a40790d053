#pragma once

#include "hook/object.h"
#include "hook/objectname.h"

#include <QtCore/QList>
#include <QtCore/QString>

class QQuickItem;

/// What naming and lookup share. All of it runs on the thread that owns the
/// items and, for most properties, runs getters of the program or scripts of
/// extensions there: when a call returns, items that aren't guarded may be gone.
namespace Vantle::QtWrapper {

/// Stores the text of the property \p key of \p item, which must not be null,
/// in \p value. False, with the text as it was, if neither the item nor an
/// extension has such a property.
bool itemPropertyValue(QQuickItem *item, const QString &key, QString *value);

/// The keys of \p properties that \p item fails on, whether the value differs
/// or there is none to compare. A null item fails on none.
QList<QString> mismatchedProperties(QQuickItem *item, const ObjectName::Properties &properties);

/// Same, into \p keys in place of what it holds. A walk over thousands of items
/// that gives the same list each time needs no new memory for it.
void findMismatchedProperties(QQuickItem *item, const ObjectName::Properties &properties, QList<QString> *keys);

/// The item behind \p object; null if it is dead, null or something else.
QQuickItem *toQuickItem(const SharedPtr<Object> &object);

/// Whether a name with \p properties may mean an item inside of an invisible
/// one: unless it asks for something visible.
bool searchesInvisible(const ObjectName::Properties &properties);

} // namespace Vantle::QtWrapper
