#pragma once

#include "hook/object.h"

#include <QtCore/QList>

class QObject;
class QQuickItem;

namespace Vantle::QtWrapper {

/// What a user sees one level below an item: its child items.
ObjectList itemChildren(QObject *item);

/// What a user sees one level below a QQuickWindow: the items of its scene,
/// then what else it owns, which is items outside of the scene and windows.
ObjectList windowChildren(QObject *window);

/// The items among the children of an item, in the same order.
QList<QQuickItem *> itemsBelowItem(QObject *item);
/// The items among the children of a QQuickWindow, in the same order.
QList<QQuickItem *> itemsBelowWindow(QObject *window);

} // namespace Vantle::QtWrapper
