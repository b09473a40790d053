#include "agent/scenedigest.h"

#include "wrappers/qt/qmltypes.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QHash>
#include <QtCore/QMetaProperty>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

namespace Vantle::Agent {

namespace {

// What an item says and holds. Nothing that moves by itself, nor anything that
// follows the pointer or the focus: of two programs in the same state one may
// be a moment ahead.
constexpr const char *telling[] = {"objectName", "text",    "title", "displayText", "checked",
                                   "checkState", "enabled", "value", "currentIndex"};

constexpr int significantDigits = 6;
constexpr qsizetype hexDigits = 16;

QByteArray bytesOf(const QVariant &value)
{
    return value.typeId() == QMetaType::Double ? QByteArray::number(value.toDouble(), 'g', significantDigits)
                                               : value.toString().toUtf8();
}

class SceneDigest
{
public:
    Protocol::Digest take()
    {
        const QWindowList windows = QGuiApplication::topLevelWindows();
        for (const QWindow *window : windows) {
            if (!window->isVisible())
                continue;
            add(window, 0);
            if (const auto *const quickWindow = qobject_cast<const QQuickWindow *>(window))
                addBelow(quickWindow->contentItem(), 1);
        }
        const QByteArray hash = m_hash.result().toHex().left(hexDigits);
        return {QString::fromLatin1(hash), m_objects};
    }

private:
    void addBelow(const QQuickItem *item, int depth)
    {
        const QList<QQuickItem *> children = item->childItems();
        for (const QQuickItem *child : children) {
            if (!child->isVisible())
                continue;
            add(child, depth);
            addBelow(child, depth + 1);
        }
    }

    void add(const QObject *object, int depth)
    {
        ++m_objects;
        const QMetaObject *const type = object->metaObject();
        // With lengths and ends, so that no two scenes run into one text.
        addField(QByteArray::number(depth));
        addField(QtWrapper::scriptTypeName(type));
        for (const QMetaProperty &property : propertiesOf(type))
            addField(bytesOf(property.read(object)));
    }

    void addField(const QByteArray &text)
    {
        m_hash.addData(QByteArray::number(text.size()) + ':');
        m_hash.addData(text);
    }

    const QList<QMetaProperty> &propertiesOf(const QMetaObject *type)
    {
        const auto known = m_properties.constFind(type);
        if (known != m_properties.cend())
            return *known;
        QList<QMetaProperty> properties;
        for (const char *name : telling) {
            if (const int index = type->indexOfProperty(name); index >= 0 && type->property(index).isReadable())
                properties.append(type->property(index));
        }
        return *m_properties.insert(type, properties);
    }

    QCryptographicHash m_hash{QCryptographicHash::Md5};
    QHash<const QMetaObject *, QList<QMetaProperty>> m_properties;
    int m_objects = 0;
};

} // namespace

Protocol::Digest digestOfScene()
{
    return SceneDigest().take();
}

} // namespace Vantle::Agent
