#include "wrappers/qt/extensions/qtquick/quickscrolling.h"

#include "hook/objectname.h"
#include "wrappers/qt/application.h"
#include "wrappers/qt/extensions/qtquick/viewmodel_p.h"
#include "wrappers/qt/scrolling.h"
#include "wrappers/qt/wrapping.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>
#include <QtQuick/private/qquickflickable_p.h>

#include <algorithm>
#include <array>
#include <utility>

// Qt's header uses a keyword that we have switched off.
#define emit Q_EMIT
#include <QtQuick/private/qquickflickable_p_p.h>
#undef emit

namespace Vantle::QtWrapper {

namespace {

/// One axis of a flickable's content: where its window into it may be.
struct Range
{
    double first = 0;
    double last = 0;
};

/// Where the viewport of \p size at \p position has to go so that it shows what
/// goes from \p begin to \p end, or its beginning if it is larger.
double showing(double begin, double end, double position, double size, Range range)
{
    double target = position;
    if (end > position + size)
        target = end - size;
    if (begin < target)
        target = begin;
    return std::clamp(target, range.first, std::max(range.first, range.last));
}

Range horizontalRange(const QQuickFlickable *flickable)
{
    const double first = flickable->originX() - flickable->leftMargin();
    return {first,
            first + flickable->contentItem()->width() + flickable->leftMargin() + flickable->rightMargin()
                - flickable->width()};
}

Range verticalRange(const QQuickFlickable *flickable)
{
    const double first = flickable->originY() - flickable->topMargin();
    return {first,
            first + flickable->contentItem()->height() + flickable->topMargin() + flickable->bottomMargin()
                - flickable->height()};
}

/// Moves \p flickable as `flick` does, so that programs see a movement.
void moveTo(QQuickFlickable *flickable, QPointF position)
{
    const QPointer<QQuickFlickable> guard(flickable);
    flickable->cancelFlick();
    if (!guard || position == QPointF(flickable->contentX(), flickable->contentY()))
        return;
    Q_EMIT flickable->movementStarted();
    if (guard)
        flickable->setContentX(position.x());
    if (guard)
        flickable->setContentY(position.y());
    if (guard)
        Q_EMIT flickable->movementEnded();
}

void showIn(QQuickFlickable *flickable, const QQuickItem *item)
{
    const QRectF rect = item->mapRectToItem(flickable->contentItem(), QRectF(QPointF(), item->size()));
    const QPointF now(flickable->contentX(), flickable->contentY());
    moveTo(flickable,
           {showing(rect.left(), rect.right(), now.x(), flickable->width(), horizontalRange(flickable)),
            showing(rect.top(), rect.bottom(), now.y(), flickable->height(), verticalRange(flickable))});
}

/// From the inside to the outside: what an outer one shows depends on where the
/// inner ones have the item.
void scrollIntoView(QQuickItem *item)
{
    const QPointer<QQuickItem> guard(item);
    QPointer<QQuickItem> ancestor(item->parentItem());
    while (guard && ancestor) {
        auto *const flickable = qobject_cast<QQuickFlickable *>(ancestor);
        ancestor = ancestor->parentItem();
        if (flickable && flickable->contentItem()->isAncestorOf(item))
            showIn(flickable, item);
    }
}

/// Ends the movement of \p flickable, if there is one, as if it had come to rest
/// with its content at \p position. What is under way is one movement to the
/// program, so that it must not end before the content is there.
bool endMovementAt(QQuickFlickable *flickable, QPointF position)
{
    if (!flickable->isMoving())
        return false;
    auto *const priv = static_cast<QQuickFlickablePrivate *>(QQuickItemPrivate::get(flickable));
    const QPointer<QQuickFlickable> guard(flickable);
    priv->resetTimeline(priv->hData);
    priv->resetTimeline(priv->vData);
    priv->hData.move.setValue(-position.x());
    if (guard)
        priv->vData.move.setValue(-position.y());
    if (guard)
        flickable->cancelFlick();
    return true;
}

QString scrollContentAround(QQuickItem *item, QPoint position)
{
    for (; item; item = item->parentItem()) {
        if (auto *const flickable = qobject_cast<QQuickFlickable *>(item)) {
            if (!endMovementAt(flickable, position))
                moveTo(flickable, position);
            return {};
        }
    }
    return QStringLiteral("it lies in no flickable");
}

QString describeCell(ViewModel::Cell cell, bool isTable)
{
    return isTable ? QStringLiteral("no row %1 with a column %2").arg(cell.row).arg(cell.column)
                   : QStringLiteral("no index %1").arg(cell.row);
}

/// The entry of \p goal; nothing, and why in \p problem, if the view has none.
std::optional<ViewModel::Cell> cellOf(const ScrollGoal &goal, const ViewModel &entries, QString *problem)
{
    if (goal.text) {
        const auto cell = entries.find([text = *goal.text](const QString &shown) { return shown == text; });
        if (!cell)
            *problem = QStringLiteral("no entry of the view's model has the text \"%1\"").arg(*goal.text);
        return cell;
    }
    ViewModel::Cell cell{goal.row.value_or(goal.index.value_or(0)), goal.column.value_or(0)};
    // The index of a cell counts down the columns, as delegates are told it.
    if (goal.index && entries.isTable() && entries.rows() > 0)
        cell = {*goal.index % entries.rows(), *goal.index / entries.rows()};
    if (entries.has(cell))
        return cell;
    *problem = QStringLiteral("the view has %1; it has %2 rows and %3 columns")
                   .arg(describeCell(cell, entries.isTable()))
                   .arg(entries.rows())
                   .arg(entries.columns());
    return std::nullopt;
}

QString scrollToEntry(QQuickItem *item, const ScrollGoal &goal)
{
    ViewModel entries(item);
    if (!entries.isValid())
        return QStringLiteral("it is no view, and has no entries");
    QString problem;
    const std::optional<ViewModel::Cell> cell = cellOf(goal, entries, &problem);
    if (!cell)
        return problem;
    QQuickItem *const shown = entries.goTo(*cell);
    scrollIntoView(shown ? shown : entries.view());
    return {};
}

/// The number that \p name has for \p key, if it is one.
std::optional<int> numberIn(const ObjectName &name, const char *key)
{
    bool isNumber = false;
    const int number = name.property(QLatin1String(key)).stringValue().toInt(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

/// What \p name says about the text of its object, if anything.
std::optional<PropertyValue> textIn(const ObjectName &name)
{
    for (const char *key : {"text", "title", "label", "display", "name"}) {
        if (name.properties().contains(QLatin1String(key)))
            return name.property(QLatin1String(key));
    }
    return std::nullopt;
}

std::optional<ViewModel::Cell> cellIn(const ObjectName &name, const ViewModel &entries)
{
    const std::optional<int> row = numberIn(name, "row");
    const std::optional<int> column = numberIn(name, "column");
    const std::optional<int> index = numberIn(name, "index");
    if (row || column || index) {
        QString problem;
        ScrollGoal goal;
        goal.index = row || column ? std::nullopt : index;
        goal.row = row;
        goal.column = column;
        return cellOf(goal, entries, &problem);
    }
    const std::optional<PropertyValue> text = textIn(name);
    return text ? entries.find([&text](const QString &shown) { return text->matches(shown); }) : std::nullopt;
}

/// The views that \p name may mean an entry of: those in its container, or in
/// all windows.
QList<QPointer<QQuickItem>> viewsFor(const ObjectName &name)
{
    QList<QObject *> roots;
    const QString container = name.property(QStringLiteral("container")).stringValue();
    if (!container.isEmpty()) {
        const SharedPtr<Object> object = Application::self()->objectForName(container);
        if (object && nativeQObject(object))
            roots.append(nativeQObject(object));
    } else {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        for (QWindow *window : windows)
            roots.append(window);
    }
    QList<QPointer<QQuickItem>> views;
    const auto visit = [&views](const auto &self, QQuickItem *item) -> void {
        if (ViewModel entries(item); entries.isValid() && entries.view() == item)
            views.append(item);
        const QList<QQuickItem *> children = item->childItems();
        for (QQuickItem *child : children)
            self(self, child);
    };
    for (QObject *root : std::as_const(roots)) {
        if (auto *const window = qobject_cast<QQuickWindow *>(root))
            visit(visit, window->contentItem());
        else if (auto *const item = qobject_cast<QQuickItem *>(root))
            visit(visit, item);
    }
    return views;
}

} // namespace

QString scrollQuickItem(const SharedPtr<Object> &object, const ScrollGoal &goal)
{
    auto *const item = qobject_cast<QQuickItem *>(nativeQObject(object));
    if (!item)
        return QStringLiteral("an object of type %1 is no item").arg(object->className());
    if (goal.content)
        return scrollContentAround(item, *goal.content);
    if (goal.index || goal.row || goal.text)
        return scrollToEntry(item, goal);
    scrollIntoView(item);
    return {};
}

SharedPtr<Object> revealEntry(const QString &text)
{
    const ObjectName name(text);
    const QList<QPointer<QQuickItem>> views = viewsFor(name);
    for (const QPointer<QQuickItem> &view : views) {
        if (!view)
            continue;
        ViewModel entries(view);
        const std::optional<ViewModel::Cell> cell = cellIn(name, entries);
        if (!cell || !view)
            continue;
        const QPointF before(view->property("contentX").toReal(), view->property("contentY").toReal());
        entries.goTo(*cell);
        const SharedPtr<Object> found = Application::self()->objectForName(text);
        if (found && !found->isNull())
            return found;
        if (auto *const flickable = qobject_cast<QQuickFlickable *>(view))
            moveTo(flickable, before);
    }
    return nullptr;
}

} // namespace Vantle::QtWrapper
