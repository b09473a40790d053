#pragma once

#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QPointer>
#include <QtCore/QUrl>
#include <QtQuick/QQuickWindow>

#include <string>

class QByteArray;
class QQmlComponent;

/// Finds the extension files and loads them into the engine of each window, at
/// the first question about one of its items. All of it runs on the thread
/// that owns the windows and their engines.
namespace Vantle::QtWrapper {

/// The hooks of one window by priority, and within a priority in the order in
/// which their files were loaded.
using HooksByPriority = QMap<int, QList<QPointer<VantleHook>>>;
/// Guards only: a hook is owned by its window.
using HooksByWindow = QMap<QPointer<QQuickWindow>, HooksByPriority>;

/// All windows that were hooked up. That of a window that has died stays until
/// another one is hooked up.
extern HooksByWindow hooksByWindow;

/// The hooks to ask about \p item, whose window is hooked up if it has to be.
/// The end iterator if there are none to ask. Valid until the next script runs.
HooksByWindow::const_iterator hooksForItem(QQuickItem *item);

/// Loads the extensions into the engine of \p window, which must not be null.
/// The end iterator if the window has no engine; it can be tried again then.
HooksByWindow::const_iterator hookupQuickWindow(QQuickWindow *window);

/// Appends the extension files in \p directory, in the order in which QDir lists
/// them. A directory that starts with a colon lies in Qt's resources.
void collectExtensionFiles(const QString &directory, QList<QUrl> &urls);

/// The hook that the component makes. Null if it makes none; that is logged
/// with \p text, the URL of the file in UTF-8.
VantleHook *createHook(QQmlComponent &component, const QByteArray &text);

/// Where the tool's libraries are installed.
QString libraryDirectory();

/// The variable's value in UTF-8; empty for one that isn't set and without a name.
std::string environmentVariable(const std::string &name);

} // namespace Vantle::QtWrapper
