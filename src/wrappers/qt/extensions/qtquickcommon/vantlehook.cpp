#include "wrappers/qt/extensions/qtquickcommon/hookdispatch_p.h"
#include "wrappers/qt/extensions/qtquickcommon/identity/itemids.h"
#include "wrappers/qt/extensions/qtquickcommon/qtquickhook.h"
#include "wrappers/qt/qmltypes.h"

#include <QtCore/QUrl>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

using namespace Vantle::QtWrapper;

const QString VantleHook::unhandledValue = QStringLiteral("<vantleunhandled>");

VantleHook::VantleHook(QObject *parent) : QObject(parent)
{
}
VantleHook::~VantleHook() = default;

void VantleHook::setPriority(int priority)
{
    if (m_priority != priority)
        m_priority = priority;
}

QString VantleHook::source(const QJSValue &value) const
{
    const QObject *const object = value.toQObject();
    const QQmlContext *const context = object ? QQmlEngine::contextForObject(object) : nullptr;
    return context ? context->baseUrl().toString() : QString();
}

QString VantleHook::qmlType(const QJSValue &value) const
{
    const QObject *const object = value.toQObject();
    return object ? QString::fromUtf8(cleanQmlClassName(object->metaObject())) : QString();
}

bool VantleHook::isQmlType(const QJSValue &value, const QString &type) const
{
    QObject *const object = value.toQObject();
    return object && VantleQtQuickHook::objectIsOfType(object, type);
}

// Unlike its neighbours it looks at the raw name: what is cut off the others
// is what tells types written in QML.
bool VantleHook::isCustomQmlType(const QJSValue &value) const
{
    const QObject *const object = value.toQObject();
    return object && isCustomQmlTypeName(QByteArray(object->metaObject()->className()));
}

QString VantleHook::qmlId(QQuickItem *item) const
{
    return item ? idForQuickItem(item) : QString();
}

bool VantleHook::itemHasContents(QQuickItem *item) const
{
    return item && item->flags().testFlag(QQuickItem::ItemHasContents);
}

QString VantleHook::unhandled() const
{
    return unhandledValue;
}
