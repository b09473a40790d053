#include "wrappers/qt/extensions/qtquick/labels_p.h"

#include "wrappers/qt/extensions/qtquick/viewentries_p.h"

#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtQuick/QQuickItem>
#include <QtQuick/private/qquickitem_p.h>
#include <QtQuick/private/qquickmousearea_p.h>
#include <QtQuick/private/qquicktext_p.h>

#include <algorithm>

namespace Vantle::QtWrapper {

namespace {

// A label stands among few items; where there are more it says nothing about
// one of them, and looking through them for each would take long.
constexpr qsizetype mostSiblings = 40;
constexpr int mostItemsInside = 40;

// What stands in the file of another module is known by its name.
bool isAnyOf(const QQuickItem *item, std::initializer_list<const char *> types)
{
    return std::any_of(types.begin(), types.end(), [item](const char *type) { return item->inherits(type); });
}

bool isControl(const QQuickItem *item)
{
    return item->inherits("QQuickControl");
}

// A check box without text has it written behind it, everything else ahead.
bool isMark(const QQuickItem *item)
{
    return isAnyOf(item, {"QQuickCheckBox", "QQuickRadioButton", "QQuickSwitch"});
}

// Whether it makes sense to ask for what is written beside \p item.
bool isActedOn(QQuickItem *item)
{
    return isControl(item) || item->acceptedMouseButtons() != Qt::NoButton
        || QQuickItemPrivate::get(item)->hasPointerHandlers()
        || item->flags().testFlag(QQuickItem::ItemAcceptsInputMethod);
}

QString visibleText(const QQuickItem *item)
{
    const auto *const text = qobject_cast<const QQuickText *>(item);
    return text && text->isVisible() ? text->text() : QString();
}

bool holdsDigit(const QString &text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar letter) { return letter.isDigit(); });
}

// "Volume: 53" above a slider, or what was chosen beside a combo box: it is
// different as soon as the item has been used.
bool tellsValue(const QString &text, QQuickItem *item)
{
    const QPointer<QQuickItem> guard(item);
    for (const char *key : {"text", "displayText", "currentText"}) {
        const QString value = guard ? guard->property(key).toString() : QString();
        if (!value.isEmpty() && text.contains(value))
            return true;
    }
    return guard && guard->property("value").isValid() && holdsDigit(text);
}

// A form keeps the label in an object that is attached to the item.
QString labelOfForm(const QQuickItem *item)
{
    const QObjectList &children = item->children();
    for (const QObject *child : children) {
        if (child->inherits("FormLayoutAttached"))
            return child->property("label").toString();
    }
    return {};
}

QString labelOfBuddy(QQuickItem *item, const QList<QQuickItem *> &siblings)
{
    const QList<QPointer<QQuickItem>> guarded(siblings.cbegin(), siblings.cend());
    for (const QPointer<QQuickItem> &sibling : guarded) {
        const QString text = sibling ? visibleText(sibling) : QString();
        if (!text.isEmpty() && qvariant_cast<QObject *>(sibling->property("buddy")) == item)
            return text;
    }
    return {};
}

bool standInOneRow(const QQuickItem *one, const QQuickItem *other)
{
    return one->y() < other->y() + other->height() && other->y() < one->y() + one->height();
}

bool isColumn(const QQuickItem *parent)
{
    return parent->inherits("QQuickColumn") || parent->inherits("QQuickColumnLayout");
}

bool isRow(const QQuickItem *parent)
{
    return isAnyOf(parent, {"QQuickRow", "QQuickRowLayout", "QQuickGrid", "QQuickGridLayoutBase", "QQuickFlow"});
}

bool takesSpace(const QQuickItem *item)
{
    return item->isVisible() && item->width() > 0 && item->height() > 0;
}

template<typename Iterator>
const QQuickItem *firstThatTakesSpace(Iterator begin, Iterator end)
{
    const auto found = std::find_if(begin, end, takesSpace);
    return found == end ? nullptr : *found;
}

