#pragma once

#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

class QQmlEngine;
class QQuickItem;
class QQuickWindow;

/// What the QML layer knows about items and windows. All of it runs on the
/// thread that owns them, and reports nothing: absence is an empty text, false
/// or null.
namespace Vantle::QtWrapper {

/// The id of \p item in the QML document that made it. Empty for an item
/// without an id, for one that QML did not make, and for null.
///
/// The text is the one that QQmlContext::nameForObject gives, but no property
/// of the program is read that could not hold the item.
VANTLEQTQUICKCOMMON_EXPORT QString idForQuickItem(QQuickItem *item);

/// Whether idForQuickItem() may give \p id, which must not be empty, for \p item.
/// Reads nothing of the program: many items can be ruled out by what their
/// contexts could name at all, and looking through what they do name costs more.
bool mayHaveId(QQuickItem *item, const QByteArray &id);

/// Replaces \p value by a text for the URL property \p name of \p item that is
/// the same on every machine: local files below the directory of the QML
/// document relative to it, other local files by their path, everything else
/// as URL. Returns false, and leaves \p value alone, if the item has no such
/// property or its type is not QUrl.
VANTLEQTQUICKCOMMON_EXPORT bool normalizeQuickUrlProperty(QQuickItem *item, const char *name, QString &value);

/// The engine that made \p window or what it shows; null for null and for a
/// window where none can be found.
VANTLEQTQUICKCOMMON_EXPORT QQmlEngine *qmlEngineForQuickWindow(QQuickWindow *window);

} // namespace Vantle::QtWrapper
