#pragma once

#include "wrappers/qt/extensions/qtquickcommon/qtquickcommonglobal.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/QJSValue>
// Complete, so that the meta-type "QQuickItem*" knows that it points to a QObject.
#include <QtQuick/QQuickItem>

/// What extension files are made of: their root object is one of these, and
/// its author adds the lists and functions that answer the questions below.
///
/// Made by the QML engine alone and owned by the window that the extension was
/// loaded for. Lives on the thread of that window. It never calls what the
/// extension adds; it only offers queries, which don't fail: a wrong or missing
/// argument has an empty answer.
///
/// Stands in the global namespace because of the name of its meta-object.
class VantleHook : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int priority READ priority WRITE setPriority)
    Q_PROPERTY(QString unhandled READ unhandled CONSTANT FINAL)

public:
    explicit VantleHook(QObject *parent = nullptr);
    ~VantleHook() override;

    /// Hooks with a larger priority are asked earlier. Counts when the
    /// extension has been loaded; a later change moves nothing.
    int priority() const { return m_priority; }
    void setPriority(int priority);

    // The order is that of the methods in the meta-object.

    /// The URL of the QML document that made the object; null text without one.
    Q_INVOKABLE QString source(const QJSValue &value) const;
    /// The object's most derived class, as QML authors call it.
    Q_INVOKABLE QString qmlType(const QJSValue &value) const;
    /// Whether the object's class or one of its base classes is called \p type.
    Q_INVOKABLE bool isQmlType(const QJSValue &value, const QString &type) const;
    /// Whether the object's most derived class is written in QML.
    Q_INVOKABLE bool isCustomQmlType(const QJSValue &value) const;
    /// The id of \p item in its QML document.
    Q_INVOKABLE QString qmlId(QQuickItem *item) const;
    /// Whether \p item paints something itself.
    Q_INVOKABLE bool itemHasContents(QQuickItem *item) const;
    /// What a function returns to leave the answer to others. Property and
    /// method alike.
    Q_INVOKABLE QString unhandled() const;

    static const QString unhandledValue;

private:
    int m_priority = 0;
};

/// Questions about an item, put to the extensions of its window.
///
/// The first extension that answers decides; the others are not asked. An item
/// that is null, stands in no window, or whose window has no extensions gets
/// the outcome of no answer. All of it runs on the thread that owns the items,
/// and runs script of the extensions there: when a call returns, any object
/// that isn't guarded may be gone, \p item included.
namespace VantleQtQuickHook {

/// The item below which \p item is to be found by name. Null if an extension
/// says that there is none, and if nobody answers.
VANTLEQTQUICKCOMMON_EXPORT QQuickItem *containerFor(QQuickItem *item);

/// Changes \p properties, the names of the properties that name \p item: an
/// extension's list of a type takes its place, the answer of an extension's
/// function is appended. False, with the list as it was, if nobody answers.
VANTLEQTQUICKCOMMON_EXPORT bool extraPropertiesFor(QQuickItem *item, QList<QString> *properties);

/// Stores in \p value the text of a property that \p item itself doesn't have.
/// False, with the text as it was, if nobody answers.
VANTLEQTQUICKCOMMON_EXPORT bool propertyFor(QQuickItem *item, const QString &name, QString *value);

/// Whether an extension has decided about \p item; what it has decided is in
/// \p ignored then. False, with the flag as it was, if nobody answers.
VANTLEQTQUICKCOMMON_EXPORT bool isIgnored(QQuickItem *item, bool *ignored);

/// Whether a user could act on \p item as far as extensions know. True if
/// nobody answers.
VANTLEQTQUICKCOMMON_EXPORT bool isItemReady(QQuickItem *item);

} // namespace VantleQtQuickHook
