#pragma once

#include "hook/object.h"
#include "wrappers/qt/extensions/qtquick/qtquicksetup.h"

#include <QtCore/QString>

namespace Vantle::QtWrapper {

struct ScrollGoal;

/// Brings \p goal of \p object, an item, into view: by moving the flickables
/// around it, and the view that it is to the entry. What needs not move stays
/// where it is. Movements that are under way end. Gives what is wrong in words,
/// empty on success.
QString scrollQuickItem(const SharedPtr<Object> &object, const ScrollGoal &goal);

/// The item of \p name, of which there is none since its view has not made it
/// yet: has the views that may show it go to the entry that its index, its row
/// and column, or its text tell, until it is there. Null if that finds none;
/// then the views are where they were. Runs code of the program.
VANTLEQTQUICK_EXPORT SharedPtr<Object> revealEntry(const QString &name);

} // namespace Vantle::QtWrapper
