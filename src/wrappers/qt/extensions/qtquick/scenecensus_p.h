#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <vector>

namespace Vantle::QtWrapper {

/// All items of a window, in the order in which a lookup meets them: what lies
/// below an item comes directly behind it. Made once and then asked who else
/// is like an item, which spares a walk over the scene for each question.
///
/// A picture of the moment: items may be gone by the time they are asked for.
class SceneCensus
{
public:
    /// A stretch of positions: all that lies below a container.
    struct Range
    {
        qsizetype begin = 0;
        qsizetype end = 0;
    };

    explicit SceneCensus(QQuickWindow *window);

    const QQuickWindow *window() const { return m_window; }
    /// Where \p item stands; -1 if it isn't of the window.
    qsizetype positionOf(const QQuickItem *item) const;
    /// The item at a position; null if it is gone.
    QPointer<QQuickItem> itemAt(qsizetype position) const;
    /// The position of the item's parent; -1 for those directly below the window.
    qsizetype parentOf(qsizetype position) const;
    Range everything() const { return {0, static_cast<qsizetype>(m_entries.size())}; }
    Range below(qsizetype position) const;

    /// Whether nothing else in \p range fits a name that has the type and the
    /// visibility of the item at \p position.
    bool isOnlyOfItsType(qsizetype position, Range range);
    /// The same where the name also has \p text for \p key.
    bool isOnlyOneWith(qsizetype position, const QString &key, const QString &text, Range range);
    /// The same for several keys.
    bool isOnlyOneWith(qsizetype position, const QMap<QString, QString> &texts, Range range);

private:
    struct Entry
    {
        QPointer<QQuickItem> item;
        qsizetype parent;
        qsizetype end; ///< behind the last item below it
        int type;
        bool isVisible;
    };
    using Positions = QList<qsizetype>;
    /// Who has which text for one key, of the items of one type.
    struct Holders
    {
        QHash<QString, Positions> byText;
        QString askedFor; ///< the only text that is in byText, unless all are
        bool isComplete = false;
    };

    void add(QQuickItem *item, qsizetype parent);
    int typeOf(const QQuickItem *item);
    const Positions &ofType(int type);
    const Positions &holdersOf(int type, const QString &key, const QString &text);
    bool isAlone(qsizetype position, const Positions &candidates, Range range) const;

    const QQuickWindow *m_window; // only compared
    std::vector<Entry> m_entries;
    QHash<const QMetaObject *, int> m_typeOfClass;
    QHash<QByteArray, int> m_typeOfName;
    QHash<int, Positions> m_byType;
    QHash<std::pair<int, QString>, Holders> m_holders;
};

} // namespace Vantle::QtWrapper
