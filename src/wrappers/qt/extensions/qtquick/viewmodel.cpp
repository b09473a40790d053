#include "wrappers/qt/extensions/qtquick/viewmodel_p.h"

#include <QtCore/QAbstractItemModel>
#include <QtQml/QJSValue>
#include <QtQuick/private/qquickitemview_p.h>
#include <QtQuick/private/qquickpathview_p.h>
#include <QtQuick/private/qquicktableview_p.h>

namespace Vantle::QtWrapper {

namespace {

bool isView(const QQuickItem *item)
{
    return qobject_cast<const QQuickItemView *>(item) || qobject_cast<const QQuickPathView *>(item)
        || qobject_cast<const QQuickTableView *>(item);
}

/// A ScrollView, a Tumbler or a popup is filled with its view.
QQuickItem *viewIn(QQuickItem *item)
{
    if (!item || isView(item))
        return item;
    auto *const content = item->property("contentItem").value<QQuickItem *>();
    return isView(content) ? content : nullptr;
}

/// The model behind \p view, as plain as it was given: models of delegates have
/// one of their own.
QVariant modelOf(const QQuickItem *view)
{
    QVariant model = view->property("model");
    if (model.userType() == qMetaTypeId<QJSValue>())
        model = model.value<QJSValue>().toVariant();
    const QObject *const object = model.value<QObject *>();
    if (object && !qobject_cast<const QAbstractItemModel *>(object) && object->property("model").isValid())
        model = object->property("model");
    return model;
}

bool anyText(const QVariant &value, const std::function<bool(const QString &)> &matches)
{
    if (value.typeId() == QMetaType::QVariantMap) {
        const QVariantMap entries = value.toMap();
        return std::any_of(entries.begin(), entries.end(),
                           [&](const QVariant &entry) { return anyText(entry, matches); });
    }
    return value.canConvert<QString>() && matches(value.toString());
}

bool anyTextAt(const QAbstractItemModel *model, const QModelIndex &index,
               const std::function<bool(const QString &)> &matches)
{
    const QList<int> roles = model->roleNames().keys();
    return std::any_of(roles.begin(), roles.end(), [&](int role) { return anyText(index.data(role), matches); });
}

} // namespace

ViewModel::ViewModel(QQuickItem *item) : m_view(viewIn(item))
{
}

bool ViewModel::isTable() const
{
    return qobject_cast<QQuickTableView *>(m_view);
}

int ViewModel::rows() const
{
    return m_view->property(isTable() ? "rows" : "count").toInt();
}

int ViewModel::columns() const
{
    return isTable() ? m_view->property("columns").toInt() : 1;
}

bool ViewModel::has(Cell cell) const
{
    return cell.row >= 0 && cell.row < rows() && cell.column >= 0 && cell.column < columns();
}

std::optional<ViewModel::Cell> ViewModel::find(const std::function<bool(const QString &)> &matches) const
{
    const QVariant model = modelOf(m_view);
    const auto *const items = qobject_cast<const QAbstractItemModel *>(model.value<QObject *>());
    const QVariantList list = items ? QVariantList() : model.toList();
    const int count = rows();
    const int width = columns();
    for (int row = 0; row < count; ++row) {
        for (int column = 0; column < width; ++column) {
            const bool isMatch = items ? anyTextAt(items, items->index(row, column), matches)
                                       : row < list.size() && anyText(list.at(row), matches);
            if (isMatch)
                return Cell{row, column};
        }
    }
    return std::nullopt;
}

QQuickItem *ViewModel::goTo(Cell cell)
{
    if (auto *const table = qobject_cast<QQuickTableView *>(m_view)) {
        table->positionViewAtCell(cell.column, cell.row, QQuickTableView::Contain);
        table->forceLayout();
        return table->itemAtCell(cell.column, cell.row);
    }
    if (auto *const path = qobject_cast<QQuickPathView *>(m_view)) {
        path->positionViewAtIndex(cell.row, QQuickPathView::Contain);
        return path->itemAtIndex(cell.row);
    }
    auto *const list = static_cast<QQuickItemView *>(m_view);
    list->cancelFlick();
    list->positionViewAtIndex(cell.row, QQuickItemView::Contain);
    return list->itemAtIndex(cell.row);
}

} // namespace Vantle::QtWrapper
