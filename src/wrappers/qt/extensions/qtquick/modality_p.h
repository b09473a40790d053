#pragma once

#include <QtCore/QString>

class QQuickItem;
class QQuickWindow;

namespace Vantle::QtWrapper {

/// The modal popup of Qt Quick Controls that keeps input from \p item, null if
/// there is none. The layer in which popups live is never kept from input
/// itself: a click beside a popup is how a user closes it.
QQuickItem *modalPopupAbove(const QQuickItem *item);

/// Whether a modal popup is open in \p popupLayer, the item in which the popups
/// of a window live.
bool holdsOpenModalPopup(const QQuickItem *popupLayer);

/// The item in which the popups of Qt Quick Controls in \p window live; null if
/// there has been none yet.
const QQuickItem *popupLayer(const QQuickWindow *window);

/// Whether \p popupItem, an item in that layer, is that of a popup on its way to
/// or from the screen.
bool isOpeningOrClosing(const QQuickItem *popupItem);

/// How a popup is called in messages: type and title or object name.
QString popupDescription(const QQuickItem *popup);

} // namespace Vantle::QtWrapper
