#pragma once

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtQuick/QQuickItem>

/// The texts that items can be named by, read as the lookup reads them. All
/// of it runs getters of the program, which may destroy the item.
namespace Vantle::QtWrapper {

/// The id that \p object has in the QML document it stands in; empty if none.
/// Only the table of ids counts: an item that has the focus just now would be
/// called "activeFocusItem" otherwise.
QString declaredId(QObject *object);

/// The text of the item's own property as it reads when the item is looked up.
/// False if the item has no such property.
bool readOwnText(const QPointer<QQuickItem> &item, const QByteArray &property, QString *text);

/// The text of \p key as a lookup compares it, "type" among the keys; false
/// where neither the item nor an extension has one.
bool readText(const QPointer<QQuickItem> &item, const QString &key, QString *text);

/// What a lookup most likely compares: as readText(), but where the item has no
/// such property it is computed here rather than asked of extensions.
bool guessText(const QPointer<QQuickItem> &item, const QString &key, QString *text);

/// Whether \p text can stand in a name: it is neither empty nor a page.
bool isFitForName(const QString &text);

/// Whether the item's text is what the user types or chooses: the next
/// statement would change it.
bool isTextOfUser(QQuickItem *item);

} // namespace Vantle::QtWrapper
