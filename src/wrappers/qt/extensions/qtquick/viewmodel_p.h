#pragma once

#include <QtCore/QString>
#include <QtQuick/QQuickItem>

#include <functional>
#include <optional>

namespace Vantle::QtWrapper {

/// The entries of a view: a list, a grid, a path or a table.
class ViewModel
{
public:
    /// Where an entry is; rows of lists are their indexes.
    struct Cell
    {
        int row = 0;
        int column = 0;
    };

    /// Entries of \p item, or of the view that it is filled with. None, and
    /// isValid() is false, if neither is a view.
    explicit ViewModel(QQuickItem *item);

    bool isValid() const { return m_view; }
    QQuickItem *view() const { return m_view; }
    bool isTable() const;
    int rows() const;
    int columns() const;
    bool has(Cell cell) const;

    /// The first entry of whose texts \p matches accepts one; nothing if none does.
    std::optional<Cell> find(const std::function<bool(const QString &)> &matches) const;

    /// Moves the view so that \p cell, which it must have, shows; gives its item
    /// if the view has made it by then.
    QQuickItem *goTo(Cell cell);

private:
    QQuickItem *m_view;
};

} // namespace Vantle::QtWrapper
