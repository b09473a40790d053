#include "wrappers/qt/extensions/qtquick/modality_p.h"

#include "wrappers/qt/qmltypes.h"

#include <QtCore/QVariant>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <algorithm>

namespace Vantle::QtWrapper {

namespace {

// Popups are reached by name, so that programs without Qt Quick Controls don't
// have to load that library for our sake.
constexpr char PopupClass[] = "QQuickPopup";

// The item of a popup belongs to the popup object, which is no item itself.
const QObject *popupOf(const QQuickItem *popupItem)
{
    const QObject *const owner = popupItem->parent();
    return owner && owner->inherits(PopupClass) ? owner : nullptr;
}

bool isOpenModalPopup(const QQuickItem *item)
{
    const QObject *const popup = item->isVisible() ? popupOf(item) : nullptr;
    return popup && popup->property("modal").toBool();
}

bool isSelfOrAncestor(const QQuickItem *ancestor, const QQuickItem *item)
{
    return ancestor == item || ancestor->isAncestorOf(item);
}

} // namespace

// Controls keep the layer of a window's popups as a dynamic property of the
// window. Asking for it there makes no layer where there is none, and costs
// the same in every scene.
const QQuickItem *popupLayer(const QQuickWindow *window)
{
    return qobject_cast<QQuickItem *>(qvariant_cast<QObject *>(window->property("_q_QQuickOverlay")));
}

bool isOpeningOrClosing(const QQuickItem *popupItem)
{
    const QObject *const popup = popupItem->isVisible() ? popupOf(popupItem) : nullptr;
    return popup && !popup->property("opened").toBool();
}

QQuickItem *modalPopupAbove(const QQuickItem *item)
{
    const QQuickItem *const layer = item->window() ? popupLayer(item->window()) : nullptr;
    if (!layer || !layer->isVisible() || layer == item)
        return nullptr;

    const QQuickItem *ownPopup = nullptr;
    QQuickItem *topmost = nullptr;
    const QList<QQuickItem *> children = layer->childItems();
    for (QQuickItem *child : children) {
        if (isSelfOrAncestor(child, item)) {
            ownPopup = child;
            if (!popupOf(child))
                return nullptr;
        }
        if (isOpenModalPopup(child) && (!topmost || child->z() >= topmost->z()))
            topmost = child;
    }
    if (!topmost || topmost == ownPopup)
        return nullptr;
    if (ownPopup) {
        const bool isAbove = ownPopup->z() > topmost->z()
            || (ownPopup->z() == topmost->z() && children.indexOf(ownPopup) > children.indexOf(topmost));
        if (isAbove)
            return nullptr;
    }
    return topmost;
}

bool holdsOpenModalPopup(const QQuickItem *popupLayer)
{
    const QList<QQuickItem *> popups = popupLayer->childItems();
    return std::any_of(popups.cbegin(), popups.cend(), isOpenModalPopup);
}

QString popupDescription(const QQuickItem *popup)
{
    const QObject *const object = popupOf(popup) ? popupOf(popup) : popup;
    const QString type = QString::fromUtf8(scriptTypeName(object->metaObject()));
    const QString title = object->property("title").toString();
    const QString name = title.isEmpty() ? object->objectName() : title;
    return name.isEmpty() ? type : QStringLiteral("%1 \"%2\"").arg(type, name);
}

} // namespace Vantle::QtWrapper
