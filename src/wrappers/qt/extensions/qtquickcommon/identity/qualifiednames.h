#pragma once

#include "hook/object.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

#include <QtCore/QString>

namespace Vantle::QtWrapper {

/// The name by which a script finds the item behind \p object again: what the
/// host's NameGenerator gives and, where this fits several items below the
/// container, which of them it is. An alias where the host has one for the name.
///
/// Empty for an object that nobody names. Walks over what is below the
/// container, up to the item, and reads the properties of the name there. Runs
/// on the thread that owns the items and runs code of the program: items that
/// aren't guarded may be gone afterwards.
VANTLEQTQUICKCOMMON_EXPORT QString qualifiedQuickItemName(SharedPtr<Object> object);

} // namespace Vantle::QtWrapper
