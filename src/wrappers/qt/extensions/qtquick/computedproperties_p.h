#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

class QQuickItem;

/// What names an item besides its properties: things that are said about it
/// elsewhere, or in a part of it.
namespace Vantle::QtWrapper {

/// The text that \p key has for \p item, which must not be null; nothing if
/// there is none:
///
/// "accessibleName"  what the program calls it for screen readers
/// "iconName"        the name of its icon
/// "iconFile"        the file name of its icon, without the folder
/// "toolTip"         its tool tip
/// "label"           what is written beside it, or in it
/// "index"           the number of the entry of a view, from 0
/// "row", "column"   those of the cell of a table, from 0
///
/// Reads properties of the program, which may destroy \p item.
std::optional<QString> computedProperty(QQuickItem *item, const QString &key);

/// Whether computedProperty() knows \p key.
bool isComputedProperty(const QString &key);

} // namespace Vantle::QtWrapper