QString labelInLayout(const QQuickItem *item, const QList<QQuickItem *> &siblings)
{
    const QQuickItem *const parent = item->parentItem();
    const bool inColumn = isColumn(parent);
    if (!inColumn && !isRow(parent))
        return {};
    const auto self = std::find(siblings.cbegin(), siblings.cend(), item);
    const auto fits = [&](const QQuickItem *text) { return text && (inColumn || standInOneRow(text, item)); };
    if (self == siblings.cend())
        return {};
    const QQuickItem *const before = firstThatTakesSpace(std::make_reverse_iterator(self), siblings.crend());
    if (fits(before)) {
        if (const QString text = visibleText(before); !text.isEmpty())
            return text;
    }
    const QQuickItem *const after = isMark(item) && !inColumn ? firstThatTakesSpace(self + 1, siblings.cend())
                                                              : nullptr;
    return fits(after) ? visibleText(after) : QString();
}

bool isPlainItem(const QQuickItem *item)
{
    return !isControl(item) && !isRow(item) && !isColumn(item) && item->parentItem();
}

// A picture and a text with a mouse area over them make a button.
QString labelInSameItem(const QQuickItem *item, const QList<QQuickItem *> &siblings)
{
    const QQuickItem *const parent = item->parentItem();
    if (!qobject_cast<const QQuickMouseArea *>(item) || (!isPlainItem(parent) && !isControl(parent)))
        return {};
    QString only;
    for (const QQuickItem *sibling : siblings) {
        const QString text = visibleText(sibling);
        if (!text.isEmpty() && !only.isEmpty())
            return {};
        if (!text.isEmpty())
            only = text;
    }
    return only;
}

QString firstTextIn(const QQuickItem *item, int *remaining)
{
    const QList<QQuickItem *> children = item->childItems();
    for (const QQuickItem *child : children) {
        if (--*remaining < 0 || child->flags().testFlag(QQuickItem::ItemAcceptsInputMethod))
            return {};
        if (const QString text = visibleText(child); !text.isEmpty())
            return text;
        if (const QString text = firstTextIn(child, remaining); !text.isEmpty())
            return text;
    }
    return {};
}

// What shows a value of its own doesn't read as a label of itself.
QString labelInside(QQuickItem *item)
{
    const bool isWhole = item->inherits("QQuickAbstractButton") || viewEntryOf(item)
        || (!isControl(item) && isActedOn(item) && !item->isFocusScope()
            && !item->flags().testFlag(QQuickItem::ItemAcceptsInputMethod));
    if (!isWhole || isAnyOf(item, {"QQuickFlickable", "QQuickPathView", "QQuickText"}))
        return {};
    int remaining = mostItemsInside;
    return firstTextIn(item, &remaining);
}

QString labelBeside(QQuickItem *item)
{
    const QQuickItem *const parent = item->parentItem();
    if (!parent)
        return {};
    const QList<QQuickItem *> siblings = parent->childItems();
    if (siblings.size() > mostSiblings)
        return {};
    const QPointer<QQuickItem> guard(item);
    const QString ofBuddy = labelOfBuddy(item, siblings);
    // Which ran code of the program; what follows runs none.
    if (!ofBuddy.isEmpty() || !guard || !guard->parentItem())
        return ofBuddy;
    const QList<QQuickItem *> others = guard->parentItem()->childItems();
    const QString inLayout = labelInLayout(item, others);
    return inLayout.isEmpty() ? labelInSameItem(item, others) : inLayout;
}

} // namespace

QString labelOf(QQuickItem *item)
{
    // What a view has put into itself holds one text today and another one tomorrow.
    if (item->parentItem() && item->parentItem()->inherits("QQuickFlickable"))
        return {};
    const QPointer<QQuickItem> guard(item);
    const QString ofForm = labelOfForm(item);
    if (!ofForm.isEmpty() || !guard)
        return ofForm;
    const QString inside = labelInside(item);
    if (!inside.isEmpty())
        return inside;
    const QString beside = isActedOn(item) ? labelBeside(item) : QString();
    return beside.isEmpty() || !guard || tellsValue(beside, item) ? QString() : beside;
}

} // namespace Vantle::QtWrapper
