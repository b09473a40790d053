#pragma once

#include "hook/object.h"
#include "hook/objectname.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <vector>

class QQuickItem;

/// What naming and lookup share. All of it runs on the thread that owns the
/// items and, for most properties, runs getters of the program or scripts of
/// extensions there: when a call returns, items that aren't guarded may be gone.
namespace Vantle::QtWrapper {

/// Stores the text of the property \p key of \p item, which must not be null,
/// in \p value. False, with the text as it was, if neither the item nor an
/// extension has such a property.
bool itemPropertyValue(QQuickItem *item, const QString &key, QString *value);

/// The keys of \p properties that \p item fails on, whether the value differs
/// or there is none to compare. A null item fails on none.
QList<QString> mismatchedProperties(QQuickItem *item, const ObjectName::Properties &properties);

/// Holds many items against the same properties, as naming and lookup do with
/// thousands of them.
class PropertyComparison
{
public:
    /// \p properties must outlive the comparison.
    explicit PropertyComparison(const ObjectName::Properties &properties);

    /// The number of keys that \p item fails on. All keys are compared, since
    /// the number tells how close the item comes. None for a null item.
    qsizetype countMismatched(QQuickItem *item);
    /// The keys that the item of the last countMismatched() failed on, in
    /// ascending order.
    QList<QString> mismatchedKeys() const;

private:
    enum class Kind : quint8 {
        Type,
        ObjectName,
        Id,
        Visible,
        Other
    };
    struct Expected
    {
        Kind kind;
        QString key;
        const PropertyValue *value;
        bool isMismatched = false; ///< by the last item
    };

    static Kind kindOf(const QString &key);
    static bool isOutOfQuestion(QQuickItem *item, const PropertyValue &id);
    bool matches(QQuickItem *item, const Expected &expected);
    bool isOfType(QQuickItem *item, const PropertyValue &type);
    bool hasVisibilityOfItems(QQuickItem *item);

    /// What was last found out about a class, as siblings often are of one class.
    struct ClassFact
    {
        const QMetaObject *type = nullptr;
        bool holds = false;
    };

    std::vector<Expected> m_expected;
    bool m_needsGuard = false; ///< a comparison may destroy the item ahead of the next
    ClassFact m_isOfType;
    ClassFact m_hasVisibilityOfItems;
};

/// The item behind \p object; null if it is dead, null or something else.
QQuickItem *toQuickItem(const SharedPtr<Object> &object);

/// Whether a name with \p properties may mean an item inside of an invisible
/// one: unless it asks for something visible.
bool searchesInvisible(const ObjectName::Properties &properties);

} // namespace Vantle::QtWrapper
