#include "wrappers/qt/extensions/qtquick/viewentries_p.h"

#include <QtCore/QLibraryInfo>
#include <QtCore/QVersionNumber>
#include <QtQml/private/qqmlcontextdata_p.h>
#include <QtQml/private/qqmldata_p.h>
#include <QtQmlModels/private/qqmldelegatemodel_p_p.h>
#include <QtQuick/QQuickItem>
#include <QtQuick/private/qquickitemview_p.h>
#include <QtQuick/private/qquickpathview_p.h>
#include <QtQuick/private/qquicktableview_p.h>

namespace Vantle::QtWrapper {

namespace {

// The rows of models are kept in Qt's private data, which is read here as it
// is laid out in the minor version that this file was written for.
bool isKnownQt()
{
    static const bool known = QVersionNumber(QT_VERSION_MAJOR, QT_VERSION_MINOR) == QVersionNumber(6, 4)
        && QLibraryInfo::version().majorVersion() == 6 && QLibraryInfo::version().minorVersion() == 4;
    return known;
}

// What a model keeps for the row that \p item is made for; null if it is made
// for none. Everything inside of a delegate stands in the context of its row.
const QQmlDelegateModelItem *rowOf(QQuickItem *item)
{
    const QQmlData *const data = QQmlData::get(item);
    QQmlRefPointer<QQmlContextData> context = data ? data->context : nullptr;
    for (; context; context = context->parent()) {
        // What has required properties knows its row beside its own context.
        for (const QObject *const object : {context->extraObject(), context->contextObject()}) {
            if (!object || !object->inherits("QQmlDelegateModelItem"))
                continue;
            const auto *const row = static_cast<const QQmlDelegateModelItem *>(object);
            return row->object == item ? row : nullptr;
        }
    }
    return nullptr;
}

bool isTable(const QQuickItem *view)
{
    return qobject_cast<const QQuickTableView *>(view);
}

QQuickItem *viewAround(const QQuickItem *item)
{
    QQuickItem *const parent = item->parentItem();
    if (qobject_cast<QQuickPathView *>(parent))
        return parent;
    QQuickItem *const grandparent = parent ? parent->parentItem() : nullptr;
    return qobject_cast<QQuickItemView *>(grandparent) || isTable(grandparent) ? grandparent : nullptr;
}

QVariant modelOf(const QQuickItem *view)
{
    if (const auto *const list = qobject_cast<const QQuickItemView *>(view))
        return list->model();
    const auto *const path = qobject_cast<const QQuickPathView *>(view);
    return path ? path->model() : QVariant();
}

// The place among items that stand in the program as they are, like the pages
// of a SwipeView; -1 if \p item is none of those.
int indexAmongFixedItems(QQuickItem *item, const QQuickItem *view)
{
    auto *const model = qvariant_cast<QObject *>(modelOf(view));
    return model && model->inherits("QQmlObjectModel") ? static_cast<QQmlInstanceModel *>(model)->indexOf(item, nullptr)
                                                       : -1;
}

} // namespace

std::optional<ViewEntry> viewEntryOf(QQuickItem *item)
{
    if (!isKnownQt())
        return std::nullopt;
    QQuickItem *const view = viewAround(item);
    if (const QQmlDelegateModelItem *const row = rowOf(item)) {
        if (isTable(view))
            return ViewEntry{-1, row->modelRow(), row->modelColumn(), view};
        return ViewEntry{row->modelIndex(), -1, -1, view};
    }
    const int index = view ? indexAmongFixedItems(item, view) : -1;
    return index >= 0 ? std::optional(ViewEntry{index, -1, -1, view, true}) : std::nullopt;
}

} // namespace Vantle::QtWrapper
