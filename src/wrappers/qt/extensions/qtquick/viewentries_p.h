#pragma once

#include <optional>

class QQuickItem;

/// Which entry of a view an item is. What a view makes of a delegate shows one
/// row after the other; that its number is asked of the model each time makes
/// it right for delegates that are used again.
namespace Vantle::QtWrapper {

/// The place of an entry in the model of what shows it.
struct ViewEntry
{
    int index = -1;             ///< -1 for cells of tables
    int row = -1;               ///< -1 unless it is a cell of a table or tree
    int column = -1;            ///< like row
    QQuickItem *view = nullptr; ///< the view around it; null for entries of a Repeater
    bool isFixed = false;       ///< written out in the program, like a page or a tab
};

/// The place of \p item, which must not be null, if it is the item that a view
/// or a Repeater shows for a row of its model, or a page, tab or entry of a menu.
std::optional<ViewEntry> viewEntryOf(QQuickItem *item);

} // namespace Vantle::QtWrapper
