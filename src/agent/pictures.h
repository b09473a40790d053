#pragma once

#include "hook/object.h"

#include <QtCore/QString>
#include <QtGui/QPixmap>

namespace Vantle::Agent {

/// What the user sees of \p object, a window or an item that is alive, in device
/// pixels. Null on failure, and then \p problem says why.
QPixmap pictureOf(const SharedPtr<Object> &object, QString *problem);

/// The window in which \p object lies; \p object itself if it is one. A null
/// pointer if there is none.
SharedPtr<Object> windowOf(const SharedPtr<Object> &object);

/// The window that a user would look at: the active one, else the first one
/// that shows. A null pointer if there is none.
SharedPtr<Object> windowInFront();

} // namespace Vantle::Agent
